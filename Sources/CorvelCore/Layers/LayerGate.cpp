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
    const std::optional<std::size_t> index = findTaken(keyCode);
    if (!index) return GateDecision::pass();
    taken(*index).at = t;
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
  const std::optional<std::size_t> index = findTaken(keyCode);
  if (!index) return GateDecision::pass();
  const std::uint64_t at = taken(*index).at;
  dropTaken(index);
  if (t > at && t - at > staleAfterNs) return GateDecision::pass();
  return GateDecision::swallow();
}

void LayerGate::release(std::uint16_t keyCode) { dropTaken(findTaken(keyCode)); }

bool LayerGate::assigns(std::size_t route, std::uint16_t keyCode) const {
  if (route >= codes_.size()) return false;
  return std::binary_search(codes_[route].begin(), codes_[route].end(), keyCode);
}

LayerGate::Taken& LayerGate::taken(std::size_t index) {
  return index < swallowReserve ? fixed_[index] : grown_[index - swallowReserve];
}

const LayerGate::Taken& LayerGate::taken(std::size_t index) const {
  return index < swallowReserve ? fixed_[index] : grown_[index - swallowReserve];
}

std::optional<std::size_t> LayerGate::findTaken(std::uint16_t keyCode) const {
  for (std::size_t index = 0; index < takenCount(); ++index) {
    if (taken(index).keyCode == keyCode) return index;
  }
  return std::nullopt;
}

void LayerGate::recordTaken(std::uint16_t keyCode, std::uint64_t t) {
  if (const std::optional<std::size_t> index = findTaken(keyCode)) {
    taken(*index).at = t;
    return;
  }
  // Forgetting any pending entry would let an app see a key-up whose
  // key-down it never saw, so past the fixed entries the storage grows.
  if (fixedCount_ < swallowReserve) {
    fixed_[fixedCount_++] = {keyCode, t};
  } else {
    grown_.push_back({keyCode, t});
  }
}

void LayerGate::dropTaken(std::optional<std::size_t> index) {
  if (!index) return;
  // Order does not matter: the last entry fills the gap, so that grown
  // entries move into the fixed ones as soon as there is room.
  taken(*index) = taken(takenCount() - 1);
  if (grown_.empty()) {
    --fixedCount_;
  } else {
    grown_.pop_back();
  }
}

std::vector<std::uint16_t> LayerGate::swallowed() const {
  std::vector<std::uint16_t> codes;
  codes.reserve(takenCount());
  for (std::size_t index = 0; index < takenCount(); ++index) {
    codes.push_back(taken(index).keyCode);
  }
  std::sort(codes.begin(), codes.end());
  return codes;
}

}  // namespace corvel
