// KeyName: the one canonical name of a key as a user or a link writes it
// ("ESC", "Escape", "esc" and "%65sc" all name "escape"). Commands and links
// key their assignments by these names.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

struct KeyName {
  // Longest name read, in Unicode scalars (after percent-decoding).
  static constexpr std::size_t maxScalars = 32;

  // The canonical name of the key `text` names, or nothing. A text of two
  // or more bytes holding "%" is percent-decoded first when it decodes to
  // UTF-8. The name is read without regard to case, "esc" meaning escape
  // and "backspace" delete. One character names the key it is the key name
  // of ("a", "1", "`", "+"); a character that is no key's name, a blank, a
  // control or a format character names nothing. A longer text must be a
  // shortcut text of one key without modifiers ("pageup", "f5", "keyA").
  // The canonical name is that key written as a shortcut text ("plus" for
  // the keypad's "+").
  [[nodiscard]] static std::optional<std::string> canonical(std::string_view text);
};

}  // namespace corvel
