// ThemeLimits: the bounds every theme obeys, whether built in, made in the
// editor or read from a file: text lengths, the number of per-key overrides,
// the ranges that clamp each number a file may set, and the rules for theme
// ids and names.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvel {

// The closed range of one number of a theme, named by section and member.
struct ThemeRange {
  std::string_view key;
  double lo;
  double hi;

  // The value raised to `lo`, then lowered to `hi`.
  [[nodiscard]] constexpr double clamp(double value) const {
    const double raised = value < lo ? lo : value;
    return raised > hi ? hi : raised;
  }
  [[nodiscard]] constexpr bool contains(double value) const { return value >= lo && value <= hi; }
};

struct ThemeLimits {
  static constexpr std::int64_t maxNameLength = 60;
  static constexpr std::int64_t maxFamilyLength = 40;
  static constexpr std::int64_t maxFontFamilyLength = 100;
  static constexpr std::size_t maxIDLength = 64;
  static constexpr std::size_t maxOverrides = 512;
  static constexpr std::string_view minePrefix = "mine-";

  // Every number a theme file may set. Shadow ranges apply to every shadow and
  // glow wherever it sits.
  static constexpr std::array<ThemeRange, 20> ranges{{
      {"caps.gap", 0, 12},
      {"caps.radius", 0, 24},
      {"caps.depth", 0, 12},
      {"plate.padding", 2, 40},
      {"plate.radius", 0, 48},
      {"plate.corners", 0, 60},
      {"plate.frame.width", 0, 12},
      {"plate.grid.spacing", 4, 64},
      {"plate.grid.lineWidth", 0.5, 4},
      {"legends.size", 6, 30},
      {"legends.modifierSize", 5, 20},
      {"legends.weight", 100, 900},
      {"press.fadeMs", 0, 2000},
      {"shadow.radius", 0, 80},
      {"shadow.x", -60, 60},
      {"shadow.y", -60, 60},
      {"gradient.radial.x", 0, 1},
      {"gradient.radial.y", 0, 1},
      {"gradient.radial.w", 0.1, 3},
      {"gradient.radial.h", 0.1, 3},
  }};

  // The range with that key, or nullptr.
  [[nodiscard]] static constexpr const ThemeRange* find(std::string_view key) {
    for (const auto& range : ranges) {
      if (range.key == key) return &range;
    }
    return nullptr;
  }
  // The range with that key; a key not in the table does not compile.
  [[nodiscard]] static consteval ThemeRange range(std::string_view key) {
    for (std::size_t i = 0; i < ranges.size(); ++i) {
      if (ranges[i].key == key) return ranges[i];
    }
    throw "no theme range with this key";
  }

  // True for 1 to 64 bytes of a-z, 0-9 and "-", with no "-" at either end and
  // never two in a row.
  [[nodiscard]] static bool isValidID(std::string_view text);
  // True for a valid id that starts with "mine-": a theme the user made.
  [[nodiscard]] static bool isMineID(std::string_view text);
  // The text without line and paragraph separators, control characters and
  // format characters (U+200C, U+200D, U+200E, U+200F and U+061C stay),
  // trimmed of white space and line breaks, cut to `max` user-perceived
  // characters and trimmed again. Invalid UTF-8 reads as U+FFFD.
  [[nodiscard]] static std::string cleanName(std::string_view text, std::int64_t max);
};

}  // namespace corvel
