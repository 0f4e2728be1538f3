// ThemeError: why a theme document could not be read. Only these five things
// make a theme unreadable; every other problem is absorbed by the lenient
// reader. The tool turns each case into its own message.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace corvel {

struct ThemeError {
  // "version" is below 1.
  struct UnsupportedVersion {
    std::int64_t version = 0;
    friend bool operator==(const UnsupportedVersion&, const UnsupportedVersion&) = default;
  };
  // A colour that does not parse, or a colour key holding a non-colour.
  struct BadColor {
    std::string field;  // the full dotted path, with ".top" / ".bottom" inside a fill
    std::string value;  // the offending value's compact text
    friend bool operator==(const BadColor&, const BadColor&) = default;
  };
  // Not JSON, or the root is not an object.
  struct NotJSON {
    friend bool operator==(const NotJSON&, const NotJSON&) = default;
  };
  // The name is empty once cleaned.
  struct MissingName {
    friend bool operator==(const MissingName&, const MissingName&) = default;
  };
  // The document is longer than the largest theme file read.
  struct TooLarge {
    friend bool operator==(const TooLarge&, const TooLarge&) = default;
  };

  std::variant<UnsupportedVersion, BadColor, NotJSON, MissingName, TooLarge> value;

  [[nodiscard]] static ThemeError unsupportedVersion(std::int64_t version) {
    return {UnsupportedVersion{version}};
  }
  [[nodiscard]] static ThemeError badColor(std::string field, std::string value) {
    return {BadColor{std::move(field), std::move(value)}};
  }
  [[nodiscard]] static ThemeError notJSON() { return {NotJSON{}}; }
  [[nodiscard]] static ThemeError missingName() { return {MissingName{}}; }
  [[nodiscard]] static ThemeError tooLarge() { return {TooLarge{}}; }

  [[nodiscard]] const UnsupportedVersion* asUnsupportedVersion() const {
    return std::get_if<UnsupportedVersion>(&value);
  }
  [[nodiscard]] const BadColor* asBadColor() const { return std::get_if<BadColor>(&value); }

  friend bool operator==(const ThemeError&, const ThemeError&) = default;
};

}  // namespace corvel
