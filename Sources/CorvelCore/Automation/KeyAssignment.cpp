#include "CorvelCore/Automation/KeyAssignment.h"

#include <algorithm>
#include <utility>

#include "CorvelCore/Layers/LayerNames.h"
#include "CorvelCore/Layers/LayerText.h"
#include "CorvelCore/Support/UnicodeText.h"
#include "CorvelCore/TextLimits/TextLimits.h"
#include "CorvelCore/TextLimits/UTF8.h"

namespace corvel {
namespace {

constexpr std::string_view textPrefix = "text:";
constexpr std::string_view removalMark = "-";

bool isLineBreakOrTab(char32_t scalar) {
  return (scalar >= 0x09 && scalar <= 0x0D) || scalar == 0x85 || scalar == 0x2028 ||
         scalar == 0x2029;
}

bool isPrintableASCII(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

// Printable ASCII has nothing to clean or flatten, its only blank is the
// space, and each byte is one character.
std::string_view trimmedSpaces(std::string_view text) {
  const std::size_t start = text.find_first_not_of(' ');
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(' ') - start + 1);
}

bool fitsTextLength(std::size_t characters) {
  return characters >= 1 && characters <= static_cast<std::size_t>(KeyAssignment::maxTextLength);
}

// A key's text on one line: cleaned, line breaks and tabs turned into
// blanks, trimmed, and 1 to 120 characters long.
std::optional<std::string> words(std::string_view raw) {
  if (isPrintableASCII(raw)) {
    const std::string_view text = trimmedSpaces(raw);
    if (!fitsTextLength(text.size())) return std::nullopt;
    return std::string(text);
  }
  const std::string cleaned = LayerText::clean(raw).text;
  std::string oneLine;
  oneLine.reserve(cleaned.size());
  for (std::size_t offset = 0; offset < cleaned.size();) {
    const char32_t scalar = UTF8::next(cleaned, offset);
    UTF8::append(oneLine, isLineBreakOrTab(scalar) ? U' ' : scalar);
  }
  std::string text(UnicodeText::trimmingBlanks(oneLine));
  if (!fitsTextLength(TextLimits::characterCount(text))) return std::nullopt;
  return text;
}

// Whether `parse` reads the text back as that very text: a kind's prefix
// before the first ":" makes it something else (or a shorter text), and
// otherwise it must already be one line, cleaned, trimmed and short enough.
bool readsAsItself(std::string_view text) {
  if (const std::size_t colon = text.find(':'); colon != std::string_view::npos) {
    const std::string_view prefix = text.substr(0, colon);
    for (std::string_view kind : {"text", "s", "symbol", "symtext", "a", "app"}) {
      if (prefix == kind) return false;
    }
  }
  if (isPrintableASCII(text)) {
    return fitsTextLength(text.size()) && text.front() != ' ' && text.back() != ' ';
  }
  const std::optional<std::string> read = words(text);
  return read && *read == text;
}

// A text assignment of the value's words, or nothing.
std::optional<KeyAssignment> textAssignment(std::string_view value) {
  auto text = words(value);
  if (!text) return std::nullopt;
  return std::optional<KeyAssignment>(std::in_place, KeyAssignment::Text{std::move(*text)});
}

// A symbol and a text written with a "|" between them, at `bar`.
std::optional<KeyAssignment> symbolAndText(std::string_view rest, std::size_t bar) {
  if (bar == std::string_view::npos) return std::nullopt;
  const std::string_view symbol = rest.substr(0, bar);
  if (!LayerNames::isSymbolName(symbol)) return std::nullopt;
  auto text = words(rest.substr(bar + 1));
  if (!text) return std::nullopt;
  return std::optional<KeyAssignment>(
      std::in_place, KeyAssignment::SymbolText{std::string(symbol), std::move(*text)});
}

}  // namespace

KeyAssignment KeyAssignment::text(std::string text) { return KeyAssignment(Text{std::move(text)}); }

KeyAssignment KeyAssignment::symbol(std::string symbol) {
  return KeyAssignment(Symbol{std::move(symbol)});
}

KeyAssignment KeyAssignment::app(std::string bundleID) {
  return KeyAssignment(App{std::move(bundleID)});
}

KeyAssignment KeyAssignment::symbolText(std::string symbol, std::string text) {
  return KeyAssignment(SymbolText{std::move(symbol), std::move(text)});
}

std::optional<KeyAssignment> KeyAssignment::parse(std::string_view value) {
  // A kind's prefix is at most seven letters long, so only a colon among
  // the first eight bytes can end one.
  constexpr std::size_t kLongestPrefix = 7;
  std::size_t colon = 0;
  while (colon < value.size() && colon <= kLongestPrefix && value[colon] != ':') ++colon;
  if (colon < value.size() && colon <= kLongestPrefix) {
    const std::string_view prefix = value.substr(0, colon);
    const std::string_view rest = value.substr(colon + 1);
    if (prefix == "text") return textAssignment(rest);
    if (prefix == "s" || prefix == "symbol") {
      if (const std::size_t bar = rest.find('|'); bar != std::string_view::npos) {
        return symbolAndText(rest, bar);
      }
      if (!LayerNames::isSymbolName(rest)) return std::nullopt;
      return std::optional<KeyAssignment>(std::in_place, Symbol{std::string(rest)});
    }
    if (prefix == "symtext") return symbolAndText(rest, rest.find('|'));
    // The first ":" is this one, so the value names an app as `appPart` says.
    if (prefix == "a" || prefix == "app") {
      if (!LayerNames::isBundleID(rest)) return std::nullopt;
      return std::optional<KeyAssignment>(std::in_place, App{std::string(rest)});
    }
  }
  return textAssignment(value);
}

std::optional<std::string_view> KeyAssignment::appPart(std::string_view value) {
  const std::size_t colon = value.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view prefix = value.substr(0, colon);
  if (prefix != "a" && prefix != "app") return std::nullopt;
  return value.substr(colon + 1);
}

KeyAssignment::Written KeyAssignment::writtenParts() const {
  struct Writer {
    Written operator()(const Text& value) const {
      // A text that reads back as itself is written plainly; "-" stands for
      // removing a key's assignment where edits are written.
      if (value.text != removalMark && readsAsItself(value.text)) return {{}, value.text, {}, {}};
      return {textPrefix, value.text, {}, {}};
    }
    Written operator()(const Symbol& value) const { return {"s:", value.symbol, {}, {}}; }
    Written operator()(const App& value) const { return {"a:", value.bundleID, {}, {}}; }
    Written operator()(const SymbolText& value) const {
      return {"s:", value.symbol, "|", value.text};
    }
  };
  return std::visit(Writer{}, value_);
}

std::string KeyAssignment::written() const {
  const Written parts = writtenParts();
  std::string out;
  out.reserve(parts.prefix.size() + parts.first.size() + parts.bar.size() + parts.second.size());
  out.append(parts.prefix).append(parts.first).append(parts.bar).append(parts.second);
  return out;
}

}  // namespace corvel
