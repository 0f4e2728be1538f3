#include "CorvelCore/Theme/ThemeFieldReader.h"

#include <string>

#include "CorvelCore/Theme/ThemeLimits.h"

namespace corvel {

namespace {

std::expected<ThemeColor, ThemeError> parsedColor(const JSONValue& value, std::string field) {
  if (const JSONString* text = value.asString()) {
    if (auto parsed = ThemeColor::parse(*text)) return *parsed;
  }
  return std::unexpected(ThemeError::badColor(std::move(field), value.compactText()));
}

// One end of a gradient. A missing end quotes the whole fill object, as
// there is no value of its own to show.
std::expected<ThemeColor, ThemeError> gradientEnd(JSONObjectReader& fill, std::string_view key,
                                                  const JSONValue& fillValue) {
  const JSONValue* end = fill.lookUp(key);
  if (end == nullptr) {
    return std::unexpected(ThemeError::badColor(fill.pathOf(key), fillValue.compactText()));
  }
  return parsedColor(*end, fill.pathOf(key));
}

Shape radialShape(JSONObjectReader& fill, const JSONValue& radialValue) {
  JSONObjectReader radial(fill.pathOf("radial"), radialValue);
  static constexpr ThemeRange x = ThemeLimits::range("gradient.radial.x");
  static constexpr ThemeRange y = ThemeLimits::range("gradient.radial.y");
  static constexpr ThemeRange w = ThemeLimits::range("gradient.radial.w");
  static constexpr ThemeRange h = ThemeLimits::range("gradient.radial.h");
  const RadialShape defaults;
  Shape shape = Shape::radial(radial.number("x", defaults.centreX, x.lo, x.hi),
                              radial.number("y", defaults.centreY, y.lo, y.hi),
                              radial.number("w", defaults.width, w.lo, w.hi),
                              radial.number("h", defaults.height, h.lo, h.hi));
  fill.absorb(radial);
  return shape;
}

// A fill given as a string or an object; `value` is one of the two.
std::expected<Fill, ThemeError> readFill(JSONObjectReader& reader, std::string_view key,
                                         const JSONValue& value) {
  if (value.asString() != nullptr) {
    auto color = parsedColor(value, reader.pathOf(key));
    if (!color) return std::unexpected(color.error());
    return Fill::solid(*color);
  }
  JSONObjectReader fill(reader.pathOf(key), value);
  auto top = gradientEnd(fill, "top", value);
  if (!top) return std::unexpected(top.error());
  auto bottom = gradientEnd(fill, "bottom", value);
  if (!bottom) return std::unexpected(bottom.error());

  const JSONValue* radial = fill.lookUp("radial");
  const JSONValue* angle = fill.lookUp("angle");
  GradientFill gradient{Shape::linear(180), *top, *bottom, fill.extras()};
  // A wrong-typed shape member reads as absent but goes back into the file,
  // as a wrong-typed value does anywhere else.
  if (radial != nullptr && !radial->isObject()) fill.markUnread("radial", *radial, JSONValue());

  Fill result;
  if (radial != nullptr && radial->isObject()) {
    gradient.shape = radialShape(fill, *radial);
    result = Fill::gradient(std::move(gradient));
  } else {
    const std::optional<double> degrees = angle != nullptr ? angle->asNumber() : std::nullopt;
    gradient.shape = Shape::linear(degrees.value_or(180));
    const bool plain = gradient.shape == Shape::linear(180) && gradient.extras.empty();
    result = plain ? Fill::linear(gradient.from, gradient.to) : Fill::gradient(std::move(gradient));
    if (angle != nullptr && !degrees) {
      fill.markUnread("angle", *angle, plain ? JSONValue() : JSONValue(180.0));
    }
  }
  reader.absorb(fill);
  return result;
}

JSONValue optionalJSON(const auto& part) { return part ? part->json() : JSONValue(); }

}  // namespace

std::expected<ThemeColor, ThemeError> ThemeFieldReader::color(JSONObjectReader& reader,
                                                              std::string_view key,
                                                              const ThemeColor& fallback) {
  const JSONValue* found = reader.lookUp(key);
  if (found == nullptr) return fallback;
  return parsedColor(*found, reader.pathOf(key));
}

std::expected<std::optional<ThemeColor>, ThemeError> ThemeFieldReader::optionalColor(
    JSONObjectReader& reader, std::string_view key, const std::optional<ThemeColor>& fallback) {
  const JSONValue* found = reader.lookUp(key);
  if (found == nullptr) return fallback;
  if (found->isNull()) return std::nullopt;
  return parsedColor(*found, reader.pathOf(key));
}

std::expected<Fill, ThemeError> ThemeFieldReader::fill(JSONObjectReader& reader,
                                                       std::string_view key, const Fill& fallback) {
  const JSONValue* found = reader.lookUp(key);
  if (found == nullptr) return fallback;
  if (found->asString() != nullptr || found->isObject()) return readFill(reader, key, *found);
  reader.markUnread(key, *found, fallback.json());
  return fallback;
}

std::expected<std::optional<Fill>, ThemeError> ThemeFieldReader::optionalFill(
    JSONObjectReader& reader, std::string_view key, const std::optional<Fill>& fallback) {
  const JSONValue* found = reader.lookUp(key);
  if (found == nullptr) return fallback;
  if (found->isNull()) return std::nullopt;
  if (found->asString() != nullptr || found->isObject()) return readFill(reader, key, *found);
  reader.markUnread(key, *found, optionalJSON(fallback));
  return fallback;
}

std::expected<std::optional<Shadow>, ThemeError> ThemeFieldReader::shadow(
    JSONObjectReader& reader, std::string_view key, const std::optional<Shadow>& fallback) {
  const JSONValue* found = reader.lookUp(key);
  if (found == nullptr) return fallback;
  if (found->isNull()) return std::nullopt;
  if (!found->isObject()) {
    reader.markUnread(key, *found, optionalJSON(fallback));
    return fallback;
  }
  static constexpr ThemeRange radius = ThemeLimits::range("shadow.radius");
  static constexpr ThemeRange x = ThemeLimits::range("shadow.x");
  static constexpr ThemeRange y = ThemeLimits::range("shadow.y");
  const Shadow base = fallback.value_or(Shadow{});
  JSONObjectReader child(reader.pathOf(key), *found);
  Shadow result;
  auto color = ThemeFieldReader::color(child, "color", base.color);
  if (!color) return std::unexpected(color.error());
  result.color = *color;
  result.radius = child.number("radius", base.radius, radius.lo, radius.hi);
  result.x = child.number("x", base.x, x.lo, x.hi);
  result.y = child.number("y", base.y, y.lo, y.hi);
  result.extras = child.extras();
  reader.absorb(child);
  return result;
}

}  // namespace corvel
