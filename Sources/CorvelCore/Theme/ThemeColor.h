// ThemeColor: one colour of a theme, as four channels (sRGB red, green, blue
// and alpha) that are meant to lie in 0...1. Files carry it as "#RRGGBB", or
// "#RRGGBBAA" when the alpha is not full; the theme editor's legibility
// warnings use the luminance, contrast and compositing helpers.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvel {

struct ThemeColor {
  double r = 0;
  double g = 0;
  double b = 0;
  double a = 1;

  // An opaque colour from 0xRRGGBB (the top byte is ignored).
  [[nodiscard]] static constexpr ThemeColor fromRGB(std::uint32_t rgb) {
    return {byteAt(rgb, 16), byteAt(rgb, 8), byteAt(rgb, 0), 1};
  }
  // A colour from 0xRRGGBBAA.
  [[nodiscard]] static constexpr ThemeColor fromRGBA(std::uint32_t rgba) {
    return {byteAt(rgba, 24), byteAt(rgba, 16), byteAt(rgba, 8), byteAt(rgba, 0)};
  }

  // "#" then 3 (each digit times 17), 6 or 8 hexadecimal digits of either
  // case; 3 and 6 digits give a full alpha. Anything else gives nothing.
  [[nodiscard]] static std::optional<ThemeColor> parse(std::string_view text);

  // "#RRGGBB" in upper case, with "AA" appended when the alpha byte is not 255.
  // Each byte is the channel clamped to 0...1, times 255, rounded; NaN counts as 0.
  [[nodiscard]] std::string hex() const;
  // The channels' bytes packed as 0x00RRGGBB.
  [[nodiscard]] std::uint32_t rgb() const;
  // The channels' bytes packed as 0xRRGGBBAA.
  [[nodiscard]] std::uint32_t rgba() const;

  // The relative luminance of the colour's red, green and blue (alpha ignored),
  // 0 for black to 1 for white.
  [[nodiscard]] double relativeLuminance() const;
  // The contrast ratio of two colours, 1 (none) to 21 (black on white), in
  // either argument order.
  [[nodiscard]] static double contrast(const ThemeColor& first, const ThemeColor& second);
  // This colour blended by its alpha over `background`, whose own alpha is
  // taken as full; the result is opaque.
  [[nodiscard]] ThemeColor composited(const ThemeColor& background) const;

  friend bool operator==(const ThemeColor&, const ThemeColor&) = default;

 private:
  static constexpr double byteAt(std::uint32_t packed, int shift) {
    return static_cast<double>((packed >> shift) & 0xFFu) / 255.0;
  }
};

}  // namespace corvel
