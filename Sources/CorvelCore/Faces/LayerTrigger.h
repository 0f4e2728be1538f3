// LayerTrigger: the chord of modifier keys a layer is held on (right command
// with right shift, any control with any option, hyper ...), and how the
// modifiers held at a moment are matched against it.
//
// A trigger is a list of parts, each a modifier and a side. It is kept in a
// normal form: a part equal to an earlier one is dropped, and the parts are
// ordered by modifier (control, option, shift, command, fn) and, within one
// modifier, by side (left, right, either). Equal triggers have equal parts.
//
// Matching works on a 16-bit mask of held modifiers, one bit per modifier
// and side (fn has one bit). A part accepts its side's bit, or either bit
// for `either`; a trigger matches exactly: every part finds one of its bits
// held, and nothing else is held. So a modifier named twice with two sides
// (lcmd-rcmd) needs both keys held together, and cmd-rcmd needs the right
// command key, with the left one allowed too. The mask and matching
// functions allocate nothing, for the keyboard event path.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Keyboard/KeySet.h"
#include "CorvelCore/Support/EnumName.h"
#include "CorvelCore/Theme/JSONValue.h"

namespace corvel {

enum class TriggerModifier { control, option, shift, command, fn };

// The modifiers with their written names, in declaration order.
inline constexpr std::array<EnumName<TriggerModifier>, 5> triggerModifierNames{{
    {TriggerModifier::control, "control"},
    {TriggerModifier::option, "option"},
    {TriggerModifier::shift, "shift"},
    {TriggerModifier::command, "command"},
    {TriggerModifier::fn, "fn"},
}};

// The written name of a modifier.
[[nodiscard]] constexpr std::string_view rawValue(TriggerModifier modifier) {
  for (const auto& name : triggerModifierNames) {
    if (name.value == modifier) return name.raw;
  }
  return {};
}

// The modifier written exactly as `raw`, or nothing.
[[nodiscard]] constexpr std::optional<TriggerModifier> triggerModifierNamed(std::string_view raw) {
  for (const auto& name : triggerModifierNames) {
    if (name.raw == raw) return name.value;
  }
  return std::nullopt;
}

enum class Side { left, right, either };

// The sides with their written names, in declaration order.
inline constexpr std::array<EnumName<Side>, 3> sideNames{{
    {Side::left, "left"},
    {Side::right, "right"},
    {Side::either, "either"},
}};

// The written name of a side.
[[nodiscard]] constexpr std::string_view rawValue(Side side) {
  for (const auto& name : sideNames) {
    if (name.value == side) return name.raw;
  }
  return {};
}

// The side written exactly as `raw`, or nothing.
[[nodiscard]] constexpr std::optional<Side> sideNamed(std::string_view raw) {
  for (const auto& name : sideNames) {
    if (name.raw == raw) return name.value;
  }
  return std::nullopt;
}

// One modifier of a trigger on one side. fn has no sides: a part of fn
// always has side `either`, whatever side it is built with.
struct TriggerPart {
  TriggerModifier modifier = TriggerModifier::control;
  Side side = Side::either;

  constexpr TriggerPart() = default;
  constexpr TriggerPart(TriggerModifier modifierOfPart, Side sideOfPart = Side::either)
      : modifier(modifierOfPart),
        side(modifierOfPart == TriggerModifier::fn ? Side::either : sideOfPart) {}

  // The mask bits the part accepts (0 for values outside the enumerations).
  [[nodiscard]] std::uint16_t bits() const;
  // The keys the part stands for: its side's key, or both for `either`
  // (left first); fn stands for the fn key.
  [[nodiscard]] std::vector<KeyID> keys() const;
  // "⌘", "Left ⌘", "Right ⌥", "fn".
  [[nodiscard]] std::string title() const;

  friend constexpr bool operator==(const TriggerPart&, const TriggerPart&) = default;
};

class LayerTrigger {
 public:
  // Mask bits, one per modifier and side.
  static constexpr std::uint16_t controlLeftBit = 0x0001;
  static constexpr std::uint16_t controlRightBit = 0x0002;
  static constexpr std::uint16_t optionLeftBit = 0x0004;
  static constexpr std::uint16_t optionRightBit = 0x0008;
  static constexpr std::uint16_t shiftLeftBit = 0x0010;
  static constexpr std::uint16_t shiftRightBit = 0x0020;
  static constexpr std::uint16_t commandLeftBit = 0x0040;
  static constexpr std::uint16_t commandRightBit = 0x0080;
  static constexpr std::uint16_t fnBit = 0x0100;

  // The system's function-key modifier flag (also set by arrows and other
  // keys of the fn layer on their own).
  static constexpr std::uint64_t functionFlag = 0x800000;

  // A trigger without parts; it never matches.
  LayerTrigger() = default;
  // Puts the parts into normal form; parts with values outside the
  // enumerations are dropped.
  explicit LayerTrigger(const std::vector<TriggerPart>& parts);

  [[nodiscard]] const std::vector<TriggerPart>& parts() const { return parts_; }
  [[nodiscard]] bool empty() const { return parts_.empty(); }

  // Control, option, shift and command, each on either side.
  [[nodiscard]] static const LayerTrigger& hyper();
  [[nodiscard]] bool isHyper() const;

  // The mask of the modifiers the system's modifier flags hold, read from
  // their device-dependent side bits; a modifier whose general flag is set
  // without a side bit counts as its left key.
  [[nodiscard]] static std::uint16_t mask(std::uint64_t deviceFlags);
  // The mask of the modifier keys among `held`; other keys add nothing.
  [[nodiscard]] static std::uint16_t heldMask(const KeySet& held);

  // True when every part finds one of its bits in `mask` and `mask` holds
  // no other bit; a trigger without parts never matches.
  [[nodiscard]] bool matches(std::uint16_t mask) const;
  [[nodiscard]] bool matchesDeviceFlags(std::uint64_t deviceFlags) const;
  [[nodiscard]] bool matchesHeld(const KeySet& held) const;

  // The number of sided parts (fn never counts).
  [[nodiscard]] int specificity() const;

  // The index of the matching trigger with the highest specificity, the
  // earlier one on a tie; nothing when none matches.
  [[nodiscard]] static std::optional<std::size_t> winner(std::span<const LayerTrigger> triggers,
                                                         std::uint16_t mask);
  [[nodiscard]] static std::optional<std::size_t> winner(std::span<const LayerTrigger> triggers,
                                                         const KeySet& held);

  // Every key the parts stand for, each once: control, option, shift,
  // command (left before right), fn.
  [[nodiscard]] std::vector<KeyID> modifierKeys() const;
  // One key cap per part, to draw the trigger as keys: a sided part's key,
  // the left key for `either`, the fn key for fn.
  [[nodiscard]] std::vector<KeyID> keycaps() const;
  // "No trigger" without parts, "Hyper (⌃⌥⇧⌘)" for hyper, otherwise the part
  // titles joined by one space ("Left ⌃ ⌥").
  [[nodiscard]] std::string title() const;
  // True when only option and shift are held (not none): holding them while
  // typing produces characters, so the layer would take over typing.
  [[nodiscard]] bool catchesTyping() const;

  // { "parts": [ { "modifier": "command", "side": "right" }, ... ] }
  [[nodiscard]] JSONValue json() const;
  // Reads the JSON form: an object whose "parts" is an array of objects with
  // a known "modifier" and a known "side" (missing or null: either); other
  // members are ignored. Anything else gives nothing. An empty "parts" gives
  // a trigger without parts, for the caller to refuse.
  [[nodiscard]] static std::optional<LayerTrigger> fromJSON(const JSONValue& value);

  friend bool operator==(const LayerTrigger&, const LayerTrigger&) = default;

 private:
  std::vector<TriggerPart> parts_;
};

}  // namespace corvel
