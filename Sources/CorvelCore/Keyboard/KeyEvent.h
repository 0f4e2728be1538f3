// KeyEvent: one event of the keyboard as the app's event tap sees it, reduced
// to what the keyboard's small state machines need: what happened, to which
// key, and the system's modifier flags at that moment (the side-independent
// flags and the device-dependent side bits, as the system reports them).
#pragma once

#include <cstdint>
#include <optional>

#include "CorvelCore/Keyboard/KeyID.h"

namespace corvel {

struct KeyEvent {
  enum class Kind {
    keyDown,       // a key went down, or repeats while held
    keyUp,         // a key came up
    flagsChanged,  // a modifier key went down or up; `flags` tells which way
    media,         // a media or brightness key, which has no place among the keys
  };

  Kind kind = Kind::keyDown;
  // The key; none for media events and for key codes the key table lacks.
  std::optional<KeyID> key;
  // The system's modifier flags at the event.
  std::uint64_t flags = 0;
  // For media events, whether the key went down rather than up; key events
  // say which way by their kind, and modifier keys by their flags.
  bool isPress = true;

  [[nodiscard]] static KeyEvent keyDown(KeyID key, std::uint64_t flags = 0) {
    return {Kind::keyDown, key, flags, true};
  }
  [[nodiscard]] static KeyEvent keyUp(KeyID key, std::uint64_t flags = 0) {
    return {Kind::keyUp, key, flags, false};
  }
  [[nodiscard]] static KeyEvent flagsChanged(KeyID key, std::uint64_t flags) {
    return {Kind::flagsChanged, key, flags, true};
  }
  [[nodiscard]] static KeyEvent media(bool isPress) {
    return {Kind::media, std::nullopt, 0, isPress};
  }

  friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

}  // namespace corvel
