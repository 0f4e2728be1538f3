#include "CorvelCore/Automation/KeyName.h"

#include <unicode/uchar.h>

#include <array>

#include "CorvelCore/Shortcuts/KeySpec.h"
#include "CorvelCore/Support/UnicodeText.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

struct Alias {
  std::string_view alias;
  std::string_view name;
};

constexpr std::array<Alias, 2> aliases{{{"esc", "escape"}, {"backspace", "delete"}}};

int hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

// The text with every "%XX" decoded, or nothing when an escape is malformed
// or the bytes are not UTF-8.
std::optional<std::string> percentDecoded(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (text[index] != '%') {
      bytes += text[index];
      continue;
    }
    if (index + 2 >= text.size()) return std::nullopt;
    const int high = hexValue(text[index + 1]);
    const int low = hexValue(text[index + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
    index += 2;
  }
  if (!UTF8::isValid(bytes)) return std::nullopt;
  return bytes;
}

// Blanks and what cannot be seen name no key.
bool namesNothing(std::string_view character) {
  std::size_t offset = 0;
  const char32_t scalar = UTF8::next(character, offset);
  return u_isUWhiteSpace(static_cast<UChar32>(scalar)) ||
         u_charType(static_cast<UChar32>(scalar)) == U_SPACE_SEPARATOR ||
         UnicodeText::isInvisible(scalar);
}

}  // namespace

std::optional<std::string> KeyName::canonical(std::string_view text) {
  std::string name(text);
  if (text.size() >= 2 && text.find('%') != std::string_view::npos) {
    if (auto decoded = percentDecoded(text)) name = std::move(*decoded);
  }
  if (name.empty() || UTF8::scalarCount(name) > maxScalars || !UTF8::isValid(name)) {
    return std::nullopt;
  }
  name = UnicodeText::lowercased(name);
  for (const Alias& entry : aliases) {
    if (name == entry.alias) name = entry.name;
  }
  std::optional<KeyID> key;
  if (TextLimits::characterCount(name) == 1) {
    key = keyIDForSpecName(name);
    // A character no key of the table is named by (an "é" or "ü" of another
    // layout) still names the key that types it; it is written as itself.
    // Invisible characters name nothing, and "?" is what a key without a
    // name is written as, so it cannot name one.
    if (!key) {
      if (namesNothing(name) || name == "?") return std::nullopt;
      return name;
    }
  } else if (const auto steps = KeySpec::parse(name);
             steps && steps->size() == 1 && steps->front().modifiers.empty()) {
    key = steps->front().key;
  }
  if (!key) return std::nullopt;
  const KeyCombo combo{{}, *key};
  std::string written = KeySpec::format(combo);
  if (written.empty() || written == "?") return std::nullopt;
  if (KeySpec::parse(written) != std::vector<KeyCombo>{combo}) return std::nullopt;
  return written;
}

}  // namespace corvel
