#include "CorvelCore/Automation/ParameterText.h"

#include <algorithm>
#include <climits>
#include <cstdint>

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {

namespace {

template <class Predicate>
std::string_view trimmed(std::string_view text, Predicate isTrimmed) {
  std::size_t start = 0;
  std::size_t end = 0;
  bool seenKept = false;
  std::size_t offset = 0;
  while (offset < text.size()) {
    std::size_t before = offset;
    char32_t scalar = UTF8::next(text, offset);
    if (isTrimmed(scalar)) continue;
    if (!seenKept) start = before;
    seenKept = true;
    end = offset;
  }
  return seenKept ? text.substr(start, end - start) : std::string_view();
}

}  // namespace

bool ParameterText::isBlank(char32_t scalar) {
  if (scalar == U'\t' || scalar == U' ') return true;
  if (scalar < 0x80) return false;
  return u_charType(static_cast<UChar32>(scalar)) == U_SPACE_SEPARATOR;
}

bool ParameterText::isLineBreak(char32_t scalar) {
  return (scalar >= 0x0A && scalar <= 0x0D) || scalar == 0x85 || scalar == 0x2028 ||
         scalar == 0x2029;
}

std::string_view ParameterText::trimmedBlanks(std::string_view text) {
  return trimmed(text, isBlank);
}

std::string_view ParameterText::trimmedBlanksAndLineBreaks(std::string_view text) {
  return trimmed(text, [](char32_t scalar) { return isBlank(scalar) || isLineBreak(scalar); });
}

std::string ParameterText::lowercased(std::string_view text) {
  std::string result(text);
  if (UTF8::isASCII(text)) {
    for (char& c : result) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
  }
  result.clear();
  auto length = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), INT32_MAX));
  icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), length))
      .toLower(icu::Locale::getRoot())
      .toUTF8String(result);
  return result;
}

}  // namespace corvel
