#include "CorvelCore/Automation/LinkCoding.h"

#include <algorithm>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {

namespace {

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::size_t LinkCoding::encodedSize(std::string_view text) {
  std::size_t size = 0;
  for (char c : text) size += unreservedTable[static_cast<unsigned char>(c)] ? 1 : 3;
  return size;
}

bool LinkCoding::isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return isPlain(c); });
}

bool LinkCoding::decode(std::string_view text, std::string& out) {
  // Decoding never lengthens a text: it is written into room of the text's
  // size, then cut to what it decoded to.
  const std::size_t start = out.size();
  bool wellFormed = true;
  out.resize_and_overwrite(start + text.size(), [&](char* data, std::size_t) {
    char* at = data + start;
    // The runs between escapes are copied whole.
    std::string_view rest = text;
    for (std::size_t escape = rest.find('%'); escape != std::string_view::npos;
         escape = rest.find('%')) {
      at = std::copy_n(rest.data(), escape, at);
      const int high = rest.size() - escape < 3 ? -1 : hexValue(rest[escape + 1]);
      const int low = high < 0 ? -1 : hexValue(rest[escape + 2]);
      if (low < 0) {
        wellFormed = false;
        return static_cast<std::size_t>(at - data);
      }
      *at++ = static_cast<char>(high * 16 + low);
      rest.remove_prefix(escape + 3);
    }
    at = std::copy(rest.begin(), rest.end(), at);
    return static_cast<std::size_t>(at - data);
  });
  return wellFormed && UTF8::isValid(std::string_view(out).substr(start));
}

}  // namespace corvel
