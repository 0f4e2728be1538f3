// LinkCoding: percent-encoding of the names and values a command link
// carries, and its reverse. Only the letters, digits and "-._~:/@" stand as
// they are; every other byte, including each byte of a non-ASCII character,
// is written "%" and two upper-case hexadecimal digits.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace corvel {

struct LinkCoding {
  // Hands the encoded bytes of the text to `put` (as `void put(char)`) one
  // at a time, for writers that keep their own buffer.
  template <class Put>
  static void encode(std::string_view text, Put&& put) {
    for (char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      if (unreservedTable[byte]) {
        put(c);
      } else {
        put('%');
        put(hexDigits[byte >> 4]);
        put(hexDigits[byte & 0x0F]);
      }
    }
  }
  // The number of bytes the text encodes to.
  [[nodiscard]] static std::size_t encodedSize(std::string_view text);
  // True when the byte (or every byte of the text) decodes to itself: ASCII but "%".
  [[nodiscard]] static bool isPlain(char byte) {
    return static_cast<unsigned char>(byte) < 0x80 && byte != '%';
  }
  [[nodiscard]] static bool isPlain(std::string_view text);
  // Appends the decoded text to `out`; false when a "%" is not followed by
  // two hexadecimal digits or the decoded bytes are not well-formed UTF-8.
  [[nodiscard]] static bool decode(std::string_view text, std::string& out);

 private:
  static constexpr std::string_view unreservedBytes =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/@";
  // A lookup table made from the set above, so encoding is one load per byte.
  static constexpr std::array<bool, 256> unreservedTable = [] {
    std::array<bool, 256> table{};
    for (char c : unreservedBytes) table[static_cast<unsigned char>(c)] = true;
    return table;
  }();
  static constexpr std::string_view hexDigits = "0123456789ABCDEF";
};

}  // namespace corvel
