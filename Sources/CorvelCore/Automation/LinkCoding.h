// LinkCoding: percent-encoding of the names and values a command link
// carries, and its reverse. Only the letters, digits and "-._~:/@" stand as
// they are; every other byte, including each byte of a non-ASCII character,
// is written "%" and two upper-case hexadecimal digits.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace corvel {

struct LinkCoding {
  // Writes the encoded text at `out`, which must have room for it (three
  // bytes for each of the text's always do), and returns where it ends.
  static char* encode(std::string_view text, char* out) {
    const char* in = text.data();
    const char* const end = in + text.size();
    const auto encodeByte = [&out](char c) {
      const auto byte = static_cast<unsigned char>(c);
      if (unreservedTable[byte]) {
        *out++ = c;
      } else {
        out[0] = '%';
        out[1] = hexDigits[byte >> 4];
        out[2] = hexDigits[byte & 0x0F];
        out += 3;
      }
    };
    // Nearly every byte stands as it is: eight are looked up together and,
    // when all of them do, copied as one.
    constexpr std::ptrdiff_t chunk = 8;
    for (; end - in >= chunk; in += chunk) {
      bool plain = true;
      for (std::ptrdiff_t index = 0; index < chunk; ++index) {
        plain &= unreservedTable[static_cast<unsigned char>(in[index])];
      }
      if (plain) {
        std::memcpy(out, in, chunk);
        out += chunk;
      } else {
        std::for_each(in, in + chunk, encodeByte);
      }
    }
    std::for_each(in, end, encodeByte);
    return out;
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
