#include "CorvelCore/Theme/BuiltInThemes.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace corvel {

namespace {

// Colours in this file are written 0xRRGGBB, with a separate alpha byte
// where a theme needs translucency.
constexpr ThemeColor colour(std::uint32_t rgb, std::uint8_t alpha = 0xFF) {
  return ThemeColor::fromRGBA((rgb & 0xFFFFFFu) << 8 | alpha);
}

// Moves each channel of `rgb` `percent` of the way towards `target`, in
// whole bytes, so that every derived colour survives a trip through a file.
constexpr std::uint32_t mix(std::uint32_t rgb, std::uint32_t target, int percent) {
  std::uint32_t result = 0;
  for (const int shift : {16, 8, 0}) {
    const int from = static_cast<int>((rgb >> shift) & 0xFFu);
    const int to = static_cast<int>((target >> shift) & 0xFFu);
    result |= static_cast<std::uint32_t>(from + (to - from) * percent / 100) << shift;
  }
  return result;
}
constexpr std::uint32_t lighter(std::uint32_t rgb, int percent) {
  return mix(rgb, 0xFFFFFF, percent);
}
constexpr std::uint32_t darker(std::uint32_t rgb, int percent) {
  return mix(rgb, 0x000000, percent);
}

// A compact description of a fill, expanded by `fill` below.
struct Paint {
  enum class Kind { solid, dish, sphere, blend, angled, radial };
  Kind kind = Kind::solid;
  std::uint32_t from = 0;
  std::uint32_t to = 0;
  std::uint8_t alpha = 0xFF;
  double angle = 180;
};

// One colour.
constexpr Paint flat(std::uint32_t rgb, std::uint8_t alpha = 0xFF) {
  return {Paint::Kind::solid, rgb, rgb, alpha};
}
// A concave cap lit from above.
constexpr Paint dished(std::uint32_t rgb, std::uint8_t alpha = 0xFF) {
  return {Paint::Kind::dish, rgb, rgb, alpha};
}
// Top to bottom.
constexpr Paint blend(std::uint32_t top, std::uint32_t bottom, std::uint8_t alpha = 0xFF) {
  return {Paint::Kind::blend, top, bottom, alpha};
}
// Along an angle (degrees, 180 being top to bottom).
constexpr Paint angled(std::uint32_t from, std::uint32_t to, double degrees,
                       std::uint8_t alpha = 0xFF) {
  return {Paint::Kind::angled, from, to, alpha, degrees};
}
// From a centre high on the area out to its edges.
constexpr Paint radial(std::uint32_t centre, std::uint32_t edge, std::uint8_t alpha = 0xFF) {
  return {Paint::Kind::radial, centre, edge, alpha};
}

Fill fill(const Paint& paint) {
  switch (paint.kind) {
    case Paint::Kind::solid:
      return Fill::solid(colour(paint.from, paint.alpha));
    case Paint::Kind::dish:
      return paint.alpha == 0xFF ? BuiltInThemes::dish(paint.from)
                                 : Fill::linear(colour(lighter(paint.from, 12), paint.alpha),
                                                colour(darker(paint.from, 6), paint.alpha));
    case Paint::Kind::sphere:
      // The spherical top of a sculpted cap: a bright spot, darker towards the rim.
      return Fill::gradient({Shape::radial(0.5, 0.4, 1.2, 1.2),
                             colour(lighter(paint.from, 16)),
                             colour(darker(paint.from, 10)),
                             {}});
    case Paint::Kind::blend:
      return Fill::linear(colour(paint.from, paint.alpha), colour(paint.to, paint.alpha));
    case Paint::Kind::angled:
      return Fill::gradient({Shape::linear(paint.angle),
                             colour(paint.from, paint.alpha),
                             colour(paint.to, paint.alpha),
                             {}});
    case Paint::Kind::radial:
      return Fill::gradient({Shape::radial(0.5, 0.3, 1.4, 1.2),
                             colour(paint.from, paint.alpha),
                             colour(paint.to, paint.alpha),
                             {}});
  }
  return Fill::solid(colour(paint.from, paint.alpha));
}

// What lies under the plate.
enum class PlateShade { none, soft, dark, glow };

// One theme in compact form. Fields left out take the values below, which
// make a plain, light, low-profile board.
struct Look {
  std::string_view id;
  std::string_view name;
  std::string_view family;

  Paint plate = flat(0xDADADF);
  PlateMaterial material = PlateMaterial::solid;
  double padding = 10;
  double plateRadius = 14;
  PlateShade shade = PlateShade::soft;
  std::uint32_t shadeColour = 0x000000;  // of a glow
  std::optional<std::array<double, 4>> corners = std::nullopt;
  std::optional<std::uint32_t> frame = std::nullopt;
  double frameWidth = 1;
  std::optional<std::uint32_t> grid = std::nullopt;
  std::uint8_t gridAlpha = 0x33;
  double gridSpacing = 16;

  CapProfile profile = CapProfile::low;
  double gap = 4;
  double capRadius = 6;
  double depth = 2;
  Paint alpha = flat(0xFFFFFF);
  Paint modifier = flat(0xF0F0F2);
  Paint accent = flat(0xE5E5EA);
  std::uint32_t side = 0xC7C7CC;
  std::uint8_t sideAlpha = 0xFF;
  std::optional<std::uint32_t> ring = std::nullopt;
  std::uint8_t ringAlpha = 0xFF;

  LegendFont font = LegendFont::system;
  std::int64_t weight = 500;
  double size = 14;
  double modifierSize = 10;
  std::uint32_t ink = 0x1D1D1F;
  std::uint32_t modifierInk = 0x6E6E73;
  std::uint32_t accentInk = 0x1D1D1F;
  LegendPlacement placement = LegendPlacement::centre;
  std::optional<std::uint32_t> inkGlow = std::nullopt;

  PressEffect effect = PressEffect::sink;
  Paint press = flat(0xD1D1D6);
  std::uint32_t pressInk = 0x000000;
  std::optional<std::uint32_t> pressGlow = std::nullopt;
  double fadeMs = 160;

  std::optional<std::uint32_t> lockLight = std::nullopt;  // else by the caps' lightness
  PillStyle pill = PillStyle::light;
  BacklightMode backlight = BacklightMode::off;
  std::uint32_t backlightColour = 0xFFFFFF;
  std::string_view sound = {};  // none when empty
};

// The same board with sculpted SA caps: taller, rounder, spherical tops and
// bolder legends.
constexpr Look sa(Look look, std::string_view id, std::string_view name) {
  look.id = id;
  look.name = name;
  look.profile = CapProfile::sa;
  look.depth = 9;
  look.capRadius = 8;
  look.gap = 5;
  look.size = 16;
  look.modifierSize = 11;
  look.weight = 600;
  for (Paint* paint : {&look.alpha, &look.modifier, &look.accent}) {
    paint->kind = Paint::Kind::sphere;
  }
  look.sound = "thock";
  return look;
}

// The looks are tables of values, grouped by part of the board on each line.
// clang-format off

// -- Apple: laptop keyboards, low flat caps on aluminium.

constexpr Look silver{
    .id = "silver", .name = "Silver", .family = "Apple",
    .plate = blend(0xE4E5E8, 0xC9CACE), .padding = 9, .plateRadius = 16,
    .gap = 4, .capRadius = 6, .depth = 1.5,
    .alpha = flat(0xFBFBFD), .modifier = flat(0xF3F3F5), .accent = flat(0xF3F3F5), .side = 0xB8B9BE,
    .ink = 0x1D1D1F, .modifierInk = 0x6E6E73, .accentInk = 0x1D1D1F,
    .press = flat(0xD8D8DD), .pressInk = 0x1D1D1F, .fadeMs = 140,
    .pill = PillStyle::light, .sound = "laptop"};

constexpr Look spaceBlack{
    .id = "space-black", .name = "Space Black", .family = "Apple",
    .plate = blend(0x2E2E31, 0x1F1F21), .padding = 9, .plateRadius = 16, .shade = PlateShade::dark,
    .gap = 4, .capRadius = 6, .depth = 1.5,
    .alpha = flat(0x141415), .modifier = flat(0x18181A), .accent = flat(0x1C1C1E), .side = 0x050505,
    .ink = 0xF5F5F7, .modifierInk = 0xA1A1A6, .accentInk = 0xF5F5F7,
    .press = flat(0x3A3A3C), .pressInk = 0xFFFFFF, .fadeMs = 140,
    .pill = PillStyle::dark, .backlight = BacklightMode::underglow, .backlightColour = 0xF5F5F7,
    .sound = "laptop"};

constexpr Look macbookPro{
    .id = "macbook-pro", .name = "MacBook Pro", .family = "Apple",
    .plate = blend(0x6B6C70, 0x505155), .padding = 11, .plateRadius = 18, .shade = PlateShade::dark,
    .frame = 0x8E8F94, .frameWidth = 1.5,
    .gap = 5, .capRadius = 5, .depth = 1,
    .alpha = flat(0x0D0D0E), .modifier = flat(0x0D0D0E), .accent = flat(0x0D0D0E), .side = 0x000000,
    .ink = 0xFFFFFF, .modifierInk = 0xC7C7CC, .accentInk = 0xFFFFFF,
    .press = flat(0x2C2C2E), .pressInk = 0xFFFFFF, .fadeMs = 140,
    .pill = PillStyle::dark, .backlight = BacklightMode::underglow, .backlightColour = 0xFFFFFF,
    .sound = "laptop"};

constexpr Look midnight{
    .id = "midnight", .name = "Midnight", .family = "Apple",
    .plate = blend(0x1E2633, 0x121821), .padding = 9, .plateRadius = 16, .shade = PlateShade::dark,
    .gap = 4, .capRadius = 6, .depth = 1.5,
    .alpha = flat(0x0B1019), .modifier = flat(0x0E1420), .accent = flat(0x142036), .side = 0x05080D,
    .ink = 0xDCE6F5, .modifierInk = 0x8A9BB5, .accentInk = 0x9CC2FF,
    .press = flat(0x23324D), .pressInk = 0xFFFFFF, .fadeMs = 140,
    .pill = PillStyle::dark, .backlight = BacklightMode::underglow, .backlightColour = 0x6E9BE6,
    .sound = "laptop"};

// -- Mechanical: dished OEM caps on a metal case; the SA sets are sculpted.

constexpr Look ink{
    .id = "ink", .name = "Ink", .family = "Mechanical",
    .plate = blend(0x1A1C22, 0x101115), .padding = 12, .plateRadius = 10, .shade = PlateShade::dark,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 5, .depth = 6,
    .alpha = dished(0x2B2F3A), .modifier = dished(0x1E2129), .accent = dished(0x3451C6),
    .side = 0x0E0F13,
    .weight = 500, .ink = 0xE8EAF0, .modifierInk = 0x9AA0AE, .accentInk = 0xFFFFFF,
    .press = dished(0x3451C6), .pressInk = 0xFFFFFF, .fadeMs = 200,
    .pill = PillStyle::dark, .sound = "thock"};

constexpr Look arctic{
    .id = "arctic", .name = "Arctic", .family = "Mechanical",
    .plate = blend(0xE3ECF2, 0xCFDCE6), .padding = 12, .plateRadius = 10,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 5, .depth = 6,
    .alpha = dished(0xF6FAFD), .modifier = dished(0xC9D9E6), .accent = dished(0x5FA8D3),
    .side = 0xA9BCCB,
    .ink = 0x2C4356, .modifierInk = 0x3E5A70, .accentInk = 0xFFFFFF,
    .press = dished(0xA8D4F0), .pressInk = 0x1B2E3D, .fadeMs = 200,
    .pill = PillStyle::light, .sound = "linear"};

constexpr Look mint{
    .id = "mint", .name = "Mint", .family = "Mechanical",
    .plate = blend(0xF4F6F2, 0xE2E8E1), .padding = 12, .plateRadius = 10,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 5, .depth = 6,
    .alpha = dished(0xF3F8F2), .modifier = dished(0xB6E3CC), .accent = dished(0x3FB68B),
    .side = 0xB9C8BC,
    .ink = 0x1F4D3A, .modifierInk = 0x1F4D3A, .accentInk = 0xFFFFFF,
    .press = dished(0x8FD6B4), .pressInk = 0x133526, .fadeMs = 200,
    .pill = PillStyle::light, .sound = "thock"};

constexpr Look oceanSA{
    .id = "ocean-sa", .name = "Ocean SA", .family = "Mechanical",
    .plate = blend(0x163A5C, 0x0C2238), .padding = 12, .plateRadius = 10, .shade = PlateShade::dark,
    .profile = CapProfile::sa, .gap = 5, .capRadius = 8, .depth = 9,
    .alpha = {Paint::Kind::sphere, 0xE9F1F7}, .modifier = {Paint::Kind::sphere, 0x1F4E79},
    .accent = {Paint::Kind::sphere, 0x22A7C9}, .side = 0x0A1A2B,
    .weight = 600, .size = 16, .modifierSize = 11,
    .ink = 0x1F4E79, .modifierInk = 0xE9F1F7, .accentInk = 0xFFFFFF,
    .press = dished(0x7FD3EA), .pressInk = 0x0C2238, .fadeMs = 220,
    .pill = PillStyle::dark, .sound = "thock"};

constexpr Look carbon{
    .id = "carbon", .name = "Carbon", .family = "Mechanical",
    .plate = blend(0x34363A, 0x242528), .padding = 12, .plateRadius = 10, .shade = PlateShade::dark,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 5, .depth = 6,
    .alpha = dished(0xE6E0D2), .modifier = dished(0x4A4E55), .accent = dished(0xE8731C),
    .side = 0x1C1D20,
    .ink = 0x2A2A2A, .modifierInk = 0xF08A3C, .accentInk = 0x2A2A2A,
    .press = dished(0xF2A56B), .pressInk = 0x2A2A2A, .fadeMs = 200,
    .pill = PillStyle::dark, .sound = "clicky"};

constexpr Look rose{
    .id = "rose", .name = "Rose", .family = "Mechanical",
    .plate = blend(0xF7E9EB, 0xEBD3D7), .padding = 12, .plateRadius = 10,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 5, .depth = 6,
    .alpha = dished(0xF7DDE1), .modifier = dished(0xDE9FA9), .accent = dished(0xB4455B),
    .side = 0xC9A3AA,
    .ink = 0x5C2531, .modifierInk = 0x5C2531, .accentInk = 0xFFF1F3,
    .press = dished(0xE8B4BD), .pressInk = 0x5C2531, .fadeMs = 200,
    .pill = PillStyle::light, .sound = "linear"};

constexpr Look harbour{
    .id = "harbour", .name = "Harbour", .family = "Mechanical",
    .plate = blend(0x2A3F4D, 0x1D2E39), .padding = 12, .plateRadius = 10, .shade = PlateShade::dark,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 5, .depth = 6,
    .alpha = dished(0xDCE3E6), .modifier = dished(0x2F4858), .accent = dished(0xF2B134),
    .side = 0x15222B,
    .ink = 0x2F4858, .modifierInk = 0xE4EBEE, .accentInk = 0x2F4858,
    .press = dished(0xF6CB74), .pressInk = 0x2F4858, .fadeMs = 200,
    .pill = PillStyle::dark, .sound = "thock"};

// -- Glass: translucent plates and caps over whatever lies behind the board.

constexpr Look frosted{
    .id = "frosted", .name = "Frosted", .family = "Glass",
    .plate = flat(0xF5F7FA, 0x8C), .material = PlateMaterial::frosted, .padding = 10,
    .plateRadius = 20,
    .gap = 5, .capRadius = 8, .depth = 1,
    .alpha = flat(0xFFFFFF, 0xA6), .modifier = flat(0xFFFFFF, 0x80), .accent = flat(0xFFFFFF, 0xD9),
    .side = 0xFFFFFF, .sideAlpha = 0x4D, .ring = 0xFFFFFF, .ringAlpha = 0xB3,
    .ink = 0x1C1C1E, .modifierInk = 0x48484A, .accentInk = 0x1C1C1E,
    .press = flat(0xFFFFFF, 0xF2), .pressInk = 0x000000, .fadeMs = 180,
    .pill = PillStyle::glass, .sound = "corvel"};

constexpr Look smoked{
    .id = "smoked", .name = "Smoked", .family = "Glass",
    .plate = flat(0x1C1C1E, 0x99), .material = PlateMaterial::smoked, .padding = 10,
    .plateRadius = 20, .shade = PlateShade::dark,
    .gap = 5, .capRadius = 8, .depth = 1,
    .alpha = flat(0x2C2C2E, 0x99), .modifier = flat(0x1C1C1E, 0x99), .accent = flat(0x48484A, 0xB3),
    .side = 0x000000, .sideAlpha = 0x66, .ring = 0xFFFFFF, .ringAlpha = 0x26,
    .ink = 0xF2F2F7, .modifierInk = 0xAEAEB2, .accentInk = 0xFFFFFF,
    .press = flat(0x636366, 0xCC), .pressInk = 0xFFFFFF, .fadeMs = 180,
    .pill = PillStyle::glass, .sound = "corvel"};

constexpr Look liquidGlass{
    .id = "liquid-glass", .name = "Liquid Glass", .family = "Glass",
    .plate = angled(0xFFFFFF, 0xCFE6FF, 135, 0x40), .material = PlateMaterial::none,
    .padding = 12, .plateRadius = 26, .shade = PlateShade::soft,
    .gap = 6, .capRadius = 12, .depth = 1,
    .alpha = radial(0xFFFFFF, 0xD6EBFF, 0x73), .modifier = radial(0xFFFFFF, 0xC2DDFA, 0x59),
    .accent = radial(0xFFFFFF, 0x9CCBFF, 0x99), .side = 0xFFFFFF, .sideAlpha = 0x33,
    .ring = 0xFFFFFF, .ringAlpha = 0xCC,
    .weight = 600, .ink = 0x0E2A47, .modifierInk = 0x2B4A6B, .accentInk = 0x0E2A47,
    .press = radial(0xFFFFFF, 0xE8F3FF, 0xE6), .pressInk = 0x0E2A47, .fadeMs = 240,
    .pill = PillStyle::glass, .sound = "corvel"};

constexpr Look clearAcrylic{
    .id = "clear-acrylic", .name = "Clear Acrylic", .family = "Glass",
    .plate = flat(0xFFFFFF, 0x26), .material = PlateMaterial::none, .padding = 12,
    .plateRadius = 10, .shade = PlateShade::none, .frame = 0xFFFFFF, .frameWidth = 2,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 5, .depth = 5,
    .alpha = flat(0xFFFFFF, 0x33), .modifier = flat(0xFFFFFF, 0x26), .accent = flat(0xFFFFFF, 0x4D),
    .side = 0xFFFFFF, .sideAlpha = 0x66, .ring = 0xFFFFFF, .ringAlpha = 0x99,
    .ink = 0x111827, .modifierInk = 0x374151, .accentInk = 0x111827,
    .effect = PressEffect::flash, .press = flat(0xFFFFFF, 0xCC), .pressInk = 0x000000,
    .fadeMs = 200, .pill = PillStyle::glass, .sound = "clicky"};

constexpr Look seaGlass{
    .id = "sea-glass", .name = "Sea Glass", .family = "Glass",
    .plate = flat(0x9FD8CB, 0x99), .material = PlateMaterial::frosted, .padding = 10,
    .plateRadius = 20,
    .gap = 5, .capRadius = 9, .depth = 2,
    .alpha = flat(0xC4EBDF, 0xB3), .modifier = flat(0x8FD1C0, 0xB3), .accent = flat(0x4FB3A0, 0xCC),
    .side = 0x5E9E90, .sideAlpha = 0x80, .ring = 0xFFFFFF, .ringAlpha = 0x80,
    .ink = 0x1E4F46, .modifierInk = 0x1E4F46, .accentInk = 0xFFFFFF,
    .press = flat(0xE6FAF4, 0xE6), .pressInk = 0x1E4F46, .fadeMs = 200,
    .pill = PillStyle::glass, .sound = "corvel"};

constexpr Look amethyst{
    .id = "amethyst", .name = "Amethyst", .family = "Glass",
    .plate = flat(0x3B1F5C, 0xA6), .material = PlateMaterial::smoked, .padding = 10,
    .plateRadius = 20, .shade = PlateShade::glow, .shadeColour = 0x8E5CC7,
    .gap = 5, .capRadius = 9, .depth = 2,
    .alpha = flat(0x8E5CC7, 0x8C), .modifier = flat(0x6A3FA0, 0x99), .accent = flat(0xC39BEF, 0xBF),
    .side = 0x2A1045, .sideAlpha = 0x99, .ring = 0xD9C2F5, .ringAlpha = 0x99,
    .ink = 0xF6EEFF, .modifierInk = 0xDCC8F5, .accentInk = 0x2A1045,
    .press = flat(0xD9C2F5, 0xE6), .pressInk = 0x2A1045, .fadeMs = 200,
    .pill = PillStyle::glass, .backlight = BacklightMode::underglow, .backlightColour = 0xB57EF2,
    .sound = "corvel"};

// -- Neon: dark boards, lit legends, glowing presses.

constexpr Look synthwave{
    .id = "synthwave", .name = "Synthwave", .family = "Neon",
    .plate = blend(0x2B0B4F, 0x12042A), .padding = 12, .plateRadius = 12,
    .shade = PlateShade::glow, .shadeColour = 0xFF2BD6, .grid = 0xFF2BD6, .gridAlpha = 0x40,
    .gridSpacing = 14,
    .profile = CapProfile::flat, .gap = 5, .capRadius = 6, .depth = 2,
    .alpha = flat(0x1E0B3A), .modifier = flat(0x260E48), .accent = flat(0xFF2BD6),
    .side = 0x0D0320, .ring = 0xFF2BD6, .ringAlpha = 0xB3,
    .font = LegendFont::mono, .weight = 600, .ink = 0x2DE2E6, .modifierInk = 0xFF6AD5,
    .accentInk = 0x1A0633, .inkGlow = 0x2DE2E6,
    .effect = PressEffect::glow, .press = flat(0x2DE2E6), .pressInk = 0x12042A,
    .pressGlow = 0x2DE2E6, .fadeMs = 320,
    .lockLight = 0xFF2BD6, .pill = PillStyle::dark, .backlight = BacklightMode::wave,
    .backlightColour = 0xFF2BD6, .sound = "linear"};

constexpr Look cyber{
    .id = "cyber", .name = "Cyber", .family = "Neon",
    .plate = flat(0x0B0B0C), .padding = 14, .plateRadius = 0, .shade = PlateShade::glow,
    .shadeColour = 0xFCEE0A, .corners = std::array<double, 4>{0, 28, 0, 28}, .frame = 0xFCEE0A,
    .frameWidth = 2,
    .profile = CapProfile::flat, .gap = 4, .capRadius = 1, .depth = 2,
    .alpha = flat(0x151516), .modifier = flat(0x1B1B1D), .accent = flat(0xFCEE0A),
    .side = 0x000000, .ring = 0x00F0FF, .ringAlpha = 0x59,
    .font = LegendFont::mono, .weight = 700, .size = 13, .modifierSize = 9, .ink = 0xFCEE0A,
    .modifierInk = 0x00F0FF, .accentInk = 0x0B0B0C, .placement = LegendPlacement::topLeft,
    .effect = PressEffect::flash, .press = flat(0x00F0FF), .pressInk = 0x0B0B0C,
    .pressGlow = 0x00F0FF, .fadeMs = 220,
    .lockLight = 0x00F0FF, .pill = PillStyle::dark, .backlight = BacklightMode::underglow,
    .backlightColour = 0x00F0FF, .sound = "clicky"};

constexpr Look matrix{
    .id = "matrix", .name = "Matrix", .family = "Neon",
    .plate = flat(0x000000), .padding = 10, .plateRadius = 8, .shade = PlateShade::glow,
    .shadeColour = 0x00FF41,
    .profile = CapProfile::flat, .gap = 4, .capRadius = 3, .depth = 1,
    .alpha = flat(0x020A03), .modifier = flat(0x020A03), .accent = flat(0x003B12),
    .side = 0x000000, .ring = 0x00FF41, .ringAlpha = 0x40,
    .font = LegendFont::mono, .weight = 500, .ink = 0x00FF41, .modifierInk = 0x00A82B,
    .accentInk = 0x7CFF9E, .inkGlow = 0x00FF41,
    .effect = PressEffect::glow, .press = flat(0x00FF41), .pressInk = 0x000000,
    .pressGlow = 0x00FF41, .fadeMs = 400,
    .lockLight = 0x00FF41, .pill = PillStyle::dark, .backlight = BacklightMode::wave,
    .backlightColour = 0x00FF41, .sound = "linear"};

constexpr Look grid{
    .id = "grid", .name = "Grid", .family = "Neon",
    .plate = flat(0x04070E), .padding = 14, .plateRadius = 6, .shade = PlateShade::glow,
    .shadeColour = 0x00C8FF, .frame = 0x00C8FF, .frameWidth = 1.5, .grid = 0x00C8FF,
    .gridAlpha = 0x4D, .gridSpacing = 12,
    .profile = CapProfile::flat, .gap = 6, .capRadius = 4, .depth = 0,
    .alpha = flat(0x04070E, 0xCC), .modifier = flat(0x04070E, 0xCC), .accent = flat(0xFF8A1F),
    .side = 0x00C8FF, .sideAlpha = 0x66, .ring = 0x00C8FF,
    .font = LegendFont::mono, .weight = 500, .ink = 0xA8EEFF, .modifierInk = 0x00C8FF,
    .accentInk = 0x1A0A00, .inkGlow = 0x00C8FF,
    .effect = PressEffect::glow, .press = flat(0x00C8FF), .pressInk = 0x04070E,
    .pressGlow = 0x00C8FF, .fadeMs = 260,
    .lockLight = 0xFF8A1F, .pill = PillStyle::dark, .backlight = BacklightMode::underglow,
    .backlightColour = 0x00C8FF, .sound = "linear"};

// -- Minimal: line drawings and print.

constexpr Look wireframe{
    .id = "wireframe", .name = "Wireframe", .family = "Minimal",
    .plate = flat(0xFAFAFA), .padding = 10, .plateRadius = 6, .shade = PlateShade::none,
    .frame = 0x111111, .frameWidth = 1.5,
    .profile = CapProfile::flat, .gap = 5, .capRadius = 3, .depth = 0,
    .alpha = flat(0xFAFAFA), .modifier = flat(0xFAFAFA), .accent = flat(0xFAFAFA),
    .side = 0xFAFAFA, .ring = 0x111111,
    .font = LegendFont::mono, .weight = 300, .size = 13, .modifierSize = 9, .ink = 0x111111,
    .modifierInk = 0x111111, .accentInk = 0x111111,
    .effect = PressEffect::flash, .press = flat(0x111111), .pressInk = 0xFAFAFA, .fadeMs = 120,
    .pill = PillStyle::light};

constexpr Look blueprint{
    .id = "blueprint", .name = "Blueprint", .family = "Minimal",
    .plate = flat(0x1D4F91), .padding = 14, .plateRadius = 2, .shade = PlateShade::soft,
    .frame = 0xE8F1FF, .frameWidth = 2, .grid = 0xFFFFFF, .gridAlpha = 0x26, .gridSpacing = 10,
    .profile = CapProfile::flat, .gap = 5, .capRadius = 2, .depth = 0,
    .alpha = flat(0x1D4F91, 0xB3), .modifier = flat(0x1D4F91, 0xB3), .accent = flat(0x2F68B5),
    .side = 0x1D4F91, .ring = 0xE8F1FF,
    .font = LegendFont::mono, .weight = 400, .size = 13, .modifierSize = 9, .ink = 0xFFFFFF,
    .modifierInk = 0xC9DDF7, .accentInk = 0xFFFFFF, .placement = LegendPlacement::topLeft,
    .effect = PressEffect::flash, .press = flat(0xE8F1FF), .pressInk = 0x1D4F91, .fadeMs = 160,
    .pill = PillStyle::dark, .sound = "typewriter"};

constexpr Look monoInk{
    .id = "mono-ink", .name = "Mono Ink", .family = "Minimal",
    .plate = flat(0xEDEDED), .padding = 10, .plateRadius = 8,
    .profile = CapProfile::low, .gap = 4, .capRadius = 4, .depth = 1,
    .alpha = flat(0xFFFFFF), .modifier = flat(0xE0E0E0), .accent = flat(0x111111),
    .side = 0xBDBDBD,
    .weight = 600, .ink = 0x111111, .modifierInk = 0x111111, .accentInk = 0xFFFFFF,
    .effect = PressEffect::inkOnly, .press = flat(0xFFFFFF), .pressInk = 0x8A8A8A,
    .fadeMs = 120, .pill = PillStyle::light};

constexpr Look paperWhite{
    .id = "paper-white", .name = "Paper White", .family = "Minimal",
    .plate = flat(0xF5F0E6), .padding = 12, .plateRadius = 10,
    .profile = CapProfile::low, .gap = 5, .capRadius = 5, .depth = 1.5,
    .alpha = flat(0xFFFDF8), .modifier = flat(0xF1EBDD), .accent = flat(0xE8DFCB),
    .side = 0xDDD5C2,
    .font = LegendFont::serif, .weight = 400, .size = 15, .modifierSize = 10, .ink = 0x3B3631,
    .modifierInk = 0x7A7166, .accentInk = 0x3B3631,
    .press = flat(0xEDE4D0), .pressInk = 0x3B3631, .fadeMs = 180,
    .pill = PillStyle::light, .sound = "typewriter"};

// -- Colour: one palette each, on soft rounded caps.

constexpr Look lavender{
    .id = "lavender", .name = "Lavender", .family = "Colour",
    .plate = blend(0xE8DEF7, 0xD6C8EF), .padding = 11, .plateRadius = 16,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 7, .depth = 4,
    .alpha = dished(0xF5EFFC), .modifier = dished(0xCDBBEB), .accent = dished(0x9471D1),
    .side = 0xB3A2D3,
    .font = LegendFont::rounded, .ink = 0x4A3869, .modifierInk = 0x4A3869, .accentInk = 0xFFFFFF,
    .press = dished(0xB89EE6), .pressInk = 0x2E2145, .fadeMs = 200,
    .pill = PillStyle::light, .sound = "linear"};

constexpr Look aurora{
    .id = "aurora", .name = "Aurora", .family = "Colour",
    .plate = radial(0x1D6B6A, 0x0A1426), .padding = 12, .plateRadius = 16,
    .shade = PlateShade::glow, .shadeColour = 0x3CF2B0,
    .profile = CapProfile::low, .gap = 4, .capRadius = 7, .depth = 2,
    .alpha = flat(0x12263A, 0xE6), .modifier = flat(0x1A2F4A, 0xE6),
    .accent = angled(0x3CF2B0, 0x8A5CF6, 120), .side = 0x060D18,
    .font = LegendFont::rounded, .ink = 0xB8FFE6, .modifierInk = 0xB9A4FF, .accentInk = 0x0A1426,
    .effect = PressEffect::glow, .press = angled(0x3CF2B0, 0x8A5CF6, 120), .pressInk = 0x0A1426,
    .pressGlow = 0x3CF2B0, .fadeMs = 300,
    .pill = PillStyle::dark, .backlight = BacklightMode::wave, .backlightColour = 0x3CF2B0,
    .sound = "corvel"};

constexpr Look forest{
    .id = "forest", .name = "Forest", .family = "Colour",
    .plate = blend(0x23412F, 0x16291E), .padding = 12, .plateRadius = 12, .shade = PlateShade::dark,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 6, .depth = 5,
    .alpha = dished(0x3A6647), .modifier = dished(0x5E4634), .accent = dished(0xC9A227),
    .side = 0x152619,
    .font = LegendFont::rounded, .ink = 0xE7F0D9, .modifierInk = 0xE8D7BF, .accentInk = 0x2B220A,
    .press = dished(0x7FA65A), .pressInk = 0x10200F, .fadeMs = 220,
    .pill = PillStyle::dark, .sound = "thock"};

constexpr Look ocean{
    .id = "ocean", .name = "Ocean", .family = "Colour",
    .plate = angled(0x0F5E7F, 0x032A40, 160), .padding = 12, .plateRadius = 16,
    .shade = PlateShade::dark,
    .profile = CapProfile::low, .gap = 4, .capRadius = 7, .depth = 3,
    .alpha = dished(0x1C7898), .modifier = dished(0x0F4C66), .accent = dished(0xF49A5B),
    .side = 0x062535,
    .font = LegendFont::rounded, .ink = 0xE3F8FF, .modifierInk = 0x9FDDF2, .accentInk = 0x3A1B05,
    .press = dished(0x4FC8EC), .pressInk = 0x032A40, .fadeMs = 240,
    .pill = PillStyle::dark, .backlight = BacklightMode::underglow, .backlightColour = 0x36C5F0,
    .sound = "linear"};

constexpr Look cottonCandy{
    .id = "cotton-candy", .name = "Cotton Candy", .family = "Colour",
    .plate = blend(0xFFD4EA, 0xC8E3FF), .padding = 12, .plateRadius = 20,
    .profile = CapProfile::low, .gap = 5, .capRadius = 10, .depth = 3,
    .alpha = dished(0xFFE6F3), .modifier = dished(0xCFE8FF), .accent = dished(0xFF8CC6),
    .side = 0xE0B6D0,
    .font = LegendFont::rounded, .weight = 700, .ink = 0x7A4B9C, .modifierInk = 0x4F72A8,
    .accentInk = 0xFFFFFF,
    .effect = PressEffect::flash, .press = dished(0xB8DCFF), .pressInk = 0x7A4B9C, .fadeMs = 220,
    .lockLight = 0xFF8CC6, .pill = PillStyle::light, .sound = "linear"};

constexpr Look dusk{
    .id = "dusk", .name = "Dusk", .family = "Colour",
    .plate = blend(0x2E2A52, 0x623B63), .padding = 12, .plateRadius = 14, .shade = PlateShade::dark,
    .profile = CapProfile::oem, .gap = 4, .capRadius = 6, .depth = 4,
    .alpha = dished(0x463B6E), .modifier = dished(0x5E3F70), .accent = dished(0xF4845F),
    .side = 0x1E1A38,
    .font = LegendFont::rounded, .ink = 0xFFD9B8, .modifierInk = 0xF3B7C8, .accentInk = 0x3B1526,
    .press = dished(0xF7A072), .pressInk = 0x3B1526, .fadeMs = 240,
    .pill = PillStyle::dark, .backlight = BacklightMode::underglow, .backlightColour = 0xF4845F,
    .sound = "thock"};

// -- Fun: screens, games and school.

constexpr Look terminal{
    .id = "terminal", .name = "Terminal", .family = "Fun",
    .plate = flat(0x140E06), .padding = 12, .plateRadius = 12, .shade = PlateShade::glow,
    .shadeColour = 0xFFB000, .frame = 0x3A2A10, .frameWidth = 4,
    .profile = CapProfile::flat, .gap = 4, .capRadius = 3, .depth = 1,
    .alpha = flat(0x1A1208), .modifier = flat(0x1A1208), .accent = flat(0x2A1C08),
    .side = 0x0A0703, .ring = 0xFFB000, .ringAlpha = 0x33,
    .font = LegendFont::mono, .weight = 500, .ink = 0xFFB000, .modifierInk = 0xCC8A00,
    .accentInk = 0xFFC94D, .placement = LegendPlacement::topLeft, .inkGlow = 0xFF8C00,
    .effect = PressEffect::flash, .press = flat(0xFFB000), .pressInk = 0x140E06, .fadeMs = 500,
    .lockLight = 0xFFB000, .pill = PillStyle::dark, .sound = "typewriter"};

constexpr Look pixel{
    .id = "pixel", .name = "Pixel", .family = "Fun",
    .plate = flat(0x5C5C70), .padding = 12, .plateRadius = 0, .shade = PlateShade::none,
    .frame = 0x000000, .frameWidth = 4,
    .profile = CapProfile::flat, .gap = 4, .capRadius = 0, .depth = 4,
    .alpha = flat(0xF8F8F8), .modifier = flat(0xBCBCBC), .accent = flat(0xE40058),
    .side = 0x000000, .ring = 0x000000,
    .font = LegendFont::pixel, .weight = 700, .size = 12, .modifierSize = 8, .ink = 0x000000,
    .modifierInk = 0x000000, .accentInk = 0xFFFFFF,
    .effect = PressEffect::flash, .press = flat(0xFCE020), .pressInk = 0x000000, .fadeMs = 100,
    .lockLight = 0xE40058, .pill = PillStyle::dark, .sound = "clicky"};

constexpr Look handheld{
    .id = "handheld", .name = "Handheld", .family = "Fun",
    .plate = flat(0xC5C9B4), .padding = 14, .plateRadius = 10,
    .corners = std::array<double, 4>{10, 10, 48, 10},
    .profile = CapProfile::low, .gap = 5, .capRadius = 10, .depth = 3,
    .alpha = flat(0x9BBC0F), .modifier = flat(0x8BAC0F), .accent = flat(0x8B1E50),
    .side = 0x306230,
    .font = LegendFont::pixel, .weight = 700, .size = 12, .modifierSize = 8, .ink = 0x0F380F,
    .modifierInk = 0x0F380F, .accentInk = 0xE0E8C0,
    .press = flat(0x306230), .pressInk = 0x9BBC0F, .fadeMs = 120,
    .lockLight = 0xD0103A, .pill = PillStyle::light, .sound = "clicky"};

constexpr Look chalkboard{
    .id = "chalkboard", .name = "Chalkboard", .family = "Fun",
    .plate = flat(0x2E3B33), .padding = 16, .plateRadius = 4, .shade = PlateShade::dark,
    .frame = 0x8B5A2B, .frameWidth = 8,
    .profile = CapProfile::flat, .gap = 6, .capRadius = 4, .depth = 0,
    .alpha = flat(0x34433A), .modifier = flat(0x34433A), .accent = flat(0x3D4F44),
    .side = 0x2E3B33, .ring = 0xDCE3DA, .ringAlpha = 0x99,
    .font = LegendFont::handwritten, .weight = 400, .size = 16, .modifierSize = 11,
    .ink = 0xF4F4EE, .modifierInk = 0xC8D8CE, .accentInk = 0xF7E47E,
    .effect = PressEffect::flash, .press = flat(0xF4F4EE, 0x59), .pressInk = 0xFFFFFF,
    .fadeMs = 260, .pill = PillStyle::dark, .sound = "typewriter"};

// The catalogue, in listing order.
constexpr std::array<Look, 40> looks{
    silver, spaceBlack, macbookPro, midnight,
    ink, arctic, mint, oceanSA, carbon, rose, harbour,
    sa(ink, "ink-sa", "Ink SA"), sa(arctic, "arctic-sa", "Arctic SA"),
    sa(mint, "mint-sa", "Mint SA"), sa(carbon, "carbon-sa", "Carbon SA"),
    sa(rose, "rose-sa", "Rose SA"),
    frosted, smoked, liquidGlass, clearAcrylic, seaGlass, amethyst,
    synthwave, cyber, matrix, grid,
    wireframe, blueprint, monoInk, paperWhite,
    lavender, aurora, forest, ocean, cottonCandy, dusk,
    terminal, pixel, handheld, chalkboard,
};

// clang-format on

// The colour a fill is mostly seen as.
std::uint32_t baseOf(const Paint& paint) { return paint.from; }

std::optional<Shadow> plateShadow(const Look& look) {
  switch (look.shade) {
    case PlateShade::none:
      return std::nullopt;
    case PlateShade::soft:
      return Shadow{colour(0x000000, 0x38), 16, 0, 6, {}};
    case PlateShade::dark:
      return BuiltInThemes::darkPlateShadow();
    case PlateShade::glow:
      return Shadow{colour(look.shadeColour, 0x73), 30, 0, 0, {}};
  }
  return std::nullopt;
}

std::optional<Shadow> glowOf(std::optional<std::uint32_t> rgb, double radius) {
  if (!rgb) return std::nullopt;
  return Shadow{colour(*rgb, 0xB3), radius, 0, 0, {}};
}

Theme expand(const Look& look) {
  Theme theme;
  theme.version = Theme::currentVersion;
  theme.id = look.id;
  theme.name = look.name;
  theme.family = look.family;

  theme.plate.fill = fill(look.plate);
  theme.plate.material = look.material;
  theme.plate.padding = look.padding;
  theme.plate.radius = look.plateRadius;
  theme.plate.shadow = plateShadow(look);
  if (look.frame) theme.plate.frame = PlateFrame{colour(*look.frame), look.frameWidth, {}};
  if (look.grid) {
    theme.plate.grid = PlateGrid{colour(*look.grid, look.gridAlpha), look.gridSpacing, 1, {}};
  }
  if (const auto& c = look.corners)
    theme.plate.corners = CornerRadii{(*c)[0], (*c)[1], (*c)[2], (*c)[3]};

  theme.caps.profile = look.profile;
  theme.caps.gap = look.gap;
  theme.caps.radius = look.capRadius;
  theme.caps.depth = look.depth;
  theme.caps.alpha = fill(look.alpha);
  theme.caps.modifier = fill(look.modifier);
  theme.caps.accent = fill(look.accent);
  theme.caps.side = colour(look.side, look.sideAlpha);
  if (look.ring) theme.caps.ring = colour(*look.ring, look.ringAlpha);

  theme.legends.font = look.font;
  theme.legends.weight = look.weight;
  theme.legends.size = look.size;
  theme.legends.modifierSize = look.modifierSize;
  theme.legends.alpha = colour(look.ink);
  theme.legends.modifier = colour(look.modifierInk);
  theme.legends.accent = colour(look.accentInk);
  theme.legends.placement = look.placement;
  theme.legends.glow = glowOf(look.inkGlow, 6);

  theme.press.effect = look.effect;
  theme.press.fill = fill(look.press);
  theme.press.legend = colour(look.pressInk);
  theme.press.glow = glowOf(look.pressGlow, 14);
  theme.press.fadeMs = look.fadeMs;

  const bool darkCaps = colour(baseOf(look.alpha)).relativeLuminance() < 0.3;
  theme.lockLight = look.lockLight ? colour(*look.lockLight)
                    : darkCaps     ? BuiltInThemes::lockLightOnDark
                                   : BuiltInThemes::lockLightOn;
  theme.pill = look.pill;
  theme.cheatsheet.label = colour(look.ink);
  theme.cheatsheet.fill = Fill::solid(colour(baseOf(look.modifier), 0xF2));
  theme.backlight.mode = look.backlight;
  theme.backlight.colour = colour(look.backlightColour);
  if (!look.sound.empty()) theme.sound = std::string(look.sound);
  theme.mouse = MouseStyle{colour(baseOf(look.accent)),
                           colour(baseOf(look.press)),
                           colour(look.modifierInk),
                           colour(baseOf(look.accent), 0x4D),
                           {}};
  return theme;
}

}  // namespace

Shadow BuiltInThemes::darkPlateShadow() { return Shadow{colour(0x000000, 0x73), 24, 0, 10, {}}; }

Fill BuiltInThemes::dish(std::uint32_t rgb) {
  return Fill::linear(colour(lighter(rgb, 12)), colour(darker(rgb, 6)));
}

const std::vector<Theme>& BuiltInThemes::all() {
  static const std::vector<Theme> themes = [] {
    std::vector<Theme> built;
    built.reserve(looks.size());
    for (const Look& look : looks) built.push_back(expand(look));
    return built;
  }();
  return themes;
}

const Theme* BuiltInThemes::theme(std::string_view id) {
  static const std::unordered_map<std::string_view, const Theme*> byID = [] {
    std::unordered_map<std::string_view, const Theme*> index;
    for (const Theme& theme : all()) index.emplace(theme.id, &theme);
    return index;
  }();
  const auto found = byID.find(id);
  return found != byID.end() ? found->second : nullptr;
}

std::vector<const Theme*> BuiltInThemes::themes(std::string_view family) {
  std::vector<const Theme*> members;
  for (const Theme& theme : all()) {
    if (theme.family == family) members.push_back(&theme);
  }
  return members;
}

}  // namespace corvel
