#include "CorvelCore/Faces/LayerTrigger.h"

#include <algorithm>
#include <utility>

namespace corvel {
namespace {

// What each modifier is on the keyboard, in the mask and in the system's
// flags. fn has one key and one bit; its "sides" repeat them.
struct ModifierRow {
  std::uint16_t leftBit;
  std::uint16_t rightBit;
  KeyID leftKey;
  KeyID rightKey;
  std::string_view symbol;
  std::uint64_t leftFlag;   // device-dependent flag of the left key
  std::uint64_t rightFlag;  // device-dependent flag of the right key
  std::uint64_t anyFlag;    // side-independent flag
};

constexpr std::array<ModifierRow, 5> modifierRows{{
    {LayerTrigger::controlLeftBit, LayerTrigger::controlRightBit, KeyID::controlLeft,
     KeyID::controlRight, "⌃", 0x1, 0x2000, 0x40000},
    {LayerTrigger::optionLeftBit, LayerTrigger::optionRightBit, KeyID::optionLeft,
     KeyID::optionRight, "⌥", 0x20, 0x40, 0x80000},
    {LayerTrigger::shiftLeftBit, LayerTrigger::shiftRightBit, KeyID::shiftLeft, KeyID::shiftRight,
     "⇧", 0x2, 0x4, 0x20000},
    {LayerTrigger::commandLeftBit, LayerTrigger::commandRightBit, KeyID::commandLeft,
     KeyID::commandRight, "⌘", 0x8, 0x10, 0x100000},
    {LayerTrigger::fnBit, LayerTrigger::fnBit, KeyID::function, KeyID::function, "fn", 0, 0,
     LayerTrigger::functionFlag},
}};

constexpr std::size_t indexOf(TriggerModifier modifier) {
  return static_cast<std::size_t>(modifier);
}

bool isKnown(const TriggerPart& part) {
  return indexOf(part.modifier) < modifierRows.size() &&
         static_cast<std::size_t>(part.side) < sideNames.size();
}

// Canonical order: by modifier, then left, right, either.
bool precedes(const TriggerPart& a, const TriggerPart& b) {
  return std::pair(a.modifier, a.side) < std::pair(b.modifier, b.side);
}

}  // namespace

std::uint16_t TriggerPart::bits() const {
  if (!isKnown(*this)) return 0;
  const ModifierRow& row = modifierRows[indexOf(modifier)];
  switch (side) {
    case Side::left:
      return row.leftBit;
    case Side::right:
      return row.rightBit;
    case Side::either:
      break;
  }
  return static_cast<std::uint16_t>(row.leftBit | row.rightBit);
}

std::vector<KeyID> TriggerPart::keys() const {
  if (!isKnown(*this)) return {};
  const ModifierRow& row = modifierRows[indexOf(modifier)];
  if (side == Side::left || row.leftKey == row.rightKey) return {row.leftKey};
  if (side == Side::right) return {row.rightKey};
  return {row.leftKey, row.rightKey};
}

std::string TriggerPart::title() const {
  if (!isKnown(*this)) return {};
  std::string text;
  if (side == Side::left) text = "Left ";
  if (side == Side::right) text = "Right ";
  text += modifierRows[indexOf(modifier)].symbol;
  return text;
}

LayerTrigger::LayerTrigger(const std::vector<TriggerPart>& parts) {
  parts_.reserve(parts.size());
  for (const TriggerPart& given : parts) {
    if (!isKnown(given)) continue;
    const TriggerPart part(given.modifier, given.side);
    if (std::find(parts_.begin(), parts_.end(), part) == parts_.end()) parts_.push_back(part);
  }
  std::stable_sort(parts_.begin(), parts_.end(), precedes);
}

const LayerTrigger& LayerTrigger::hyper() {
  static const LayerTrigger trigger({{TriggerModifier::control},
                                     {TriggerModifier::option},
                                     {TriggerModifier::shift},
                                     {TriggerModifier::command}});
  return trigger;
}

bool LayerTrigger::isHyper() const { return *this == hyper(); }

std::uint16_t LayerTrigger::mask(std::uint64_t deviceFlags) {
  std::uint16_t result = 0;
  for (const ModifierRow& row : modifierRows) {
    const bool left = (deviceFlags & row.leftFlag) != 0;
    const bool right = (deviceFlags & row.rightFlag) != 0;
    if (left) result |= row.leftBit;
    if (right) result |= row.rightBit;
    // Some keyboards and remapping tools set only the general flag.
    if (!left && !right && (deviceFlags & row.anyFlag) != 0) result |= row.leftBit;
  }
  return result;
}

std::uint16_t LayerTrigger::heldMask(const KeySet& held) {
  std::uint16_t result = 0;
  for (const ModifierRow& row : modifierRows) {
    if (held.contains(row.leftKey)) result |= row.leftBit;
    if (held.contains(row.rightKey)) result |= row.rightBit;
  }
  return result;
}

bool LayerTrigger::matches(std::uint16_t mask) const {
  if (parts_.empty()) return false;
  std::uint16_t accepted = 0;
  for (const TriggerPart& part : parts_) {
    const std::uint16_t bits = part.bits();
    if ((mask & bits) == 0) return false;
    accepted |= bits;
  }
  return (mask & ~accepted) == 0;
}

bool LayerTrigger::matchesDeviceFlags(std::uint64_t deviceFlags) const {
  return matches(mask(deviceFlags));
}

bool LayerTrigger::matchesHeld(const KeySet& held) const { return matches(heldMask(held)); }

int LayerTrigger::specificity() const {
  int count = 0;
  for (const TriggerPart& part : parts_) {
    if (part.side != Side::either) ++count;
  }
  return count;
}

std::optional<std::size_t> LayerTrigger::winner(std::span<const LayerTrigger> triggers,
                                                std::uint16_t mask) {
  std::optional<std::size_t> best;
  int bestSpecificity = 0;
  for (std::size_t index = 0; index < triggers.size(); ++index) {
    if (!triggers[index].matches(mask)) continue;
    const int specificity = triggers[index].specificity();
    if (!best || specificity > bestSpecificity) {
      best = index;
      bestSpecificity = specificity;
    }
  }
  return best;
}

std::optional<std::size_t> LayerTrigger::winner(std::span<const LayerTrigger> triggers,
                                                const KeySet& held) {
  return winner(triggers, heldMask(held));
}

std::vector<KeyID> LayerTrigger::modifierKeys() const {
  KeySet named;
  for (const TriggerPart& part : parts_) {
    for (KeyID key : part.keys()) named.insert(key);
  }
  std::vector<KeyID> keys;
  for (const ModifierRow& row : modifierRows) {
    for (KeyID key : {row.leftKey, row.rightKey}) {
      if (named.contains(key)) {
        keys.push_back(key);
        named.erase(key);
      }
    }
  }
  return keys;
}

std::vector<KeyID> LayerTrigger::keycaps() const {
  std::vector<KeyID> caps;
  caps.reserve(parts_.size());
  for (const TriggerPart& part : parts_) {
    const ModifierRow& row = modifierRows[indexOf(part.modifier)];
    caps.push_back(part.side == Side::right ? row.rightKey : row.leftKey);
  }
  return caps;
}

std::string LayerTrigger::title() const {
  if (parts_.empty()) return "No trigger";
  if (isHyper()) return "Hyper (⌃⌥⇧⌘)";
  std::string text;
  for (const TriggerPart& part : parts_) {
    if (!text.empty()) text += ' ';
    text += part.title();
  }
  return text;
}

bool LayerTrigger::catchesTyping() const {
  return !parts_.empty() && std::all_of(parts_.begin(), parts_.end(), [](const TriggerPart& part) {
    return part.modifier == TriggerModifier::option || part.modifier == TriggerModifier::shift;
  });
}

JSONValue LayerTrigger::json() const {
  JSONArray parts;
  parts.reserve(parts_.size());
  for (const TriggerPart& part : parts_) {
    parts.emplace_back(JSONObject{
        {"modifier", JSONValue(rawValue(part.modifier))},
        {"side", JSONValue(rawValue(part.side))},
    });
  }
  return JSONValue(JSONObject{{"parts", JSONValue(std::move(parts))}});
}

std::optional<LayerTrigger> LayerTrigger::fromJSON(const JSONValue& value) {
  const JSONObject* object = value.asObject();
  if (object == nullptr) return std::nullopt;
  const JSONValue* partsValue = object->find("parts");
  const JSONArray* elements = partsValue != nullptr ? partsValue->asArray() : nullptr;
  if (elements == nullptr) return std::nullopt;
  std::vector<TriggerPart> parts;
  parts.reserve(elements->size());
  for (const JSONValue& element : *elements) {
    const JSONObject* partObject = element.asObject();
    if (partObject == nullptr) return std::nullopt;
    const JSONValue* modifierValue = partObject->find("modifier");
    const JSONString* modifierText = modifierValue != nullptr ? modifierValue->asString() : nullptr;
    if (modifierText == nullptr) return std::nullopt;
    const auto modifier = triggerModifierNamed(*modifierText);
    if (!modifier) return std::nullopt;
    Side side = Side::either;
    if (const JSONValue* sideValue = partObject->find("side");
        sideValue != nullptr && !sideValue->isNull()) {
      const JSONString* sideText = sideValue->asString();
      const auto named = sideText != nullptr ? sideNamed(*sideText) : std::nullopt;
      if (!named) return std::nullopt;
      side = *named;
    }
    parts.emplace_back(*modifier, side);
  }
  return LayerTrigger(parts);
}

}  // namespace corvel
