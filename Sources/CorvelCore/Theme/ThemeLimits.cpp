#include "CorvelCore/Theme/ThemeLimits.h"

#include <unicode/uchar.h>

#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {

namespace {

// Joiners and direction marks are invisible but change how a name reads
// (emoji sequences, right-to-left names), so they survive the cleaning.
bool isKeptFormatCharacter(char32_t scalar) {
  return scalar == 0x200C || scalar == 0x200D || scalar == 0x200E || scalar == 0x200F ||
         scalar == 0x061C;
}

bool isRemoved(char32_t scalar) {
  switch (u_charType(static_cast<UChar32>(scalar))) {
    case U_CONTROL_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
      return true;
    case U_FORMAT_CHAR:
      return !isKeptFormatCharacter(scalar);
    default:
      return false;
  }
}

// Spaces of every kind, tabs and every line break.
bool isSpaceOrNewline(char32_t scalar) {
  if ((scalar >= 0x09 && scalar <= 0x0D) || scalar == 0x85) return true;
  const auto type = u_charType(static_cast<UChar32>(scalar));
  return type == U_SPACE_SEPARATOR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR;
}

std::string_view trimmed(std::string_view text) {
  std::size_t start = 0;
  std::size_t end = 0;
  bool seenContent = false;
  for (std::size_t offset = 0; offset < text.size();) {
    const std::size_t before = offset;
    if (!isSpaceOrNewline(UTF8::next(text, offset))) {
      if (!seenContent) start = before;
      seenContent = true;
      end = offset;
    }
  }
  return seenContent ? text.substr(start, end - start) : std::string_view();
}

}  // namespace

bool ThemeLimits::isValidID(std::string_view text) {
  if (text.empty() || text.size() > maxIDLength) return false;
  if (text.front() == '-' || text.back() == '-') return false;
  char previous = '\0';
  for (const char c : text) {
    const bool allowed = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
    if (!allowed || (c == '-' && previous == '-')) return false;
    previous = c;
  }
  return true;
}

bool ThemeLimits::isMineID(std::string_view text) {
  return text.starts_with(minePrefix) && isValidID(text);
}

std::string ThemeLimits::cleanName(std::string_view text, std::int64_t max) {
  std::string kept;
  kept.reserve(text.size());
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t scalar = UTF8::next(text, offset);
    if (!isRemoved(scalar)) UTF8::append(kept, scalar);
  }
  const std::string cut = TextLimits::cut(trimmed(kept), max);
  return std::string(trimmed(cut));
}

}  // namespace corvel
