// ThemeFieldReader: the theme's own reads on top of the lenient object
// reader — colours, fills and shadows. Unlike the reader's plain reads, a
// colour that does not parse is not absorbed: it fails the whole document
// with `badColor`, naming the field's full dotted path and the value found.
#pragma once

#include <expected>
#include <optional>
#include <string_view>

#include "CorvelCore/Theme/JSONObjectReader.h"
#include "CorvelCore/Theme/ThemeColor.h"
#include "CorvelCore/Theme/ThemeError.h"
#include "CorvelCore/Theme/ThemeParts.h"

namespace corvel {

struct ThemeFieldReader {
  // A colour string; missing gives the default; null, another type or a text
  // that does not parse is `badColor`.
  [[nodiscard]] static std::expected<ThemeColor, ThemeError> color(JSONObjectReader& reader,
                                                                   std::string_view key,
                                                                   const ThemeColor& fallback);
  // As `color`, except that null gives nothing.
  [[nodiscard]] static std::expected<std::optional<ThemeColor>, ThemeError> optionalColor(
      JSONObjectReader& reader, std::string_view key, const std::optional<ThemeColor>& fallback);

  // A string is a solid colour. An object needs "top" and "bottom" colours
  // (else `badColor` at the path plus ".top" or ".bottom"); with a "radial"
  // object it is a radial gradient, otherwise a linear one at "angle"
  // (default 180, normalised), which is a plain `linear` fill at 180 with no
  // other members. Unknown members become the gradient's extras; a "radial"
  // that is not an object or an "angle" that is not a number counts as
  // absent and is kept as unread. Missing gives the default; null or any
  // other type gives the default, marked unread.
  [[nodiscard]] static std::expected<Fill, ThemeError> fill(JSONObjectReader& reader,
                                                            std::string_view key,
                                                            const Fill& fallback);
  // As `fill`, except that null gives nothing, unmarked.
  [[nodiscard]] static std::expected<std::optional<Fill>, ThemeError> optionalFill(
      JSONObjectReader& reader, std::string_view key, const std::optional<Fill>& fallback);

  // An object is a shadow ("color", and "radius", "x", "y" clamped to the
  // shadow ranges), its missing members taken from the default or, without
  // one, from a plain soft shadow. Null gives nothing; another type gives
  // the default, marked unread; missing gives the default.
  [[nodiscard]] static std::expected<std::optional<Shadow>, ThemeError> shadow(
      JSONObjectReader& reader, std::string_view key, const std::optional<Shadow>& fallback);
};

}  // namespace corvel
