// SheetError: why a sheet file could not be read. Only these three things
// make it unreadable; entries this version cannot understand are kept
// instead. The tool turns each case into its own message.
#pragma once

#include <cstdint>
#include <variant>

namespace corvel {

struct SheetError {
  // "version" is below 1.
  struct UnsupportedVersion {
    std::int64_t version = 0;
    friend bool operator==(const UnsupportedVersion&, const UnsupportedVersion&) = default;
  };
  // Not JSON, or the root is not an object.
  struct NotJSON {
    friend bool operator==(const NotJSON&, const NotJSON&) = default;
  };
  // No "app" object, or its "bundleID" is missing, not a text or not a bundle identifier.
  struct MissingApp {
    friend bool operator==(const MissingApp&, const MissingApp&) = default;
  };

  std::variant<UnsupportedVersion, NotJSON, MissingApp> value;

  [[nodiscard]] static SheetError unsupportedVersion(std::int64_t version) {
    return {UnsupportedVersion{version}};
  }
  [[nodiscard]] static SheetError notJSON() { return {NotJSON{}}; }
  [[nodiscard]] static SheetError missingApp() { return {MissingApp{}}; }

  [[nodiscard]] const UnsupportedVersion* asUnsupportedVersion() const {
    return std::get_if<UnsupportedVersion>(&value);
  }

  friend bool operator==(const SheetError&, const SheetError&) = default;
};

}  // namespace corvel
