#include "CorvelCore/Keyboard/KeyboardGeometry.h"

namespace corvel {

namespace {

using K = KeyID;

constexpr Keycap at(KeyID key, double x, double y, double width = 1, double height = 1) {
  return {key, {x, y, width, height}, std::nullopt};
}

// The MacBook keyboard: every row is 14.5 units wide. The function row has
// full-height keys; the Touch ID button at its right end (13.5) sends no key.
constexpr std::array macBookANSICaps{
    // Function row.
    at(K::escape, 0, 0, 1.5), at(K::f1, 1.5, 0), at(K::f2, 2.5, 0), at(K::f3, 3.5, 0),
    at(K::f4, 4.5, 0), at(K::f5, 5.5, 0), at(K::f6, 6.5, 0), at(K::f7, 7.5, 0), at(K::f8, 8.5, 0),
    at(K::f9, 9.5, 0), at(K::f10, 10.5, 0), at(K::f11, 11.5, 0), at(K::f12, 12.5, 0),
    // Digits.
    at(K::backquote, 0, 1), at(K::digit1, 1, 1), at(K::digit2, 2, 1), at(K::digit3, 3, 1),
    at(K::digit4, 4, 1), at(K::digit5, 5, 1), at(K::digit6, 6, 1), at(K::digit7, 7, 1),
    at(K::digit8, 8, 1), at(K::digit9, 9, 1), at(K::digit0, 10, 1), at(K::minus, 11, 1),
    at(K::equal, 12, 1), at(K::deleteKey, 13, 1, 1.5),
    // Top letter row.
    at(K::tab, 0, 2, 1.5), at(K::keyQ, 1.5, 2), at(K::keyW, 2.5, 2), at(K::keyE, 3.5, 2),
    at(K::keyR, 4.5, 2), at(K::keyT, 5.5, 2), at(K::keyY, 6.5, 2), at(K::keyU, 7.5, 2),
    at(K::keyI, 8.5, 2), at(K::keyO, 9.5, 2), at(K::keyP, 10.5, 2), at(K::bracketLeft, 11.5, 2),
    at(K::bracketRight, 12.5, 2), at(K::backslash, 13.5, 2),
    // Home row.
    at(K::capsLock, 0, 3, 1.75), at(K::keyA, 1.75, 3), at(K::keyS, 2.75, 3), at(K::keyD, 3.75, 3),
    at(K::keyF, 4.75, 3), at(K::keyG, 5.75, 3), at(K::keyH, 6.75, 3), at(K::keyJ, 7.75, 3),
    at(K::keyK, 8.75, 3), at(K::keyL, 9.75, 3), at(K::semicolon, 10.75, 3), at(K::quote, 11.75, 3),
    at(K::returnKey, 12.75, 3, 1.75),
    // Bottom letter row.
    at(K::shiftLeft, 0, 4, 2.25), at(K::keyZ, 2.25, 4), at(K::keyX, 3.25, 4), at(K::keyC, 4.25, 4),
    at(K::keyV, 5.25, 4), at(K::keyB, 6.25, 4), at(K::keyN, 7.25, 4), at(K::keyM, 8.25, 4),
    at(K::comma, 9.25, 4), at(K::period, 10.25, 4), at(K::slash, 11.25, 4),
    at(K::shiftRight, 12.25, 4, 2.25),
    // Modifier row with the inverted-T arrows, each half a key high.
    at(K::function, 0, 5), at(K::controlLeft, 1, 5), at(K::optionLeft, 2, 5),
    at(K::commandLeft, 3, 5, 1.25), at(K::space, 4.25, 5, 5), at(K::commandRight, 9.25, 5, 1.25),
    at(K::optionRight, 10.5, 5), at(K::arrowLeft, 11.5, 5.5, 1, 0.5),
    at(K::arrowUp, 12.5, 5, 1, 0.5), at(K::arrowDown, 12.5, 5.5, 1, 0.5),
    at(K::arrowRight, 13.5, 5.5, 1, 0.5)};

// The full-size ISO keyboard: a 14.5-unit main block, the navigation block at
// 15 to 18 and the keypad at 18.5 to 22.5. On Mac ISO keyboards the key left
// of 1 is the section key and the one beside the left shift sends the
// backquote's code. The return key is drawn from two rectangles: the wide
// upper part in the top letter row and the narrower lower part in the home row.
constexpr std::array fullSizeISOCaps{
    // Function row.
    at(K::escape, 0, 0, 1.5), at(K::f1, 1.5, 0), at(K::f2, 2.5, 0), at(K::f3, 3.5, 0),
    at(K::f4, 4.5, 0), at(K::f5, 5.5, 0), at(K::f6, 6.5, 0), at(K::f7, 7.5, 0), at(K::f8, 8.5, 0),
    at(K::f9, 9.5, 0), at(K::f10, 10.5, 0), at(K::f11, 11.5, 0), at(K::f12, 12.5, 0),
    at(K::f13, 15, 0), at(K::f14, 16, 0), at(K::f15, 17, 0), at(K::f16, 18.5, 0),
    at(K::f17, 19.5, 0), at(K::f18, 20.5, 0), at(K::f19, 21.5, 0),
    // Digits.
    at(K::section, 0, 1), at(K::digit1, 1, 1), at(K::digit2, 2, 1), at(K::digit3, 3, 1),
    at(K::digit4, 4, 1), at(K::digit5, 5, 1), at(K::digit6, 6, 1), at(K::digit7, 7, 1),
    at(K::digit8, 8, 1), at(K::digit9, 9, 1), at(K::digit0, 10, 1), at(K::minus, 11, 1),
    at(K::equal, 12, 1), at(K::deleteKey, 13, 1, 1.5), at(K::function, 15, 1), at(K::home, 16, 1),
    at(K::pageUp, 17, 1), at(K::keypadClear, 18.5, 1), at(K::keypadEquals, 19.5, 1),
    at(K::keypadDivide, 20.5, 1), at(K::keypadMultiply, 21.5, 1),
    // Top letter row.
    at(K::tab, 0, 2, 1.5), at(K::keyQ, 1.5, 2), at(K::keyW, 2.5, 2), at(K::keyE, 3.5, 2),
    at(K::keyR, 4.5, 2), at(K::keyT, 5.5, 2), at(K::keyY, 6.5, 2), at(K::keyU, 7.5, 2),
    at(K::keyI, 8.5, 2), at(K::keyO, 9.5, 2), at(K::keyP, 10.5, 2), at(K::bracketLeft, 11.5, 2),
    at(K::bracketRight, 12.5, 2),
    Keycap{K::returnKey, {13.5, 2, 1, 1}, KeyFrame{13.75, 3, 0.75, 1}}, at(K::forwardDelete, 15, 2),
    at(K::end, 16, 2), at(K::pageDown, 17, 2), at(K::keypad7, 18.5, 2), at(K::keypad8, 19.5, 2),
    at(K::keypad9, 20.5, 2), at(K::keypadMinus, 21.5, 2),
    // Home row.
    at(K::capsLock, 0, 3, 1.75), at(K::keyA, 1.75, 3), at(K::keyS, 2.75, 3), at(K::keyD, 3.75, 3),
    at(K::keyF, 4.75, 3), at(K::keyG, 5.75, 3), at(K::keyH, 6.75, 3), at(K::keyJ, 7.75, 3),
    at(K::keyK, 8.75, 3), at(K::keyL, 9.75, 3), at(K::semicolon, 10.75, 3), at(K::quote, 11.75, 3),
    at(K::backslash, 12.75, 3), at(K::keypad4, 18.5, 3), at(K::keypad5, 19.5, 3),
    at(K::keypad6, 20.5, 3), at(K::keypadPlus, 21.5, 3),
    // Bottom letter row.
    at(K::shiftLeft, 0, 4, 1.25), at(K::backquote, 1.25, 4), at(K::keyZ, 2.25, 4),
    at(K::keyX, 3.25, 4), at(K::keyC, 4.25, 4), at(K::keyV, 5.25, 4), at(K::keyB, 6.25, 4),
    at(K::keyN, 7.25, 4), at(K::keyM, 8.25, 4), at(K::comma, 9.25, 4), at(K::period, 10.25, 4),
    at(K::slash, 11.25, 4), at(K::shiftRight, 12.25, 4, 2.25), at(K::arrowUp, 16, 4),
    at(K::keypad1, 18.5, 4), at(K::keypad2, 19.5, 4), at(K::keypad3, 20.5, 4),
    at(K::keypadEnter, 21.5, 4, 1, 2),
    // Modifier row.
    at(K::controlLeft, 0, 5, 1.25), at(K::optionLeft, 1.25, 5, 1.25),
    at(K::commandLeft, 2.5, 5, 1.5), at(K::space, 4, 5, 6.5), at(K::commandRight, 10.5, 5, 1.5),
    at(K::optionRight, 12, 5, 1.25), at(K::controlRight, 13.25, 5, 1.25), at(K::arrowLeft, 15, 5),
    at(K::arrowDown, 16, 5), at(K::arrowRight, 17, 5), at(K::keypad0, 18.5, 5, 2),
    at(K::keypadDecimal, 20.5, 5)};

}  // namespace

const KeyboardGeometry& KeyboardGeometry::macBookANSI() {
  static const KeyboardGeometry geometry("MacBook ANSI", macBookANSICaps);
  return geometry;
}

const KeyboardGeometry& KeyboardGeometry::fullSizeISO() {
  static const KeyboardGeometry geometry("Full-size ISO", fullSizeISOCaps);
  return geometry;
}

KeyboardGeometry::KeyboardGeometry(std::string_view name, std::span<const Keycap> caps)
    : name_(name), caps_(caps) {
  index_.fill(noCap);
  for (std::size_t i = 0; i < caps_.size(); ++i) {
    const KeyFrame shape = caps_[i].shape();
    bounds_ = i == 0 ? shape : bounds_.united(shape);
    const auto key = static_cast<std::size_t>(caps_[i].key);
    // Caps past the byte-sized index, or of keys outside the table, are
    // drawn but cannot be looked up.
    if (i < noCap && key < keyCount && index_[key] == noCap) {
      index_[key] = static_cast<std::uint8_t>(i);
    }
  }
}

const Keycap* KeyboardGeometry::cap(KeyID key) const {
  const auto index = static_cast<std::size_t>(key);
  if (index >= keyCount || index_[index] == noCap) return nullptr;
  return &caps_[index_[index]];
}

}  // namespace corvel
