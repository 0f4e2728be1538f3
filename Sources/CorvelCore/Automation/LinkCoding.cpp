#include "CorvelCore/Automation/LinkCoding.h"

#include <algorithm>
#include <array>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {

namespace {

constexpr std::string_view unreservedBytes =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/@";

// A lookup table built once from the set above, so encoding is one load per byte.
constexpr std::array<bool, 256> unreservedTable = [] {
  std::array<bool, 256> table{};
  for (char c : unreservedBytes) table[static_cast<unsigned char>(c)] = true;
  return table;
}();

constexpr std::string_view hexDigits = "0123456789ABCDEF";

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

bool LinkCoding::isUnreserved(char byte) {
  return unreservedTable[static_cast<unsigned char>(byte)];
}

void LinkCoding::appendEncoded(std::string& out, std::string_view text) {
  const std::size_t size = encodedSize(text);
  if (size == text.size()) {
    out.append(text);
    return;
  }
  // Written straight into room made for the whole encoded text.
  std::size_t at = out.size();
  out.resize(at + size);
  for (char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (unreservedTable[byte]) {
      out[at++] = c;
    } else {
      out[at++] = '%';
      out[at++] = hexDigits[byte >> 4];
      out[at++] = hexDigits[byte & 0x0F];
    }
  }
}

std::size_t LinkCoding::encodedSize(std::string_view text) {
  std::size_t size = 0;
  for (char c : text) size += unreservedTable[static_cast<unsigned char>(c)] ? 1 : 3;
  return size;
}

std::optional<std::string> LinkCoding::decode(std::string_view text) {
  // ASCII without "%" (most names and values) stands as it is.
  if (std::none_of(text.begin(), text.end(),
                   [](char c) { return c == '%' || static_cast<unsigned char>(c) >= 0x80; })) {
    return std::string(text);
  }
  if (text.find('%') == std::string_view::npos) {
    if (!UTF8::isValid(text)) return std::nullopt;
    return std::string(text);
  }
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      out.push_back(text[i]);
      continue;
    }
    if (text.size() - i < 3) return std::nullopt;
    int high = hexValue(text[i + 1]);
    int low = hexValue(text[i + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    out.push_back(static_cast<char>(high * 16 + low));
    i += 2;
  }
  if (!UTF8::isValid(out)) return std::nullopt;
  return out;
}

}  // namespace corvel
