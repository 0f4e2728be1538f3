#include "CorvelCore/Layers/LayerGate.h"

#include <algorithm>

namespace corvel {

LayerGate::LayerGate(std::span<const LayerRoute> routes, std::int64_t ownTag) : ownTag_(ownTag) {
  update(routes);
}

void LayerGate::update(std::span<const LayerRoute> routes) {
  std::vector<LayerArming> armings;
  armings.reserve(routes.size());
  codes_.clear();
  codes_.reserve(routes.size());
  for (const LayerRoute& route : routes) {
    armings.push_back({route.id, route.trigger, route.holdDelay});
    // A std::set iterates in ascending order, ready for binary search.
    codes_.emplace_back(route.keyCodes.begin(), route.keyCodes.end());
  }
  holds_.update(armings);
}

GateDecision LayerGate::decide(std::uint32_t type, std::uint16_t keyCode, std::uint64_t flags,
                               bool isRepeat, std::uint64_t timestampNs, std::int64_t userData) {
  if (userData == ownTag_) return GateDecision::pass();
  switch (type) {
    case flagsChanged:
      holds_.heldChanged(LayerTrigger::mask(flags), timestampNs);
      return GateDecision::pass();
    case keyDown:
      return keyWentDown(keyCode, flags, isRepeat, timestampNs);
    case keyUp:
      return keyWentUp(keyCode, timestampNs);
    default:
      return GateDecision::pass();
  }
}

GateDecision LayerGate::keyWentDown(std::uint16_t keyCode, std::uint64_t flags, bool isRepeat,
                                    std::uint64_t t) {
  const std::optional<KeyID> key = keyIDForMacCode(keyCode);
  if (!key) return GateDecision::pass();

  // Arrows, the function keys and others carry the function flag by
  // themselves; it stands for a held fn only when fn was already held.
  std::uint16_t mask = LayerTrigger::mask(flags & ~LayerTrigger::functionFlag);
  if ((flags & LayerTrigger::functionFlag) != 0 && (holds_.held() & LayerTrigger::fnBit) != 0) {
    mask |= LayerTrigger::fnBit;
  }
  holds_.heldChanged(mask, t);

  if (isRepeat) {
    Taken* taken = findTaken(keyCode);
    if (taken == nullptr) return GateDecision::pass();
    taken->at = t;
    return GateDecision::swallow();
  }

  const LayerHolds::Press press = holds_.keyPressed(t);
  if (press.state == LayerHolds::PressState::armed && press.index &&
      assigns(*press.index, keyCode)) {
    recordTaken(keyCode, t);
    return GateDecision::run(holds_.holds()[*press.index].id, *key);
  }
  dropTaken(findTaken(keyCode));
  return GateDecision::pass();
}

GateDecision LayerGate::keyWentUp(std::uint16_t keyCode, std::uint64_t t) {
  Taken* taken = findTaken(keyCode);
  if (taken == nullptr) return GateDecision::pass();
  const std::uint64_t at = taken->at;
  dropTaken(taken);
  if (t > at && t - at > staleAfterNs) return GateDecision::pass();
  return GateDecision::swallow();
}

void LayerGate::release(std::uint16_t keyCode) { dropTaken(findTaken(keyCode)); }

bool LayerGate::assigns(std::size_t route, std::uint16_t keyCode) const {
  if (route >= codes_.size()) return false;
  return std::binary_search(codes_[route].begin(), codes_[route].end(), keyCode);
}

LayerGate::Taken* LayerGate::findTaken(std::uint16_t keyCode) {
  for (std::size_t i = 0; i < swallowedCount_; ++i) {
    if (swallowedAt_[i].keyCode == keyCode) return &swallowedAt_[i];
  }
  return nullptr;
}

void LayerGate::recordTaken(std::uint16_t keyCode, std::uint64_t t) {
  if (Taken* taken = findTaken(keyCode)) {
    taken->at = t;
    return;
  }
  if (swallowedCount_ < swallowCapacity) {
    swallowedAt_[swallowedCount_++] = {keyCode, t};
    return;
  }
  // More keys pending than hands can hold: the oldest is surely stale.
  auto oldest = std::min_element(swallowedAt_.begin(), swallowedAt_.end(),
                                 [](const Taken& a, const Taken& b) { return a.at < b.at; });
  *oldest = {keyCode, t};
}

void LayerGate::dropTaken(Taken* entry) {
  if (entry == nullptr) return;
  // Order does not matter: move the last entry into the gap.
  *entry = swallowedAt_[swallowedCount_ - 1];
  --swallowedCount_;
}

std::vector<std::uint16_t> LayerGate::swallowed() const {
  std::vector<std::uint16_t> codes;
  codes.reserve(swallowedCount_);
  for (std::size_t i = 0; i < swallowedCount_; ++i) codes.push_back(swallowedAt_[i].keyCode);
  std::sort(codes.begin(), codes.end());
  return codes;
}

}  // namespace corvel
