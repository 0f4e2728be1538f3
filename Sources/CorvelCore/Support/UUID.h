// UUID: the 128-bit identity of a layer. Read from its canonical text in
// either letter case; written in upper case, as the app's own files have it.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

class UUID {
 public:
  UUID() = default;
  explicit UUID(const std::array<std::uint8_t, 16>& bytes) : bytes_(bytes) {}

  // Parses "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX" (36 characters, hexadecimal
  // digits of either case); anything else gives nothing.
  [[nodiscard]] static std::optional<UUID> parse(std::string_view text);

  // The canonical text, upper-case hexadecimal digits.
  [[nodiscard]] std::string text() const;
  [[nodiscard]] const std::array<std::uint8_t, 16>& bytes() const { return bytes_; }

  friend bool operator==(const UUID&, const UUID&) = default;
  // Byte by byte, as std::array orders; written out because libc++ 16 (what
  // Xcode ships) has no three-way comparison of arrays.
  friend std::strong_ordering operator<=>(const UUID& a, const UUID& b) {
    for (std::size_t index = 0; index < a.bytes_.size(); ++index) {
      if (const auto order = a.bytes_[index] <=> b.bytes_[index]; order != 0) return order;
    }
    return std::strong_ordering::equal;
  }

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace corvel

template <>
struct std::hash<corvel::UUID> {
  std::size_t operator()(const corvel::UUID& id) const noexcept {
    std::size_t h = 0;
    for (std::uint8_t byte : id.bytes()) h = h * 131 + byte;
    return h;
  }
};
