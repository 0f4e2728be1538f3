// LinkCoding: percent-encoding of the names and values a command link
// carries, and its reverse. Only the letters, digits and "-._~:/@" stand as
// they are; every other byte, including each byte of a non-ASCII character,
// is written "%" and two upper-case hexadecimal digits.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

struct LinkCoding {
  // Appends the encoded text.
  static void appendEncoded(std::string& out, std::string_view text);
  // The number of bytes `appendEncoded` would append.
  [[nodiscard]] static std::size_t encodedSize(std::string_view text);
  // The decoded text; nothing when a "%" is not followed by two hexadecimal
  // digits or the bytes are not well-formed UTF-8.
  [[nodiscard]] static std::optional<std::string> decode(std::string_view text);
};

}  // namespace corvel
