#include "CorvelCore/Layers/LayerNames.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>

#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

bool isLetterOrDigit(char32_t c) {
  return (U_GET_GC_MASK(static_cast<UChar32>(c)) & (U_GC_L_MASK | U_GC_ND_MASK)) != 0;
}

bool isMark(char32_t c) { return (U_GET_GC_MASK(static_cast<UChar32>(c)) & U_GC_M_MASK) != 0; }

// What each ASCII byte may be in the names, so that a byte costs one lookup.
enum AsciiClass : unsigned char {
  letterOrDigit = 1,  // ASCII's letters and digits are its only ones
  separator = 2,      // "-", "_" and "." between a bundle identifier's words
  inSymbolName = 4,   // lower-case letters, digits and "."
};

constexpr std::array<unsigned char, 128> asciiClasses = [] {
  std::array<unsigned char, 128> classes{};
  const auto mark = [&classes](std::string_view bytes, unsigned kind) {
    for (char c : bytes) classes[static_cast<unsigned char>(c)] |= static_cast<unsigned char>(kind);
  };
  mark("abcdefghijklmnopqrstuvwxyz0123456789", letterOrDigit | inSymbolName);
  mark("ABCDEFGHIJKLMNOPQRSTUVWXYZ", letterOrDigit);
  mark("-_.", separator);
  mark(".", inSymbolName);
  return classes;
}();

}  // namespace

bool LayerNames::isBundleID(std::string_view text) {
  if (text.empty() || text.size() > maxBundleIDBytes) return false;
  // No ".." anywhere.
  if (text.front() == '.' || text.find("..") != std::string_view::npos) return false;
  // ASCII's letters and digits are its only ones, and it has no marks.
  const auto isAllowedASCII = [](unsigned char byte) {
    return byte < 0x80 && (asciiClasses[byte] & (letterOrDigit | separator)) != 0;
  };
  if (std::all_of(text.begin(), text.end(),
                  [&](char c) { return isAllowedASCII(static_cast<unsigned char>(c)); })) {
    return true;
  }
  bool afterLetter = false;
  for (std::size_t offset = 0; offset < text.size();) {
    if (const auto byte = static_cast<unsigned char>(text[offset]); byte < 0x80) {
      if (!isAllowedASCII(byte)) return false;
      afterLetter = (asciiClasses[byte] & letterOrDigit) != 0;
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
  return std::all_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x80 && (asciiClasses[byte] & inSymbolName) != 0;
  });
}

}  // namespace corvel
