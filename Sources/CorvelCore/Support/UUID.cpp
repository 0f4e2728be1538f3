#include "CorvelCore/Support/UUID.h"

namespace corvel {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isDashPosition(std::size_t i) { return i == 8 || i == 13 || i == 18 || i == 23; }

}  // namespace

std::optional<UUID> UUID::parse(std::string_view text) {
  if (text.size() != 36) return std::nullopt;
  std::array<std::uint8_t, 16> bytes{};
  std::size_t byte = 0;
  int high = -1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isDashPosition(i)) {
      if (text[i] != '-') return std::nullopt;
      continue;
    }
    int digit = hexValue(text[i]);
    if (digit < 0) return std::nullopt;
    if (high < 0) {
      high = digit;
    } else {
      bytes[byte++] = static_cast<std::uint8_t>(high * 16 + digit);
      high = -1;
    }
  }
  return UUID(bytes);
}

std::string UUID::text() const {
  std::string out;
  out.reserve(36);
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) out.push_back('-');
    out.push_back(kDigits[bytes_[i] >> 4]);
    out.push_back(kDigits[bytes_[i] & 0x0F]);
  }
  return out;
}

}  // namespace corvel
