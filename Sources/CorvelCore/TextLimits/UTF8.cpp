#include "CorvelCore/TextLimits/UTF8.h"

#include <cstdint>
#include <cstring>

namespace corvel {
namespace {

// How many bytes at the start of the text are ASCII, looked at eight at a
// time: most texts are ASCII, and each of their bytes is one scalar.
std::size_t asciiPrefix(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080ULL;
  std::size_t index = 0;
  for (; index + 8 <= text.size(); index += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + index, sizeof word);
    if ((word & highBits) != 0) break;
  }
  while (index < text.size() && static_cast<std::uint8_t>(text[index]) < 0x80) ++index;
  return index;
}

}  // namespace

// A strict decoder: overlong forms, surrogates and values above U+10FFFF are
// ill-formed. Each ill-formed sequence consumes its maximal valid prefix (at
// least one byte) and reads as U+FFFD, the way ICU and the web count them.
char32_t UTF8::next(std::string_view text, std::size_t& offset) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t lead = byte(offset++);
  if (lead < 0x80) return lead;
  int length = 0;
  char32_t scalar = 0;
  std::uint8_t low = 0x80;
  std::uint8_t high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    scalar = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    scalar = lead & 0x0F;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    scalar = lead & 0x07;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return replacement;
  }
  for (int i = 1; i < length; ++i) {
    if (offset >= text.size()) return replacement;
    const std::uint8_t continuation = byte(offset);
    if (continuation < low || continuation > high) return replacement;
    low = 0x80;
    high = 0xBF;
    scalar = (scalar << 6) | (continuation & 0x3F);
    ++offset;
  }
  return scalar;
}

void UTF8::append(std::string& out, char32_t scalar) {
  if (scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF)) scalar = replacement;
  if (scalar < 0x80) {
    out.push_back(static_cast<char>(scalar));
  } else if (scalar < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (scalar >> 6)));
    out.push_back(static_cast<char>(0x80 | (scalar & 0x3F)));
  } else if (scalar < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (scalar >> 12)));
    out.push_back(static_cast<char>(0x80 | ((scalar >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (scalar & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (scalar >> 18)));
    out.push_back(static_cast<char>(0x80 | ((scalar >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((scalar >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (scalar & 0x3F)));
  }
}

std::size_t UTF8::scalarCount(std::string_view text) {
  std::size_t count = asciiPrefix(text);
  for (std::size_t offset = count; offset < text.size(); ++count) next(text, offset);
  return count;
}

bool UTF8::isValid(std::string_view text) {
  for (std::size_t offset = asciiPrefix(text); offset < text.size();) {
    const std::size_t start = offset;
    if (next(text, offset) == replacement) {
      // U+FFFD itself is valid when it is spelled out in full.
      if (text.substr(start, offset - start) != "\xEF\xBF\xBD") return false;
    }
  }
  return true;
}

bool UTF8::isASCII(std::string_view text) { return asciiPrefix(text) == text.size(); }

}  // namespace corvel
