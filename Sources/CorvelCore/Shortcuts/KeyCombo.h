// KeyCombo: one key pressed with a set of modifiers, the step of a shortcut
// (cmd+shift+k) and what a "sendShortcut" layer action sends.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>

#include "CorvelCore/Keyboard/KeyID.h"
#include "CorvelCore/Support/EnumName.h"

namespace corvel {

enum class KeyModifier : std::uint8_t { control, option, shift, command, fn };

// The modifiers with their written names in documents, in declaration order.
inline constexpr std::array<EnumName<KeyModifier>, 5> keyModifierNames{{
    {KeyModifier::control, "control"},
    {KeyModifier::option, "option"},
    {KeyModifier::shift, "shift"},
    {KeyModifier::command, "command"},
    {KeyModifier::fn, "fn"},
}};

// The document name of a modifier ("control", ...).
[[nodiscard]] constexpr std::string_view rawValue(KeyModifier modifier) {
  for (const auto& name : keyModifierNames) {
    if (name.value == modifier) return name.raw;
  }
  return {};
}

// The modifier written exactly as `raw`, or nothing.
[[nodiscard]] constexpr std::optional<KeyModifier> keyModifier(std::string_view raw) {
  for (const auto& name : keyModifierNames) {
    if (name.raw == raw) return name.value;
  }
  return std::nullopt;
}

// A set of modifiers; a value type of one byte.
class KeyModifiers {
 public:
  constexpr KeyModifiers() = default;
  constexpr KeyModifiers(std::initializer_list<KeyModifier> modifiers) {
    for (KeyModifier modifier : modifiers) insert(modifier);
  }

  constexpr void insert(KeyModifier modifier) { bits_ |= bitOf(modifier); }
  constexpr void erase(KeyModifier modifier) {
    bits_ = static_cast<std::uint8_t>(bits_ & ~bitOf(modifier));
  }
  [[nodiscard]] constexpr bool contains(KeyModifier modifier) const {
    return (bits_ & bitOf(modifier)) != 0;
  }
  [[nodiscard]] constexpr bool empty() const { return bits_ == 0; }

  friend constexpr bool operator==(KeyModifiers, KeyModifiers) = default;

 private:
  static constexpr std::uint8_t bitOf(KeyModifier modifier) {
    return static_cast<std::uint8_t>(1U << (static_cast<unsigned>(modifier) & 7U));
  }

  std::uint8_t bits_ = 0;
};

struct KeyCombo {
  KeyModifiers modifiers;
  KeyID key = KeyID::keyA;

  friend constexpr bool operator==(const KeyCombo&, const KeyCombo&) = default;
};

}  // namespace corvel
