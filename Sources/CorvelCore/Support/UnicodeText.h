// UnicodeText: the few Unicode text operations the small grammars (key
// names, shortcut texts, trigger texts, key assignments) share: letter case
// and blanks. Bytes that are not well-formed UTF-8 read as U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace corvel {

struct UnicodeText {
  // The text in lower case by the full Unicode mapping of the root locale
  // (so "İ" becomes "i" and a combining dot, and the Kelvin sign a "k").
  [[nodiscard]] static std::string lowercased(std::string_view text);

  // A blank is a tab or a space separator (U+0020, U+00A0, U+2000 to U+200A, U+3000 ...).
  [[nodiscard]] static bool isBlank(char32_t scalar);

  // True for what cannot be seen or typed as a character: line and paragraph
  // separators, controls, format characters, surrogates, private-use and
  // unassigned code points.
  [[nodiscard]] static bool isInvisible(char32_t scalar);

  // The text without the blanks at either end.
  [[nodiscard]] static std::string_view trimmingBlanks(std::string_view text);
};

}  // namespace corvel
