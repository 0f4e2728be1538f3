// ParameterText: the small text rules shared by the readers of command
// parameters: what counts as a blank or a line break, trimming them, and
// lowercasing for comparisons that ignore case.
#pragma once

#include <string>
#include <string_view>

namespace corvel {

struct ParameterText {
  // A tab or a space separator (general category Zs).
  [[nodiscard]] static bool isBlank(char32_t scalar);
  // U+000A to U+000D, U+0085, U+2028 or U+2029.
  [[nodiscard]] static bool isLineBreak(char32_t scalar);
  // The text without blanks at either end.
  [[nodiscard]] static std::string_view trimBlanks(std::string_view text) {
    return hasVisibleEnds(text) ? text : trimmedBlanks(text);
  }
  // The text without blanks or line breaks at either end.
  [[nodiscard]] static std::string_view trimBlanksAndLineBreaks(std::string_view text) {
    return hasVisibleEnds(text) ? text : trimmedBlanksAndLineBreaks(text);
  }
  // The text in lower case by the Unicode rules of no particular language.
  [[nodiscard]] static std::string lowercased(std::string_view text);
  // True when the texts are equal once their ASCII letters are lowercased;
  // for comparing (lowercased) input with the fixed ASCII names of commands.
  [[nodiscard]] static bool equalsIgnoringASCIICase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
      // Bytes mostly match as they are; only those that do not are lowered.
      if (a[i] != b[i] && lowerASCII(a[i]) != lowerASCII(b[i])) return false;
    }
    return true;
  }
  // The letter in lower case when it is an ASCII capital; any other byte as it is.
  [[nodiscard]] static constexpr char lowerASCII(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }

 private:
  // Printable ASCII other than the space is neither a blank nor a line
  // break: a text that starts and ends with it, as most do, keeps its ends.
  [[nodiscard]] static bool hasVisibleEnds(std::string_view text) {
    const auto visible = [](char c) { return c > ' ' && c < 0x7F; };
    return !text.empty() && visible(text.front()) && visible(text.back());
  }
  [[nodiscard]] static std::string_view trimmedBlanks(std::string_view text);
  [[nodiscard]] static std::string_view trimmedBlanksAndLineBreaks(std::string_view text);
};

}  // namespace corvel
