// ThemeParts: the records a theme is made of — fills and gradient shapes,
// shadows, the plate with its frame, grid and corners, the caps, legends,
// press, cheatsheet, backlight, mouse and per-key styles — and the
// enumerations they use, each with the table of its written names.
//
// Every record is a plain value compared field by field. A record with
// `extras` keeps there the JSON members of its object that this version does
// not know, so that they survive a read and a write. `json()` gives the
// record's JSON form: its extras plus its own members (an absent optional
// member is written as null); lengths are in points against a key unit of 46.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "CorvelCore/Support/EnumName.h"
#include "CorvelCore/Theme/JSONValue.h"
#include "CorvelCore/Theme/ThemeColor.h"

namespace corvel {

enum class CapProfile { flat, oem, sa, low };
enum class LegendFont { system, rounded, mono, pixel, handwritten, serif };
enum class LegendPlacement { centre, topLeft };
enum class PressEffect { sink, glow, flash, inkOnly };
enum class PlateMaterial { solid, frosted, none, smoked };
enum class PillStyle { light, dark, glass };
enum class BacklightMode { off, underglow, wave };

// The cases of each enumeration with their written names, in declaration order.
inline constexpr std::array<EnumName<CapProfile>, 4> capProfileNames{{
    {CapProfile::flat, "flat"},
    {CapProfile::oem, "oem"},
    {CapProfile::sa, "sa"},
    {CapProfile::low, "low"},
}};
inline constexpr std::array<EnumName<LegendFont>, 6> legendFontNames{{
    {LegendFont::system, "system"},
    {LegendFont::rounded, "rounded"},
    {LegendFont::mono, "mono"},
    {LegendFont::pixel, "pixel"},
    {LegendFont::handwritten, "handwritten"},
    {LegendFont::serif, "serif"},
}};
inline constexpr std::array<EnumName<LegendPlacement>, 2> legendPlacementNames{{
    {LegendPlacement::centre, "centre"},
    {LegendPlacement::topLeft, "topLeft"},
}};
inline constexpr std::array<EnumName<PressEffect>, 4> pressEffectNames{{
    {PressEffect::sink, "sink"},
    {PressEffect::glow, "glow"},
    {PressEffect::flash, "flash"},
    {PressEffect::inkOnly, "inkOnly"},
}};
inline constexpr std::array<EnumName<PlateMaterial>, 4> plateMaterialNames{{
    {PlateMaterial::solid, "solid"},
    {PlateMaterial::frosted, "frosted"},
    {PlateMaterial::none, "none"},
    {PlateMaterial::smoked, "smoked"},
}};
inline constexpr std::array<EnumName<PillStyle>, 3> pillStyleNames{{
    {PillStyle::light, "light"},
    {PillStyle::dark, "dark"},
    {PillStyle::glass, "glass"},
}};
inline constexpr std::array<EnumName<BacklightMode>, 3> backlightModeNames{{
    {BacklightMode::off, "off"},
    {BacklightMode::underglow, "underglow"},
    {BacklightMode::wave, "wave"},
}};

// The name table of an enumeration, found by one of its values.
constexpr std::span<const EnumName<CapProfile>> enumNames(CapProfile) { return capProfileNames; }
constexpr std::span<const EnumName<LegendFont>> enumNames(LegendFont) { return legendFontNames; }
constexpr std::span<const EnumName<LegendPlacement>> enumNames(LegendPlacement) {
  return legendPlacementNames;
}
constexpr std::span<const EnumName<PressEffect>> enumNames(PressEffect) { return pressEffectNames; }
constexpr std::span<const EnumName<PlateMaterial>> enumNames(PlateMaterial) {
  return plateMaterialNames;
}
constexpr std::span<const EnumName<PillStyle>> enumNames(PillStyle) { return pillStyleNames; }
constexpr std::span<const EnumName<BacklightMode>> enumNames(BacklightMode) {
  return backlightModeNames;
}

// The written name of a case of any enumeration above.
template <class E>
requires requires(E value) { enumNames(value); }
[[nodiscard]] constexpr std::string_view rawValue(E value) {
  return rawValue(enumNames(value), value);
}

// A vertical or angled blend. The angle is in degrees, 0 up to but not
// including 360; 180 runs from top to bottom.
struct LinearShape {
  double degrees = 180;
  friend bool operator==(const LinearShape&, const LinearShape&) = default;
};

// An elliptic blend: the centre as fractions 0...1 of the area, the ellipse's
// size as multiples 0.1...3 of it.
struct RadialShape {
  double centreX = 0.5;
  double centreY = 0.5;
  double width = 1;
  double height = 1;
  friend bool operator==(const RadialShape&, const RadialShape&) = default;
};

// The shape of a gradient: linear at an angle, or radial.
struct Shape {
  std::variant<LinearShape, RadialShape> value;

  // A linear shape at the angle normalised by `normalisedDegrees`.
  [[nodiscard]] static Shape linear(double degrees);
  [[nodiscard]] static Shape radial(double centreX, double centreY, double width, double height);
  [[nodiscard]] const LinearShape* asLinear() const { return std::get_if<LinearShape>(&value); }
  [[nodiscard]] const RadialShape* asRadial() const { return std::get_if<RadialShape>(&value); }

  // The angle's remainder after division by 360, made positive, within
  // 0 up to but not including 360; -0 gives 0 and a non-finite angle 180.
  [[nodiscard]] static double normalisedDegrees(double degrees);

  friend bool operator==(const Shape&, const Shape&) = default;
};

// A gradient with an explicit shape, from one colour to another.
struct GradientFill {
  Shape shape = Shape::linear(180);
  ThemeColor from;
  ThemeColor to;
  JSONObject extras;
  friend bool operator==(const GradientFill&, const GradientFill&) = default;
};

struct SolidFill {
  ThemeColor color;
  friend bool operator==(const SolidFill&, const SolidFill&) = default;
};

// A vertical blend from the top colour to the bottom one.
struct LinearFill {
  ThemeColor top;
  ThemeColor bottom;
  friend bool operator==(const LinearFill&, const LinearFill&) = default;
};

// How an area is painted: one colour, a vertical blend, or a shaped gradient.
struct Fill {
  std::variant<SolidFill, LinearFill, GradientFill> value;

  [[nodiscard]] static Fill solid(const ThemeColor& color) { return {SolidFill{color}}; }
  [[nodiscard]] static Fill linear(const ThemeColor& top, const ThemeColor& bottom) {
    return {LinearFill{top, bottom}};
  }
  [[nodiscard]] static Fill gradient(GradientFill gradient) { return {std::move(gradient)}; }
  [[nodiscard]] const SolidFill* asSolid() const { return std::get_if<SolidFill>(&value); }
  [[nodiscard]] const LinearFill* asLinear() const { return std::get_if<LinearFill>(&value); }
  [[nodiscard]] const GradientFill* asGradient() const { return std::get_if<GradientFill>(&value); }

  // A solid fill as its colour text; a linear one as {"top", "bottom"}; a
  // gradient as its extras plus "top", "bottom" and either "radial"
  // {"x", "y", "w", "h"} or "angle", never both.
  [[nodiscard]] JSONValue json() const;

  friend bool operator==(const Fill&, const Fill&) = default;
};

// A shadow under an area, or a glow around it: colour, blur radius, offset.
struct Shadow {
  ThemeColor color = ThemeColor::fromRGBA(0x00000059);
  double radius = 12;
  double x = 0;
  double y = 4;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const Shadow&, const Shadow&) = default;
};

// A line drawn around the plate.
struct PlateFrame {
  ThemeColor colour = ThemeColor::fromRGB(0x000000);
  double width = 1;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const PlateFrame&, const PlateFrame&) = default;
};

// A grid of lines drawn across the plate, under the caps.
struct PlateGrid {
  ThemeColor colour = ThemeColor::fromRGBA(0xFFFFFF33);
  double spacing = 16;
  double lineWidth = 1;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const PlateGrid&, const PlateGrid&) = default;
};

// One radius per corner of the plate, in place of its single radius.
struct CornerRadii {
  double topLeft = 0;
  double topRight = 0;
  double bottomRight = 0;
  double bottomLeft = 0;
  // [topLeft, topRight, bottomRight, bottomLeft].
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const CornerRadii&, const CornerRadii&) = default;
};

// The board under the keys.
struct PlateStyle {
  Fill fill;
  PlateMaterial material = PlateMaterial::solid;
  double padding = 10;
  double radius = 14;
  std::optional<Shadow> shadow;
  std::optional<PlateFrame> frame;
  std::optional<PlateGrid> grid;
  std::optional<CornerRadii> corners;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const PlateStyle&, const PlateStyle&) = default;
};

// The keycaps: shape, spacing and the fills of the three kinds of keys.
struct CapStyle {
  CapProfile profile = CapProfile::low;
  double gap = 4;
  double radius = 6;
  double depth = 2;
  Fill alpha;     // letter and number keys
  Fill modifier;  // modifier keys
  Fill accent;    // accent keys such as Esc and Return
  ThemeColor side;
  std::optional<ThemeColor> ring;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const CapStyle&, const CapStyle&) = default;
};

// The labels printed on the caps.
struct LegendStyle {
  LegendFont font = LegendFont::system;
  std::optional<std::string> family;  // a font family name
  std::int64_t weight = 500;          // 100...900
  double size = 14;
  double modifierSize = 10;  // the size used on modifier keys
  ThemeColor alpha;
  ThemeColor modifier;
  ThemeColor accent;
  LegendPlacement placement = LegendPlacement::centre;
  std::optional<Shadow> glow;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const LegendStyle&, const LegendStyle&) = default;
};

// What a pressed key shows.
struct PressStyle {
  PressEffect effect = PressEffect::sink;
  Fill fill;
  ThemeColor legend;
  std::optional<Shadow> glow;
  double fadeMs = 160;  // how long the press takes to fade
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const PressStyle&, const PressStyle&) = default;
};

// The shortcut labels of the cheatsheet.
struct CheatsheetStyle {
  ThemeColor label;
  Fill fill;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const CheatsheetStyle&, const CheatsheetStyle&) = default;
};

// The light under or between the caps that answers a key press.
struct Backlight {
  BacklightMode mode = BacklightMode::off;
  ThemeColor colour;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const Backlight&, const Backlight&) = default;
};

// The colours of clicks of each mouse button and of the cursor halo.
struct MouseStyle {
  ThemeColor left = ThemeColor::fromRGB(0x0A84FF);
  ThemeColor right = ThemeColor::fromRGB(0xFF9F0A);
  ThemeColor middle = ThemeColor::fromRGB(0x30D158);
  ThemeColor halo = ThemeColor::fromRGBA(0xFFD60A59);
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const MouseStyle&, const MouseStyle&) = default;
};

// One key painted differently from its kind.
struct KeyOverride {
  std::optional<Fill> cap;
  std::optional<ThemeColor> legend;
  JSONObject extras;
  [[nodiscard]] JSONValue json() const;
  friend bool operator==(const KeyOverride&, const KeyOverride&) = default;
};

}  // namespace corvel
