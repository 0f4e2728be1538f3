// KeyAssignment: what a command gives one key of a layer: a text, a symbol,
// an app to open, or a symbol with a text. Links and command lines write it
// as "text", "s:symbol", "a:bundle.id" or "s:symbol|text".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvel {

class KeyAssignment {
 public:
  struct Text {
    std::string text;
    friend bool operator==(const Text&, const Text&) = default;
  };
  struct Symbol {
    std::string symbol;
    friend bool operator==(const Symbol&, const Symbol&) = default;
  };
  struct App {
    std::string bundleID;
    friend bool operator==(const App&, const App&) = default;
  };
  struct SymbolText {
    std::string symbol;
    std::string text;
    friend bool operator==(const SymbolText&, const SymbolText&) = default;
  };
  using Value = std::variant<Text, Symbol, App, SymbolText>;

  // Longest text of a key, in characters.
  static constexpr std::int64_t maxTextLength = 120;

  // The helpers and the constructors take their values as given; `parse`
  // is the checked way in. The constructors make each case where it is
  // kept, without a variant moved in between.
  explicit KeyAssignment(Text value) : value_(std::in_place_type<Text>, std::move(value)) {}
  explicit KeyAssignment(Symbol value) : value_(std::in_place_type<Symbol>, std::move(value)) {}
  explicit KeyAssignment(App value) : value_(std::in_place_type<App>, std::move(value)) {}
  explicit KeyAssignment(SymbolText value)
      : value_(std::in_place_type<SymbolText>, std::move(value)) {}

  static KeyAssignment text(std::string text);
  static KeyAssignment symbol(std::string symbol);
  static KeyAssignment app(std::string bundleID);
  static KeyAssignment symbolText(std::string symbol, std::string text);

  // Reads a written assignment, or nothing. Before the first ":" a prefix
  // may choose the kind: "text:" a text; "s:" or "symbol:" a symbol name,
  // or with "|" a symbol name and a text; "symtext:" a symbol name, "|" and
  // a text; "a:" or "app:" a bundle identifier. Any other value, or other
  // prefix (10:30), is all text. A text is cleaned, its line breaks and tabs
  // become blanks, blanks are trimmed, and it must keep 1 to 120 characters.
  [[nodiscard]] static std::optional<KeyAssignment> parse(std::string_view value);

  // What follows the "a:" or "app:" prefix (matched as written) of a value
  // that names an app, or nothing for a value of another kind. The tool asks
  // this before it resolves an app's name, so it and the link reader agree
  // on which values name apps.
  [[nodiscard]] static std::optional<std::string_view> appPart(std::string_view value);

  // The written form, which `parse` reads back as this assignment: "s:" and
  // the symbol, "a:" and the bundle identifier, "s:" symbol "|" text, or
  // the text itself, prefixed "text:" when it is "-" or would read as
  // something else.
  [[nodiscard]] std::string written() const;

  // The written form in the pieces it is joined from (unused ones empty),
  // for writers that encode it without joining it first.
  struct Written {
    std::string_view prefix;  // "text:", "s:", "a:" or nothing
    std::string_view first;   // the text, symbol or bundle identifier
    std::string_view bar;     // "|" between a symbol and its text
    std::string_view second;  // the text after a symbol
  };
  [[nodiscard]] Written writtenParts() const;

  [[nodiscard]] const Value& value() const { return value_; }

  friend bool operator==(const KeyAssignment&, const KeyAssignment&) = default;

 private:
  Value value_;
};

}  // namespace corvel
