#include "CorvelCore/Theme/ThemeCodec.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "CorvelCore/Brand/Brand.h"
#include "CorvelCore/Theme/JSONObjectReader.h"
#include "CorvelCore/Theme/SoundPackID.h"
#include "CorvelCore/Theme/ThemeFieldReader.h"
#include "CorvelCore/Theme/ThemeLimits.h"

namespace corvel {

namespace {

// The type identifiers are the bundle identifiers with ".theme" appended.
constexpr bool isThemeType(std::string_view type, std::string_view bundle) {
  return type.size() == bundle.size() + 6 && type.starts_with(bundle) && type.ends_with(".theme");
}
static_assert(isThemeType(ThemeCodec::typeIdentifier, Brand::bundleID));
static_assert(isThemeType(ThemeCodec::legacyTypeIdentifier, Brand::earlierBundleID));

template <class T>
using Read = std::expected<T, ThemeError>;

// Reading stops at the first bad colour: assigns the read value to `target`,
// or returns its error from the enclosing function.
#define THEME_TRY(target, expression)                                 \
  do {                                                                \
    auto result_ = (expression);                                      \
    if (!result_) return std::unexpected(std::move(result_.error())); \
    (target) = std::move(*result_);                                   \
  } while (false)

double clamped(JSONObjectReader& reader, std::string_view key, double fallback,
               const ThemeRange& range) {
  return reader.number(key, fallback, range.lo, range.hi);
}

const JSONValue& emptyObject() {
  static const JSONValue empty{JSONObject{}};
  return empty;
}

// Reads the object `value` with a child reader at the key's path, starting
// from `base`; the record keeps the members it did not ask for as extras.
template <class T, class ReadMembers>
Read<T> readRecord(JSONObjectReader& reader, std::string_view key, const JSONValue& value, T base,
                   ReadMembers readMembers) {
  JSONObjectReader child(reader.pathOf(key), value);
  auto status = readMembers(child, base);
  if (!status) return std::unexpected(std::move(status.error()));
  base.extras = child.extras();
  reader.absorb(child);
  return base;
}

// A section that is always there: a missing one reads as an empty object
// (every member its default); one that is not an object is kept as unread.
template <class T, class ReadMembers>
Read<T> section(JSONObjectReader& reader, std::string_view key, const T& fallback,
                ReadMembers readMembers) {
  const JSONValue* found = reader.lookUp(key);
  if (found != nullptr && !found->isObject()) {
    reader.markUnread(key, *found, fallback.json());
    return fallback;
  }
  return readRecord(reader, key, found != nullptr ? *found : emptyObject(), fallback, readMembers);
}

// A record that may be absent: null gives none; another non-object is kept
// as unread; an object's missing members come from the default or, without
// one, from the record's own initial values.
template <class T, class ReadMembers>
Read<std::optional<T>> optionalRecord(JSONObjectReader& reader, std::string_view key,
                                      const std::optional<T>& fallback, ReadMembers readMembers) {
  const JSONValue* found = reader.lookUp(key);
  if (found == nullptr) return fallback;
  if (found->isNull()) return std::nullopt;
  if (!found->isObject()) {
    reader.markUnread(key, *found, fallback ? fallback->json() : JSONValue());
    return fallback;
  }
  auto record = readRecord(reader, key, *found, fallback.value_or(T{}), readMembers);
  if (!record) return std::unexpected(std::move(record.error()));
  return std::optional<T>(std::move(*record));
}

using Status = std::expected<void, ThemeError>;

Status readFrame(JSONObjectReader& reader, PlateFrame& frame) {
  THEME_TRY(frame.colour, ThemeFieldReader::color(reader, "color", frame.colour));
  frame.width = clamped(reader, "width", frame.width, ThemeLimits::range("plate.frame.width"));
  return {};
}

Status readGrid(JSONObjectReader& reader, PlateGrid& grid) {
  THEME_TRY(grid.colour, ThemeFieldReader::color(reader, "color", grid.colour));
  grid.spacing = clamped(reader, "spacing", grid.spacing, ThemeLimits::range("plate.grid.spacing"));
  grid.lineWidth =
      clamped(reader, "lineWidth", grid.lineWidth, ThemeLimits::range("plate.grid.lineWidth"));
  return {};
}

// Exactly four finite numbers; any other array or value is a wrong type.
std::optional<CornerRadii> readCorners(JSONObjectReader& reader,
                                       const std::optional<CornerRadii>& fallback) {
  const JSONValue* found = reader.lookUp("corners");
  if (found == nullptr) return fallback;
  if (found->isNull()) return std::nullopt;
  const JSONArray* array = found->asArray();
  std::array<std::optional<double>, 4> radii;
  if (array != nullptr && array->size() == 4) {
    for (std::size_t i = 0; i < 4; ++i) {
      const auto number = (*array)[i].asNumber();
      if (number && std::isfinite(*number)) {
        radii[i] = ThemeLimits::range("plate.corners").clamp(*number);
      }
    }
  }
  if (radii[0] && radii[1] && radii[2] && radii[3]) {
    return CornerRadii{*radii[0], *radii[1], *radii[2], *radii[3]};
  }
  reader.markUnread("corners", *found, fallback ? fallback->json() : JSONValue());
  return fallback;
}

Status readPlate(JSONObjectReader& reader, PlateStyle& plate) {
  THEME_TRY(plate.fill, ThemeFieldReader::fill(reader, "fill", plate.fill));
  plate.material = reader.choice("material", plate.material, enumNames(plate.material));
  plate.padding = clamped(reader, "padding", plate.padding, ThemeLimits::range("plate.padding"));
  plate.radius = clamped(reader, "radius", plate.radius, ThemeLimits::range("plate.radius"));
  THEME_TRY(plate.shadow, ThemeFieldReader::shadow(reader, "shadow", plate.shadow));
  THEME_TRY(plate.frame, optionalRecord(reader, "frame", plate.frame, readFrame));
  THEME_TRY(plate.grid, optionalRecord(reader, "grid", plate.grid, readGrid));
  plate.corners = readCorners(reader, plate.corners);
  return {};
}

Status readCaps(JSONObjectReader& reader, CapStyle& caps) {
  caps.profile = reader.choice("profile", caps.profile, enumNames(caps.profile));
  caps.gap = clamped(reader, "gap", caps.gap, ThemeLimits::range("caps.gap"));
  caps.radius = clamped(reader, "radius", caps.radius, ThemeLimits::range("caps.radius"));
  caps.depth = clamped(reader, "depth", caps.depth, ThemeLimits::range("caps.depth"));
  THEME_TRY(caps.alpha, ThemeFieldReader::fill(reader, "alpha", caps.alpha));
  THEME_TRY(caps.modifier, ThemeFieldReader::fill(reader, "modifier", caps.modifier));
  THEME_TRY(caps.accent, ThemeFieldReader::fill(reader, "accent", caps.accent));
  THEME_TRY(caps.side, ThemeFieldReader::color(reader, "side", caps.side));
  THEME_TRY(caps.ring, ThemeFieldReader::optionalColor(reader, "ring", caps.ring));
  return {};
}

Status readLegends(JSONObjectReader& reader, LegendStyle& legends) {
  static constexpr ThemeRange weight = ThemeLimits::range("legends.weight");
  legends.font = reader.choice("font", legends.font, enumNames(legends.font));
  if (auto family = reader.optionalString("family", legends.family)) {
    std::string cleaned = ThemeLimits::cleanName(*family, ThemeLimits::maxFontFamilyLength);
    legends.family =
        cleaned.empty() ? std::nullopt : std::optional<std::string>(std::move(cleaned));
  } else {
    legends.family = std::nullopt;
  }
  legends.weight = reader.integer("weight", legends.weight, static_cast<std::int64_t>(weight.lo),
                                  static_cast<std::int64_t>(weight.hi));
  legends.size = clamped(reader, "size", legends.size, ThemeLimits::range("legends.size"));
  legends.modifierSize = clamped(reader, "modifierSize", legends.modifierSize,
                                 ThemeLimits::range("legends.modifierSize"));
  THEME_TRY(legends.alpha, ThemeFieldReader::color(reader, "alpha", legends.alpha));
  THEME_TRY(legends.modifier, ThemeFieldReader::color(reader, "modifier", legends.modifier));
  THEME_TRY(legends.accent, ThemeFieldReader::color(reader, "accent", legends.accent));
  legends.placement = reader.choice("placement", legends.placement, enumNames(legends.placement));
  THEME_TRY(legends.glow, ThemeFieldReader::shadow(reader, "glow", legends.glow));
  return {};
}

Status readPress(JSONObjectReader& reader, PressStyle& press) {
  press.effect = reader.choice("effect", press.effect, enumNames(press.effect));
  THEME_TRY(press.fill, ThemeFieldReader::fill(reader, "fill", press.fill));
  THEME_TRY(press.legend, ThemeFieldReader::color(reader, "legend", press.legend));
  THEME_TRY(press.glow, ThemeFieldReader::shadow(reader, "glow", press.glow));
  press.fadeMs = clamped(reader, "fadeMs", press.fadeMs, ThemeLimits::range("press.fadeMs"));
  return {};
}

Status readCheatsheet(JSONObjectReader& reader, CheatsheetStyle& cheatsheet) {
  THEME_TRY(cheatsheet.label, ThemeFieldReader::color(reader, "label", cheatsheet.label));
  THEME_TRY(cheatsheet.fill, ThemeFieldReader::fill(reader, "fill", cheatsheet.fill));
  return {};
}

Status readBacklight(JSONObjectReader& reader, Backlight& backlight) {
  backlight.mode = reader.choice("mode", backlight.mode, enumNames(backlight.mode));
  THEME_TRY(backlight.colour, ThemeFieldReader::color(reader, "color", backlight.colour));
  return {};
}

Status readMouse(JSONObjectReader& reader, MouseStyle& mouse) {
  THEME_TRY(mouse.left, ThemeFieldReader::color(reader, "left", mouse.left));
  THEME_TRY(mouse.right, ThemeFieldReader::color(reader, "right", mouse.right));
  THEME_TRY(mouse.middle, ThemeFieldReader::color(reader, "middle", mouse.middle));
  THEME_TRY(mouse.halo, ThemeFieldReader::color(reader, "halo", mouse.halo));
  return {};
}

Status readOverride(JSONObjectReader& reader, KeyOverride& paint) {
  THEME_TRY(paint.cap, ThemeFieldReader::optionalFill(reader, "cap", paint.cap));
  THEME_TRY(paint.legend, ThemeFieldReader::optionalColor(reader, "legend", paint.legend));
  return {};
}

// Reads the first `maxOverrides` members that name a key and hold an object;
// every other member, those past the limit included, is kept as it stands
// so that nothing of a larger or newer file is lost.
Status readOverrides(JSONObjectReader& root, Theme& theme) {
  const JSONValue* found = root.lookUp("overrides");
  if (found == nullptr) return {};
  const JSONObject* members = found->asObject();
  if (members == nullptr) {
    root.markUnread("overrides", *found, JSONObject{});
    return {};
  }
  JSONObjectReader overrides(root.pathOf("overrides"), *found);
  std::size_t visited = 0;
  for (const auto& [name, value] : *members) {
    const std::optional<KeyID> key =
        visited < ThemeLimits::maxOverrides ? keyID(name) : std::nullopt;
    ++visited;
    if (!key || !value.isObject()) {
      theme.unknownOverrides.set(name, value);
      continue;
    }
    THEME_TRY(theme.overrides[*key],
              readRecord(overrides, name, value, KeyOverride{}, readOverride));
  }
  root.absorb(overrides);
  return {};
}

std::optional<std::string> readSound(JSONObjectReader& reader,
                                     const std::optional<std::string>& fallback) {
  const JSONValue* found = reader.lookUp("sound");
  if (found == nullptr) return fallback;
  if (found->isNull()) return std::nullopt;
  const JSONString* text = found->asString();
  if (text != nullptr && SoundPackID::isKnown(*text)) return std::string(*text);
  reader.markUnread("sound", *found, fallback ? JSONValue(*fallback) : JSONValue());
  return fallback;
}

// The document with every number JSON cannot hold turned into null.
JSONValue withFiniteNumbers(const JSONValue& value) {
  if (const auto number = value.asNumber()) {
    return std::isfinite(*number) ? value : JSONValue();
  }
  if (const JSONObject* object = value.asObject()) {
    JSONObject copy;
    for (const auto& [key, member] : *object) copy.set(key, withFiniteNumbers(member));
    return copy;
  }
  if (const JSONArray* array = value.asArray()) {
    JSONArray copy;
    copy.reserve(array->size());
    for (const auto& element : *array) copy.push_back(withFiniteNumbers(element));
    return copy;
  }
  return value;
}

}  // namespace

std::expected<Theme, ThemeError> ThemeCodec::decode(std::string_view data) {
  if (data.size() > maxFileBytes) return std::unexpected(ThemeError::tooLarge());
  const auto document = JSONValue::decode(data);
  if (!document || !document->isObject()) return std::unexpected(ThemeError::notJSON());

  const Theme& defaults = Theme::defaults();
  Theme theme = defaults;
  JSONObjectReader root("", *document);

  theme.version = root.integer("version", Theme::currentVersion);
  if (theme.version < 1) return std::unexpected(ThemeError::unsupportedVersion(theme.version));
  if (const JSONValue* id = root.lookUp("id")) {
    const JSONString* text = id->asString();
    if (text != nullptr && ThemeLimits::isValidID(*text)) theme.id = *text;
  }
  theme.name = ThemeLimits::cleanName(root.string("name", ""), ThemeLimits::maxNameLength);
  theme.family =
      ThemeLimits::cleanName(root.string("family", defaults.family), ThemeLimits::maxFamilyLength);
  theme.basedOn = root.optionalString("basedOn", std::nullopt);
  theme.pill = root.choice("pill", defaults.pill, enumNames(defaults.pill));

  THEME_TRY(theme.plate, section(root, "plate", defaults.plate, readPlate));
  THEME_TRY(theme.caps, section(root, "caps", defaults.caps, readCaps));
  THEME_TRY(theme.legends, section(root, "legends", defaults.legends, readLegends));
  THEME_TRY(theme.press, section(root, "press", defaults.press, readPress));
  THEME_TRY(theme.lockLight, ThemeFieldReader::color(root, "lockLight", defaults.lockLight));
  THEME_TRY(theme.cheatsheet, section(root, "cheatsheet", defaults.cheatsheet, readCheatsheet));
  THEME_TRY(theme.backlight, section(root, "backlight", defaults.backlight, readBacklight));
  theme.sound = readSound(root, defaults.sound);
  THEME_TRY(theme.mouse, optionalRecord(root, "mouse", defaults.mouse, readMouse));
  if (auto status = readOverrides(root, theme); !status) {
    return std::unexpected(std::move(status.error()));
  }

  theme.extras = root.extras();
  theme.unread = root.unread();
  if (theme.name.empty()) return std::unexpected(ThemeError::missingName());
  if (theme.family.empty()) theme.family = defaults.family;
  return theme;
}

std::string ThemeCodec::encode(const Theme& theme) {
  JSONValue document = theme.json();
  if (!document.isEncodable()) document = withFiniteNumbers(document);
  return document.encoded().value_or(std::string());
}

}  // namespace corvel

#undef THEME_TRY
