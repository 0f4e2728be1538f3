// KeyID: every physical key of a Mac keyboard (ANSI, ISO and JIS models),
// with the names, code and group the rest of the system knows it by.
//
// Each key carries two written names, for two audiences:
//   - its identifier ("keyA", "digit1", "arrowLeft", "controlLeft"): the name
//     documents store (the members of a layer's "keys", the "key" of a
//     "sendShortcut" action, the keys of a theme's "overrides");
//   - its key name ("a", "1", "left", "leftcontrol"): the name commands,
//     links and shortcut texts use; always lower case, never holding a blank.
// Key names of the keys a user types without a modifier are the character
// the key shows ("a", "1", "`", "§"); the others are words ("escape", "f5",
// "pageup", "keypad7"). The keypad's "+" and "*" are named by their
// characters, since no other key of a Mac keyboard carries them.
//
// The code is the macOS virtual key code (HIToolbox's kVK_* constants). The
// group says how a keyboard theme colours the key and whether a layer may use
// it:
//   character   letters, digits, punctuation, the space bar;
//   accent      escape, tab, return, delete and the JIS eisu and kana keys;
//   function    F1 to F20;
//   navigation  arrows, home, end, page up and down, forward delete, help;
//   numpad      every keypad key, enter and clear included;
//   modifier    left and right control, option, shift and command, and fn:
//               the keys a layer trigger is held on;
//   inert       caps lock: it locks rather than types and reaches apps only
//               as a change of modifier flags, so nothing can take it over.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "CorvelCore/Support/EnumName.h"

namespace corvel {

enum class KeyID : std::uint8_t {
  // Letters.
  keyA,
  keyB,
  keyC,
  keyD,
  keyE,
  keyF,
  keyG,
  keyH,
  keyI,
  keyJ,
  keyK,
  keyL,
  keyM,
  keyN,
  keyO,
  keyP,
  keyQ,
  keyR,
  keyS,
  keyT,
  keyU,
  keyV,
  keyW,
  keyX,
  keyY,
  keyZ,
  // Digits of the main block.
  digit0,
  digit1,
  digit2,
  digit3,
  digit4,
  digit5,
  digit6,
  digit7,
  digit8,
  digit9,
  // Punctuation, the ISO section key and the JIS yen and underscore keys.
  backquote,
  minus,
  equal,
  bracketLeft,
  bracketRight,
  backslash,
  semicolon,
  quote,
  comma,
  period,
  slash,
  section,
  yen,
  underscore,
  // The space bar.
  space,
  // Accent keys.
  escape,
  tab,
  returnKey,
  deleteKey,
  eisu,
  kana,
  // Caps lock.
  capsLock,
  // Function keys.
  f1,
  f2,
  f3,
  f4,
  f5,
  f6,
  f7,
  f8,
  f9,
  f10,
  f11,
  f12,
  f13,
  f14,
  f15,
  f16,
  f17,
  f18,
  f19,
  f20,
  // Navigation.
  arrowLeft,
  arrowRight,
  arrowUp,
  arrowDown,
  home,
  end,
  pageUp,
  pageDown,
  forwardDelete,
  help,
  // Keypad.
  keypad0,
  keypad1,
  keypad2,
  keypad3,
  keypad4,
  keypad5,
  keypad6,
  keypad7,
  keypad8,
  keypad9,
  keypadDecimal,
  keypadComma,
  keypadPlus,
  keypadMinus,
  keypadMultiply,
  keypadDivide,
  keypadEquals,
  keypadClear,
  keypadEnter,
  // Modifiers.
  controlLeft,
  controlRight,
  optionLeft,
  optionRight,
  shiftLeft,
  shiftRight,
  commandLeft,
  commandRight,
  function
};

// How many keys the table holds; every KeyID is below this.
inline constexpr std::size_t keyCount = static_cast<std::size_t>(KeyID::function) + 1;

enum class KeyGroup { character, function, accent, modifier, navigation, inert, numpad };

// The groups with their written names.
inline constexpr std::array<EnumName<KeyGroup>, 7> keyGroupNames{{
    {KeyGroup::character, "character"},
    {KeyGroup::function, "function"},
    {KeyGroup::accent, "accent"},
    {KeyGroup::modifier, "modifier"},
    {KeyGroup::navigation, "navigation"},
    {KeyGroup::inert, "inert"},
    {KeyGroup::numpad, "numpad"},
}};

// One row of the key table.
struct KeyInfo {
  KeyID id;
  std::string_view identifier;           // name in documents ("keyA")
  std::string_view name;                 // name in commands, links and shortcuts ("a")
  std::optional<std::uint16_t> macCode;  // macOS virtual key code; none for a key without one
  KeyGroup group;
};

// The row of a key. A value outside the enumeration gets a row named "?"
// with an empty identifier, no code and the inert group.
[[nodiscard]] const KeyInfo& keyInfo(KeyID key);

// Every key, in the enumeration's order.
[[nodiscard]] std::span<const KeyInfo> allKeys();

// The key whose identifier is exactly `identifier` (case matters).
[[nodiscard]] std::optional<KeyID> keyID(std::string_view identifier);

// The key whose key name is exactly `name` (lower case, as in the table).
[[nodiscard]] std::optional<KeyID> keyIDForSpecName(std::string_view name);

// The key with this macOS virtual key code; constant time, no allocation.
[[nodiscard]] std::optional<KeyID> keyIDForMacCode(std::uint16_t code);

// The written name of a group ("character", ...).
[[nodiscard]] std::string_view rawValue(KeyGroup group);

}  // namespace corvel
