#include "CorvelCore/Keyboard/KeyID.h"

namespace corvel {
namespace {

// The key table. Rows follow the enumeration's order, so a key's row is found
// by its value; the checks below keep the two in step.
constexpr std::array<KeyInfo, keyCount> keyTable{{
    {KeyID::keyA, "keyA", "a", 0x00, KeyGroup::character},
    {KeyID::keyB, "keyB", "b", 0x0B, KeyGroup::character},
    {KeyID::keyC, "keyC", "c", 0x08, KeyGroup::character},
    {KeyID::keyD, "keyD", "d", 0x02, KeyGroup::character},
    {KeyID::keyE, "keyE", "e", 0x0E, KeyGroup::character},
    {KeyID::keyF, "keyF", "f", 0x03, KeyGroup::character},
    {KeyID::keyG, "keyG", "g", 0x05, KeyGroup::character},
    {KeyID::keyH, "keyH", "h", 0x04, KeyGroup::character},
    {KeyID::keyI, "keyI", "i", 0x22, KeyGroup::character},
    {KeyID::keyJ, "keyJ", "j", 0x26, KeyGroup::character},
    {KeyID::keyK, "keyK", "k", 0x28, KeyGroup::character},
    {KeyID::keyL, "keyL", "l", 0x25, KeyGroup::character},
    {KeyID::keyM, "keyM", "m", 0x2E, KeyGroup::character},
    {KeyID::keyN, "keyN", "n", 0x2D, KeyGroup::character},
    {KeyID::keyO, "keyO", "o", 0x1F, KeyGroup::character},
    {KeyID::keyP, "keyP", "p", 0x23, KeyGroup::character},
    {KeyID::keyQ, "keyQ", "q", 0x0C, KeyGroup::character},
    {KeyID::keyR, "keyR", "r", 0x0F, KeyGroup::character},
    {KeyID::keyS, "keyS", "s", 0x01, KeyGroup::character},
    {KeyID::keyT, "keyT", "t", 0x11, KeyGroup::character},
    {KeyID::keyU, "keyU", "u", 0x20, KeyGroup::character},
    {KeyID::keyV, "keyV", "v", 0x09, KeyGroup::character},
    {KeyID::keyW, "keyW", "w", 0x0D, KeyGroup::character},
    {KeyID::keyX, "keyX", "x", 0x07, KeyGroup::character},
    {KeyID::keyY, "keyY", "y", 0x10, KeyGroup::character},
    {KeyID::keyZ, "keyZ", "z", 0x06, KeyGroup::character},
    {KeyID::digit0, "digit0", "0", 0x1D, KeyGroup::character},
    {KeyID::digit1, "digit1", "1", 0x12, KeyGroup::character},
    {KeyID::digit2, "digit2", "2", 0x13, KeyGroup::character},
    {KeyID::digit3, "digit3", "3", 0x14, KeyGroup::character},
    {KeyID::digit4, "digit4", "4", 0x15, KeyGroup::character},
    {KeyID::digit5, "digit5", "5", 0x17, KeyGroup::character},
    {KeyID::digit6, "digit6", "6", 0x16, KeyGroup::character},
    {KeyID::digit7, "digit7", "7", 0x1A, KeyGroup::character},
    {KeyID::digit8, "digit8", "8", 0x1C, KeyGroup::character},
    {KeyID::digit9, "digit9", "9", 0x19, KeyGroup::character},
    {KeyID::backquote, "backquote", "`", 0x32, KeyGroup::character},
    {KeyID::minus, "minus", "-", 0x1B, KeyGroup::character},
    {KeyID::equal, "equal", "=", 0x18, KeyGroup::character},
    {KeyID::bracketLeft, "bracketLeft", "[", 0x21, KeyGroup::character},
    {KeyID::bracketRight, "bracketRight", "]", 0x1E, KeyGroup::character},
    {KeyID::backslash, "backslash", "\\", 0x2A, KeyGroup::character},
    {KeyID::semicolon, "semicolon", ";", 0x29, KeyGroup::character},
    {KeyID::quote, "quote", "'", 0x27, KeyGroup::character},
    {KeyID::comma, "comma", ",", 0x2B, KeyGroup::character},
    {KeyID::period, "period", ".", 0x2F, KeyGroup::character},
    {KeyID::slash, "slash", "/", 0x2C, KeyGroup::character},
    {KeyID::section, "section", "§", 0x0A, KeyGroup::character},
    {KeyID::yen, "yen", "¥", 0x5D, KeyGroup::character},
    {KeyID::underscore, "underscore", "_", 0x5E, KeyGroup::character},
    {KeyID::space, "space", "space", 0x31, KeyGroup::character},
    {KeyID::escape, "escape", "escape", 0x35, KeyGroup::accent},
    {KeyID::tab, "tab", "tab", 0x30, KeyGroup::accent},
    {KeyID::returnKey, "return", "return", 0x24, KeyGroup::accent},
    {KeyID::deleteKey, "delete", "delete", 0x33, KeyGroup::accent},
    {KeyID::eisu, "eisu", "eisu", 0x66, KeyGroup::accent},
    {KeyID::kana, "kana", "kana", 0x68, KeyGroup::accent},
    {KeyID::capsLock, "capsLock", "capslock", 0x39, KeyGroup::inert},
    {KeyID::f1, "f1", "f1", 0x7A, KeyGroup::function},
    {KeyID::f2, "f2", "f2", 0x78, KeyGroup::function},
    {KeyID::f3, "f3", "f3", 0x63, KeyGroup::function},
    {KeyID::f4, "f4", "f4", 0x76, KeyGroup::function},
    {KeyID::f5, "f5", "f5", 0x60, KeyGroup::function},
    {KeyID::f6, "f6", "f6", 0x61, KeyGroup::function},
    {KeyID::f7, "f7", "f7", 0x62, KeyGroup::function},
    {KeyID::f8, "f8", "f8", 0x64, KeyGroup::function},
    {KeyID::f9, "f9", "f9", 0x65, KeyGroup::function},
    {KeyID::f10, "f10", "f10", 0x6D, KeyGroup::function},
    {KeyID::f11, "f11", "f11", 0x67, KeyGroup::function},
    {KeyID::f12, "f12", "f12", 0x6F, KeyGroup::function},
    {KeyID::f13, "f13", "f13", 0x69, KeyGroup::function},
    {KeyID::f14, "f14", "f14", 0x6B, KeyGroup::function},
    {KeyID::f15, "f15", "f15", 0x71, KeyGroup::function},
    {KeyID::f16, "f16", "f16", 0x6A, KeyGroup::function},
    {KeyID::f17, "f17", "f17", 0x40, KeyGroup::function},
    {KeyID::f18, "f18", "f18", 0x4F, KeyGroup::function},
    {KeyID::f19, "f19", "f19", 0x50, KeyGroup::function},
    {KeyID::f20, "f20", "f20", 0x5A, KeyGroup::function},
    {KeyID::arrowLeft, "arrowLeft", "left", 0x7B, KeyGroup::navigation},
    {KeyID::arrowRight, "arrowRight", "right", 0x7C, KeyGroup::navigation},
    {KeyID::arrowUp, "arrowUp", "up", 0x7E, KeyGroup::navigation},
    {KeyID::arrowDown, "arrowDown", "down", 0x7D, KeyGroup::navigation},
    {KeyID::home, "home", "home", 0x73, KeyGroup::navigation},
    {KeyID::end, "end", "end", 0x77, KeyGroup::navigation},
    {KeyID::pageUp, "pageUp", "pageup", 0x74, KeyGroup::navigation},
    {KeyID::pageDown, "pageDown", "pagedown", 0x79, KeyGroup::navigation},
    {KeyID::forwardDelete, "forwardDelete", "forwarddelete", 0x75, KeyGroup::navigation},
    {KeyID::help, "help", "help", 0x72, KeyGroup::navigation},
    {KeyID::keypad0, "keypad0", "keypad0", 0x52, KeyGroup::numpad},
    {KeyID::keypad1, "keypad1", "keypad1", 0x53, KeyGroup::numpad},
    {KeyID::keypad2, "keypad2", "keypad2", 0x54, KeyGroup::numpad},
    {KeyID::keypad3, "keypad3", "keypad3", 0x55, KeyGroup::numpad},
    {KeyID::keypad4, "keypad4", "keypad4", 0x56, KeyGroup::numpad},
    {KeyID::keypad5, "keypad5", "keypad5", 0x57, KeyGroup::numpad},
    {KeyID::keypad6, "keypad6", "keypad6", 0x58, KeyGroup::numpad},
    {KeyID::keypad7, "keypad7", "keypad7", 0x59, KeyGroup::numpad},
    {KeyID::keypad8, "keypad8", "keypad8", 0x5B, KeyGroup::numpad},
    {KeyID::keypad9, "keypad9", "keypad9", 0x5C, KeyGroup::numpad},
    {KeyID::keypadDecimal, "keypadDecimal", "keypaddecimal", 0x41, KeyGroup::numpad},
    {KeyID::keypadComma, "keypadComma", "keypadcomma", 0x5F, KeyGroup::numpad},
    {KeyID::keypadPlus, "keypadPlus", "+", 0x45, KeyGroup::numpad},
    {KeyID::keypadMinus, "keypadMinus", "keypadminus", 0x4E, KeyGroup::numpad},
    {KeyID::keypadMultiply, "keypadMultiply", "*", 0x43, KeyGroup::numpad},
    {KeyID::keypadDivide, "keypadDivide", "keypaddivide", 0x4B, KeyGroup::numpad},
    {KeyID::keypadEquals, "keypadEquals", "keypadequals", 0x51, KeyGroup::numpad},
    {KeyID::keypadClear, "keypadClear", "keypadclear", 0x47, KeyGroup::numpad},
    {KeyID::keypadEnter, "keypadEnter", "enter", 0x4C, KeyGroup::numpad},
    {KeyID::controlLeft, "controlLeft", "leftcontrol", 0x3B, KeyGroup::modifier},
    {KeyID::controlRight, "controlRight", "rightcontrol", 0x3E, KeyGroup::modifier},
    {KeyID::optionLeft, "optionLeft", "leftoption", 0x3A, KeyGroup::modifier},
    {KeyID::optionRight, "optionRight", "rightoption", 0x3D, KeyGroup::modifier},
    {KeyID::shiftLeft, "shiftLeft", "leftshift", 0x38, KeyGroup::modifier},
    {KeyID::shiftRight, "shiftRight", "rightshift", 0x3C, KeyGroup::modifier},
    {KeyID::commandLeft, "commandLeft", "leftcommand", 0x37, KeyGroup::modifier},
    {KeyID::commandRight, "commandRight", "rightcommand", 0x36, KeyGroup::modifier},
    {KeyID::function, "function", "function", 0x3F, KeyGroup::modifier},
}};

constexpr bool rowsFollowEnumeration() {
  for (std::size_t index = 0; index < keyTable.size(); ++index) {
    if (static_cast<std::size_t>(keyTable[index].id) != index) return false;
  }
  return true;
}
static_assert(rowsFollowEnumeration(), "key table rows must follow the KeyID order");

// Virtual key codes are below 0x80; the reverse table answers a code from the
// event path with one index, and -1 marks codes no key has.
constexpr std::size_t macCodeRange = 0x80;

constexpr std::array<std::int16_t, macCodeRange> macCodeTable() {
  std::array<std::int16_t, macCodeRange> table{};
  table.fill(-1);
  for (const KeyInfo& info : keyTable) {
    if (info.macCode && *info.macCode < macCodeRange) {
      table[*info.macCode] = static_cast<std::int16_t>(info.id);
    }
  }
  return table;
}
constexpr std::array<std::int16_t, macCodeRange> keyByMacCode = macCodeTable();

constexpr bool macCodesFitAndDiffer() {
  std::size_t found = 0;
  for (std::int16_t entry : keyByMacCode) found += entry >= 0 ? 1 : 0;
  for (const KeyInfo& info : keyTable) {
    if (info.macCode && *info.macCode >= macCodeRange) return false;
  }
  return found == keyTable.size();
}
static_assert(macCodesFitAndDiffer(), "every key needs its own code below 0x80");

constexpr KeyInfo unknownKey{KeyID::keyA, "", "?", std::nullopt, KeyGroup::inert};

}  // namespace

const KeyInfo& keyInfo(KeyID key) {
  const auto index = static_cast<std::size_t>(key);
  return index < keyTable.size() ? keyTable[index] : unknownKey;
}

std::span<const KeyInfo> allKeys() { return keyTable; }

std::optional<KeyID> keyID(std::string_view identifier) {
  for (const KeyInfo& info : keyTable) {
    if (info.identifier == identifier) return info.id;
  }
  return std::nullopt;
}

std::optional<KeyID> keyIDForSpecName(std::string_view name) {
  for (const KeyInfo& info : keyTable) {
    if (info.name == name) return info.id;
  }
  return std::nullopt;
}

std::optional<KeyID> keyIDForMacCode(std::uint16_t code) {
  if (code >= macCodeRange || keyByMacCode[code] < 0) return std::nullopt;
  return static_cast<KeyID>(keyByMacCode[code]);
}

std::string_view rawValue(KeyGroup group) {
  return corvel::rawValue(std::span<const EnumName<KeyGroup>>(keyGroupNames), group);
}

}  // namespace corvel
