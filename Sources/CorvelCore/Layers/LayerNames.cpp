#include "CorvelCore/Layers/LayerNames.h"

#include <unicode/uchar.h>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

bool isLetterOrDigit(char32_t c) {
  return (U_GET_GC_MASK(static_cast<UChar32>(c)) & (U_GC_L_MASK | U_GC_ND_MASK)) != 0;
}

bool isMark(char32_t c) { return (U_GET_GC_MASK(static_cast<UChar32>(c)) & U_GC_M_MASK) != 0; }

}  // namespace

bool LayerNames::isBundleID(std::string_view text) {
  if (text.empty() || text.size() > maxBundleIDBytes) return false;
  if (text.front() == '.') return false;
  bool afterLetter = false;
  for (std::size_t offset = 0; offset < text.size();) {
    // ASCII's letters and digits are its only ones, and it has no marks.
    if (const auto byte = static_cast<unsigned char>(text[offset]); byte < 0x80) {
      const bool letterOrDigit = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                                 (byte >= '0' && byte <= '9');
      if (!letterOrDigit && byte != '-' && byte != '_' && byte != '.') return false;
      // No ".." anywhere.
      if (byte == '.' && offset > 0 && text[offset - 1] == '.') return false;
      afterLetter = letterOrDigit;
      ++offset;
      continue;
    }
    const std::size_t start = offset;
    const char32_t c = UTF8::next(text, offset);
    if (c == UTF8::replacement && text.substr(start, offset - start) != "\xEF\xBF\xBD") {
      return false;  // not UTF-8 at all
    }
    if (isLetterOrDigit(c)) {
      afterLetter = true;
    } else if (isMark(c) && afterLetter) {
      // A letter written with combining accents is still one letter.
    } else if (c == '-' || c == '_' || c == '.') {
      afterLetter = false;
    } else {
      return false;
    }
  }
  return true;
}

bool LayerNames::isSymbolName(std::string_view text) {
  if (text.empty() || text.size() > maxSymbolNameBytes) return false;
  if (text.front() == '.' || text.back() == '.') return false;
  for (char c : text) {
    const bool allowed = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.';
    if (!allowed) return false;
  }
  return true;
}

}  // namespace corvel
