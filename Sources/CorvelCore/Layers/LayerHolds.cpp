#include "CorvelCore/Layers/LayerHolds.h"

#include <cmath>
#include <limits>
#include <utility>

namespace corvel {

namespace {

// 2^64 as a double: the first number of nanoseconds a 64-bit count cannot hold.
constexpr double nanosecondsBeyondRange = 18446744073709551616.0;

}  // namespace

std::uint64_t LayerHolds::delayNs(double seconds) {
  if (!std::isfinite(seconds) || seconds <= 0) return 0;
  const double nanoseconds = std::round(seconds * 1e9);
  if (nanoseconds >= nanosecondsBeyondRange) return std::numeric_limits<std::uint64_t>::max();
  return static_cast<std::uint64_t>(nanoseconds);
}

LayerHolds::LayerHolds(std::span<const LayerArming> armings) { update(armings); }

void LayerHolds::update(std::span<const LayerArming> armings) {
  std::vector<Hold> previous = std::move(holds_);
  std::vector<bool> reused(previous.size(), false);
  holds_.clear();
  holds_.reserve(armings.size());
  for (const LayerArming& arming : armings) {
    Hold hold{arming.id, arming.trigger, delayNs(arming.holdDelay)};
    // A layer listed twice with one chord keeps one earlier state per listing.
    for (std::size_t i = 0; i < previous.size(); ++i) {
      if (reused[i] || previous[i].id != arming.id || previous[i].trigger != arming.trigger) {
        continue;
      }
      reused[i] = true;
      hold.matched = previous[i].matched;
      hold.since = previous[i].since;
      hold.dirty = previous[i].dirty;
      break;
    }
    holds_.push_back(std::move(hold));
  }
  rebuildMatchers();
  chooseActive();
}

void LayerHolds::rebuildMatchers() {
  matchers_.assign(holds_.size(), Matcher{});
  for (std::size_t i = 0; i < holds_.size(); ++i) {
    const LayerTrigger& trigger = holds_[i].trigger;
    for (std::size_t mask = 0; mask < tabulatedMasks; ++mask) {
      matchers_[i].matches.set(mask, trigger.matches(static_cast<std::uint16_t>(mask)));
    }
    matchers_[i].specificity = trigger.specificity();
  }
}

bool LayerHolds::matches(std::size_t index, std::uint16_t mask) const {
  // Masks made from keyboard flags always fall in the table; a mask with
  // other bits is asked of the trigger itself.
  if (mask < tabulatedMasks) return matchers_[index].matches.test(mask);
  return holds_[index].trigger.matches(mask);
}

void LayerHolds::chooseActive() {
  active_.reset();
  int best = -1;
  for (std::size_t i = 0; i < holds_.size(); ++i) {
    if (holds_[i].matched && matchers_[i].specificity > best) {
      best = matchers_[i].specificity;
      active_ = i;
    }
  }
}

void LayerHolds::heldChanged(std::uint16_t mask, std::uint64_t t) {
  if (mask == held_) return;
  held_ = mask;
  for (std::size_t i = 0; i < holds_.size(); ++i) {
    Hold& hold = holds_[i];
    if (!matches(i, mask)) {
      hold.matched = false;
      continue;
    }
    // A chord still held cleanly keeps counting from when it began, even
    // when another modifier changed around a part that accepts either side.
    if (hold.matched && !hold.dirty) continue;
    hold.matched = true;
    hold.since = t;
    hold.dirty = false;
  }
  chooseActive();
}

LayerHolds::Press LayerHolds::keyPressed(std::uint64_t t) {
  if (!active_) return {};
  Hold& hold = holds_[*active_];
  // A clock that seems to run back counts as no time held.
  const std::uint64_t heldFor = t > hold.since ? t - hold.since : 0;
  if (hold.matched && !hold.dirty && heldFor >= hold.delayNs) {
    return {active_, PressState::armed};
  }
  hold.dirty = true;
  return {active_, PressState::notArmed};
}

void LayerHolds::reset() {
  held_ = 0;
  active_.reset();
  for (Hold& hold : holds_) {
    hold.matched = false;
    hold.since = 0;
    hold.dirty = false;
  }
}

}  // namespace corvel
