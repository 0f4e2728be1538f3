// ThemeCodec: a theme as the JSON document the app saves, the tool exports
// and imports, and users share. Reading is lenient and loses nothing: unknown
// members are kept, wrong-typed values fall back to the default and are
// written back unchanged, numbers out of range are clamped. Only an
// oversized file, text that is not a JSON object, a version below 1, a bad
// colour and an empty name make a document unreadable.
#pragma once

#include <array>
#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

#include "CorvelCore/Theme/Theme.h"
#include "CorvelCore/Theme/ThemeError.h"

namespace corvel {

struct ThemeCodec {
  static constexpr std::string_view fileExtension = "quillontheme";
  static constexpr std::string_view documentTypeName = "Quillon Theme";
  static constexpr std::string_view typeIdentifier = "app.quillon.Quillon.theme";
  // Files saved under the app's earlier name, still opened.
  static constexpr std::string_view legacyFileExtension = "corveltheme";
  static constexpr std::string_view legacyDocumentTypeName = "Corvel Theme";
  static constexpr std::string_view legacyTypeIdentifier = "app.corvel.Corvel.theme";
  // Every extension a theme file is opened from, the current one first.
  static constexpr std::array<std::string_view, 2> readableExtensions{fileExtension,
                                                                      legacyFileExtension};
  // The largest document read, in bytes (1 MiB).
  static constexpr std::size_t maxFileBytes = 1048576;

  // The theme in `data`. Fails with tooLarge beyond `maxFileBytes` (nothing
  // parsed), notJSON unless the root is a JSON object, unsupportedVersion for
  // a "version" below 1, badColor at the first colour that does not parse,
  // and missingName when the name is empty after cleaning.
  [[nodiscard]] static std::expected<Theme, ThemeError> decode(std::string_view data);

  // The theme's JSON, pretty-printed with sorted keys and "/" unescaped. A
  // number that JSON cannot hold (set by code, never read) is written as null.
  [[nodiscard]] static std::string encode(const Theme& theme);
};

}  // namespace corvel
