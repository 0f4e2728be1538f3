// BuiltInThemes: the forty themes the app ships, in seven families. They are
// built once, on first use, and never change; listings show them in `all`
// order, exports find them by id, and a user's theme names the one it came
// from in `basedOn`. No built-in id starts with "mine-", so a user's theme
// never collides with one.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "CorvelCore/Theme/Theme.h"
#include "CorvelCore/Theme/ThemeColor.h"
#include "CorvelCore/Theme/ThemeParts.h"

namespace corvel {

struct BuiltInThemes {
  // The families, in display order.
  static constexpr std::array<std::string_view, 7> families{
      "Apple", "Mechanical", "Glass", "Neon", "Minimal", "Colour", "Fun"};
  // The theme used when none is chosen.
  static constexpr std::string_view defaultID = "space-black";
  // The short selection offered on first launch, in order.
  static constexpr std::array<std::string_view, 6> welcome{
      "space-black", "silver", "ink", "frosted", "synthwave", "paper-white"};

  // The Caps Lock light over light caps, and over dark caps.
  static constexpr ThemeColor lockLightOn = ThemeColor::fromRGB(0x34C759);
  static constexpr ThemeColor lockLightOnDark = ThemeColor::fromRGB(0x32D74B);
  // The shadow under dark plates.
  [[nodiscard]] static Shadow darkPlateShadow();
  // A dished cap: the colour 0xRRGGBB lightened at the top and darkened at
  // the bottom, as light falls on a concave cap.
  [[nodiscard]] static Fill dish(std::uint32_t rgb);

  // Every built-in theme, in listing order (built on first use).
  [[nodiscard]] static const std::vector<Theme>& all();
  // The theme with exactly this id (case matters), or nullptr.
  [[nodiscard]] static const Theme* theme(std::string_view id);
  // The themes whose family is exactly `family`, in `all` order; none for an
  // unknown family.
  [[nodiscard]] static std::vector<const Theme*> themes(std::string_view family);
};

}  // namespace corvel
