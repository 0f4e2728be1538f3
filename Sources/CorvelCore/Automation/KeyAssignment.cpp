#include "CorvelCore/Automation/KeyAssignment.h"

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

// A key's text on one line: cleaned, line breaks and tabs turned into
// blanks, trimmed, and 1 to 120 characters long.
std::optional<std::string> words(std::string_view raw) {
  const std::string cleaned = LayerText::clean(raw).text;
  std::string oneLine;
  oneLine.reserve(cleaned.size());
  for (std::size_t offset = 0; offset < cleaned.size();) {
    const char32_t scalar = UTF8::next(cleaned, offset);
    UTF8::append(oneLine, isLineBreakOrTab(scalar) ? U' ' : scalar);
  }
  std::string text(UnicodeText::trimmingBlanks(oneLine));
  const std::size_t length = TextLimits::characterCount(text);
  if (length < 1 || length > static_cast<std::size_t>(KeyAssignment::maxTextLength)) {
    return std::nullopt;
  }
  return text;
}

std::optional<KeyAssignment> symbolAndText(std::string_view rest) {
  const std::size_t bar = rest.find('|');
  if (bar == std::string_view::npos) return std::nullopt;
  const std::string_view symbol = rest.substr(0, bar);
  if (!LayerNames::isSymbolName(symbol)) return std::nullopt;
  auto text = words(rest.substr(bar + 1));
  if (!text) return std::nullopt;
  return KeyAssignment::symbolText(std::string(symbol), std::move(*text));
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
  const std::size_t colon = value.find(':');
  if (colon != std::string_view::npos) {
    const std::string_view prefix = value.substr(0, colon);
    const std::string_view rest = value.substr(colon + 1);
    if (prefix == "text") {
      auto text = words(rest);
      if (!text) return std::nullopt;
      return KeyAssignment::text(std::move(*text));
    }
    if (prefix == "s" || prefix == "symbol") {
      if (rest.find('|') != std::string_view::npos) return symbolAndText(rest);
      if (!LayerNames::isSymbolName(rest)) return std::nullopt;
      return KeyAssignment::symbol(std::string(rest));
    }
    if (prefix == "symtext") return symbolAndText(rest);
  }
  if (const auto bundleID = appPart(value)) {
    if (!LayerNames::isBundleID(*bundleID)) return std::nullopt;
    return KeyAssignment::app(std::string(*bundleID));
  }
  auto text = words(value);
  if (!text) return std::nullopt;
  return KeyAssignment::text(std::move(*text));
}

std::optional<std::string_view> KeyAssignment::appPart(std::string_view value) {
  const std::size_t colon = value.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view prefix = value.substr(0, colon);
  if (prefix != "a" && prefix != "app") return std::nullopt;
  return value.substr(colon + 1);
}

std::string KeyAssignment::written() const {
  struct Writer {
    std::string operator()(const Text& value) const {
      // A text that reads back as itself is written plainly; "-" stands for
      // removing a key's assignment where edits are written.
      if (value.text != removalMark && parse(value.text) == KeyAssignment::text(value.text)) {
        return value.text;
      }
      return std::string(textPrefix) + value.text;
    }
    std::string operator()(const Symbol& value) const { return "s:" + value.symbol; }
    std::string operator()(const App& value) const { return "a:" + value.bundleID; }
    std::string operator()(const SymbolText& value) const {
      return "s:" + value.symbol + "|" + value.text;
    }
  };
  return std::visit(Writer{}, value_);
}

}  // namespace corvel
