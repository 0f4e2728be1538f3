// UTF8: small helpers for walking and building UTF-8 text scalar by scalar.
// Bytes that are not well-formed UTF-8 read as U+FFFD, one per bad sequence,
// so that no input can make a walker stop early or read out of bounds.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvel {

struct UTF8 {
  static constexpr char32_t replacement = 0xFFFD;

  // The scalar at `offset` (which must be < text.size()); advances `offset`
  // past it.
  static char32_t next(std::string_view text, std::size_t& offset);
  // Appends the scalar's UTF-8 bytes.
  static void append(std::string& out, char32_t scalar);
  // The number of scalars in the text.
  [[nodiscard]] static std::size_t scalarCount(std::string_view text);
  // True when the text is well-formed UTF-8.
  [[nodiscard]] static bool isValid(std::string_view text);
  // True when every byte is ASCII.
  [[nodiscard]] static bool isASCII(std::string_view text);
};

}  // namespace corvel
