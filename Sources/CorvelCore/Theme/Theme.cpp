#include "CorvelCore/Theme/Theme.h"

namespace corvel {

namespace {

Theme makeDefaults() {
  Theme theme;
  theme.id = "untitled";
  theme.name = "Untitled";
  theme.family = "Custom";
  theme.plate.fill = Fill::linear(ThemeColor::fromRGB(0x2C2C2E), ThemeColor::fromRGB(0x232325));
  theme.plate.material = PlateMaterial::solid;
  theme.plate.padding = 10;
  theme.plate.radius = 14;
  theme.plate.shadow = Shadow{ThemeColor::fromRGBA(0x00000066), 18, 0, 6, {}};
  theme.caps.profile = CapProfile::low;
  theme.caps.gap = 4;
  theme.caps.radius = 6;
  theme.caps.depth = 2;
  theme.caps.alpha = Fill::solid(ThemeColor::fromRGB(0x3A3A3C));
  theme.caps.modifier = Fill::solid(ThemeColor::fromRGB(0x303032));
  theme.caps.accent = Fill::solid(ThemeColor::fromRGB(0x0A84FF));
  theme.caps.side = ThemeColor::fromRGB(0x1C1C1E);
  theme.legends.font = LegendFont::system;
  theme.legends.weight = 500;
  theme.legends.size = 14;
  theme.legends.modifierSize = 10;
  theme.legends.alpha = ThemeColor::fromRGB(0xF2F2F7);
  theme.legends.modifier = ThemeColor::fromRGB(0xAEAEB2);
  theme.legends.accent = ThemeColor::fromRGB(0xFFFFFF);
  theme.press.effect = PressEffect::sink;
  theme.press.fill = Fill::solid(ThemeColor::fromRGB(0x0A84FF));
  theme.press.legend = ThemeColor::fromRGB(0xFFFFFF);
  theme.press.fadeMs = 160;
  theme.lockLight = ThemeColor::fromRGB(0x30D158);
  theme.pill = PillStyle::dark;
  theme.cheatsheet.label = ThemeColor::fromRGB(0xF2F2F7);
  theme.cheatsheet.fill = Fill::solid(ThemeColor::fromRGBA(0x1C1C1EE6));
  theme.backlight.mode = BacklightMode::off;
  theme.backlight.colour = ThemeColor::fromRGB(0xFFFFFF);
  return theme;
}

}  // namespace

const Theme& Theme::defaults() {
  static const Theme theme = makeDefaults();
  return theme;
}

JSONValue Theme::json() const {
  JSONObject object = extras;
  object.set("version", version);
  object.set("id", id);
  object.set("name", name);
  object.set("family", family);
  object.set("basedOn", basedOn ? JSONValue(*basedOn) : JSONValue());
  object.set("plate", plate.json());
  object.set("caps", caps.json());
  object.set("legends", legends.json());
  object.set("press", press.json());
  object.set("lockLight", lockLight.hex());
  object.set("pill", rawValue(pill));
  object.set("cheatsheet", cheatsheet.json());
  object.set("backlight", backlight.json());
  object.set("sound", sound ? JSONValue(*sound) : JSONValue());
  object.set("mouse", mouse ? mouse->json() : JSONValue());
  JSONObject keys = unknownOverrides;
  for (const auto& [key, paint] : overrides) {
    const std::string_view identifier = keyInfo(key).identifier;
    if (!identifier.empty()) keys.set(std::string(identifier), paint.json());
  }
  object.set("overrides", std::move(keys));
  return JSONValue(std::move(object)).restoring(unread);
}

}  // namespace corvel
