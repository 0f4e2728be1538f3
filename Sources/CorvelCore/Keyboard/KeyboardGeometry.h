// KeyboardGeometry: the physical plan of one keyboard model, which keys it has
// and where each sits, for drawing the board and for effects that spread from
// a pressed key to its neighbours. Frames are in key units (see KeyFrame).
//
// Two models are built in: the MacBook's own ANSI keyboard (function row with
// a wide escape key, inverted-T arrows of half height, fn at the bottom left)
// and a full-size Mac ISO keyboard with function keys up to F19, a navigation
// block and a numeric keypad. Places with no key the system can name (the
// Touch ID button) are left empty.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "CorvelCore/Keyboard/KeyFrame.h"
#include "CorvelCore/Keyboard/KeyID.h"

namespace corvel {

// One key cap: its key and its frame, with a second frame for keys drawn from
// two rectangles (the ISO return key).
struct Keycap {
  KeyID key = KeyID::keyA;
  KeyFrame frame;
  std::optional<KeyFrame> secondFrame;

  // The frame, united with the second frame when there is one.
  [[nodiscard]] constexpr KeyFrame shape() const {
    return secondFrame ? frame.united(*secondFrame) : frame;
  }

  friend constexpr bool operator==(const Keycap&, const Keycap&) = default;
};

class KeyboardGeometry {
 public:
  // The MacBook's built-in ANSI keyboard.
  [[nodiscard]] static const KeyboardGeometry& macBookANSI();
  // A full-size Mac ISO keyboard with numeric keypad.
  [[nodiscard]] static const KeyboardGeometry& fullSizeISO();

  // A geometry over `caps`, which must outlive it; when a key appears twice,
  // `cap` finds its first cap.
  KeyboardGeometry(std::string_view name, std::span<const Keycap> caps);

  // The model's name, for logs and tests ("MacBook ANSI").
  [[nodiscard]] std::string_view name() const { return name_; }
  // Every cap, in drawing order: row by row from the top, left to right.
  [[nodiscard]] std::span<const Keycap> caps() const { return caps_; }
  // The cap of `key`, or null when the model lacks the key; constant time.
  [[nodiscard]] const Keycap* cap(KeyID key) const;
  // The rectangle holding every cap.
  [[nodiscard]] KeyFrame bounds() const { return bounds_; }

 private:
  static constexpr std::uint8_t noCap = 0xFF;
  static_assert(keyCount < noCap, "cap indices fit one byte");

  std::string_view name_;
  std::span<const Keycap> caps_;
  std::array<std::uint8_t, keyCount> index_{};
  KeyFrame bounds_{0, 0, 0, 0};
};

}  // namespace corvel
