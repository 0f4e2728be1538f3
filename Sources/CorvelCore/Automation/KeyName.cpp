#include "CorvelCore/Automation/KeyName.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>
#include <vector>

#include "CorvelCore/Keyboard/KeyID.h"
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

// The canonical name of `text`, worked out in full.
std::optional<std::string> canonicalName(std::string_view text) {
  std::string name(text);
  if (text.size() >= 2 && text.find('%') != std::string_view::npos) {
    if (auto decoded = percentDecoded(text)) name = std::move(*decoded);
  }
  if (name.empty() || UTF8::scalarCount(name) > KeyName::maxScalars || !UTF8::isValid(name)) {
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

// Names longer than this are never looked up among the plain names.
constexpr std::size_t kLongestPlainName = KeyName::maxScalars;

void lowercaseASCII(std::string& text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
}

// The names keys are written and known by (each key's name, identifier and
// shortcut text, and the aliases), in lower-case ASCII, each with what
// `canonicalName` gives for it: a name in plain ASCII, which is what
// commands and links nearly always carry, is found here instead of being
// worked out again. Made when first needed.
class PlainNames {
 public:
  PlainNames() {
    std::vector<std::string> candidates;
    for (const KeyInfo& info : allKeys()) {
      candidates.emplace_back(info.name);
      candidates.emplace_back(info.identifier);
      candidates.push_back(KeySpec::format(KeyCombo{{}, info.id}));
    }
    for (const Alias& entry : aliases) candidates.emplace_back(entry.alias);
    for (std::string& candidate : candidates) {
      if (candidate.empty() || candidate.size() > kLongestPlainName ||
          candidate.find('%') != std::string::npos || !UTF8::isASCII(candidate)) {
        continue;
      }
      lowercaseASCII(candidate);
      if (auto name = canonicalName(candidate)) entries_.emplace_back(candidate, std::move(*name));
    }
    // The index points into the entries, which no longer move.
    for (const auto& [lowered, name] : entries_) {
      index_.emplace(lowered, &name);
      if (lowered.size() == 1) byCharacter_[static_cast<unsigned char>(lowered.front())] = &name;
    }
  }

  [[nodiscard]] const std::string* find(std::string_view lowered) const {
    // Names of one character, the most common, need no hashing.
    if (lowered.size() == 1) return byCharacter_[static_cast<unsigned char>(lowered.front())];
    const auto found = index_.find(lowered);
    return found == index_.end() ? nullptr : found->second;
  }

 private:
  std::vector<std::pair<std::string, std::string>> entries_;
  std::unordered_map<std::string_view, const std::string*> index_;
  std::array<const std::string*, 128> byCharacter_{};
};

}  // namespace

std::optional<std::string> KeyName::canonical(std::string_view text) {
  // Percent-decoding and lower-casing leave such a text as its ASCII
  // lower case, the name the table was worked out for.
  if (!text.empty() && text.size() <= kLongestPlainName &&
      std::all_of(text.begin(), text.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '%'; })) {
    // Only the text's own length of it is filled and read.
    std::array<char, kLongestPlainName> lowered;
    std::transform(text.begin(), text.end(), lowered.begin(), [](char c) {
      return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    static const PlainNames names;
    if (const std::string* name = names.find(std::string_view(lowered.data(), text.size()))) {
      return *name;
    }
  }
  return canonicalName(text);
}

}  // namespace corvel
