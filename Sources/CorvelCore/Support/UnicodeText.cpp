#include "CorvelCore/Support/UnicodeText.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <limits>

namespace corvel {
namespace {

// The scalar at `offset`, advancing past it; a malformed sequence reads as U+FFFD.
char32_t nextScalar(std::string_view text, std::size_t& offset) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto length = static_cast<std::int64_t>(text.size());
  auto position = static_cast<std::int64_t>(offset);
  UChar32 scalar = 0;
  U8_NEXT(bytes, position, length, scalar);
  offset = static_cast<std::size_t>(position);
  return scalar < 0 ? U'\uFFFD' : static_cast<char32_t>(scalar);
}

}  // namespace

std::string UnicodeText::lowercased(std::string_view text) {
  bool ascii = true;
  for (char byte : text) ascii = ascii && static_cast<unsigned char>(byte) < 0x80;
  // Plain ASCII needs no tables; it is also the only way through for a text
  // too long for ICU's 32-bit lengths.
  if (ascii || text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    std::string result(text);
    for (char& byte : result) {
      if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    }
    return result;
  }
  icu::UnicodeString wide = icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
  wide.toLower(icu::Locale::getRoot());
  std::string result;
  wide.toUTF8String(result);
  return result;
}

bool UnicodeText::isBlank(char32_t scalar) {
  return scalar == U'\t' || u_charType(static_cast<UChar32>(scalar)) == U_SPACE_SEPARATOR;
}

std::string_view UnicodeText::trimmingBlanks(std::string_view text) {
  // One walk forward: where the first non-blank starts and where the last one ends.
  std::size_t start = text.size();
  std::size_t end = 0;
  std::size_t offset = 0;
  while (offset < text.size()) {
    const std::size_t scalarStart = offset;
    if (!isBlank(nextScalar(text, offset))) {
      if (start == text.size()) start = scalarStart;
      end = offset;
    }
  }
  return start < end ? text.substr(start, end - start) : std::string_view();
}

bool UnicodeText::isInvisible(char32_t scalar) {
  switch (u_charType(static_cast<UChar32>(scalar))) {
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
    case U_CONTROL_CHAR:
    case U_FORMAT_CHAR:
    case U_SURROGATE:
    case U_PRIVATE_USE_CHAR:
    case U_UNASSIGNED:
      return true;
    default:
      return false;
  }
}

}  // namespace corvel
