#include "CorvelCore/Theme/BuiltInThemes.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "CorvelCore/Theme/ThemeCodec.h"
#include "CorvelCore/Theme/ThemeLimits.h"

namespace corvel {
namespace {

// Every number of a theme with the range it must lie in.
std::vector<std::pair<double, ThemeRange>> rangedNumbers(const Theme& theme) {
  const auto range = [](std::string_view key) {
    const ThemeRange* found = ThemeLimits::find(key);
    return found != nullptr ? *found : ThemeRange{key, 1, 0};
  };
  std::vector<std::pair<double, ThemeRange>> numbers{
      {theme.caps.gap, range("caps.gap")},
      {theme.caps.radius, range("caps.radius")},
      {theme.caps.depth, range("caps.depth")},
      {theme.plate.padding, range("plate.padding")},
      {theme.plate.radius, range("plate.radius")},
      {theme.legends.size, range("legends.size")},
      {theme.legends.modifierSize, range("legends.modifierSize")},
      {static_cast<double>(theme.legends.weight), range("legends.weight")},
      {theme.press.fadeMs, range("press.fadeMs")},
  };
  for (const auto& shadow : {theme.plate.shadow, theme.legends.glow, theme.press.glow}) {
    if (!shadow) continue;
    numbers.push_back({shadow->radius, range("shadow.radius")});
    numbers.push_back({shadow->x, range("shadow.x")});
    numbers.push_back({shadow->y, range("shadow.y")});
  }
  if (theme.plate.frame) numbers.push_back({theme.plate.frame->width, range("plate.frame.width")});
  if (const auto& grid = theme.plate.grid) {
    numbers.push_back({grid->spacing, range("plate.grid.spacing")});
    numbers.push_back({grid->lineWidth, range("plate.grid.lineWidth")});
  }
  if (const auto& c = theme.plate.corners) {
    for (double radius : {c->topLeft, c->topRight, c->bottomRight, c->bottomLeft}) {
      numbers.push_back({radius, range("plate.corners")});
    }
  }
  for (const Fill* fill : {&theme.plate.fill, &theme.caps.alpha, &theme.caps.modifier,
                           &theme.caps.accent, &theme.press.fill, &theme.cheatsheet.fill}) {
    const GradientFill* gradient = fill->asGradient();
    const RadialShape* radial = gradient != nullptr ? gradient->shape.asRadial() : nullptr;
    if (radial == nullptr) continue;
    numbers.push_back({radial->centreX, range("gradient.radial.x")});
    numbers.push_back({radial->centreY, range("gradient.radial.y")});
    numbers.push_back({radial->width, range("gradient.radial.w")});
    numbers.push_back({radial->height, range("gradient.radial.h")});
  }
  return numbers;
}

TEST(BuiltInThemesTest, EveryThemeIsValidInRangeAndRoundTripsToTheSameBytes) {
  const auto& all = BuiltInThemes::all();
  ASSERT_EQ(all.size(), 40u);
  std::set<std::string> ids;
  std::set<std::string> looks;
  for (const Theme& theme : all) {
    SCOPED_TRACE(theme.id);
    EXPECT_TRUE(ThemeLimits::isValidID(theme.id));
    EXPECT_FALSE(theme.id.starts_with(ThemeLimits::minePrefix));
    EXPECT_TRUE(ids.insert(theme.id).second);
    EXPECT_EQ(theme.version, 1);
    EXPECT_FALSE(theme.basedOn);
    for (const auto& [value, range] : rangedNumbers(theme)) {
      SCOPED_TRACE(std::string(range.key));
      EXPECT_TRUE(range.contains(value)) << value;
    }

    const std::string first = ThemeCodec::encode(theme);
    const auto decoded = ThemeCodec::decode(first);
    ASSERT_TRUE(decoded);
    EXPECT_TRUE(decoded->unread.empty());
    EXPECT_TRUE(decoded->extras.empty());
    EXPECT_EQ(ThemeCodec::encode(*decoded), first);

    // No two themes look alike: everything but the names differs somewhere.
    Theme look = theme;
    look.id = look.name = look.family = "";
    EXPECT_TRUE(looks.insert(ThemeCodec::encode(look)).second);
  }
}

TEST(BuiltInThemesTest, OrderFamiliesAndLookups) {
  const auto& all = BuiltInThemes::all();
  EXPECT_EQ(all.front().id, "silver");
  EXPECT_EQ(all[15].id, "rose-sa");
  EXPECT_EQ(all.back().id, "chalkboard");
  EXPECT_EQ(all[2].name, "MacBook Pro");

  std::size_t total = 0;
  for (const auto family : BuiltInThemes::families) total += BuiltInThemes::themes(family).size();
  EXPECT_EQ(total, all.size());
  const auto mechanical = BuiltInThemes::themes("Mechanical");
  ASSERT_EQ(mechanical.size(), 12u);
  EXPECT_EQ(mechanical.front()->id, "ink");
  EXPECT_EQ(mechanical.back()->id, "rose-sa");
  EXPECT_TRUE(BuiltInThemes::themes("mechanical").empty());
  EXPECT_TRUE(BuiltInThemes::themes("").empty());

  for (const auto id : BuiltInThemes::welcome) {
    SCOPED_TRACE(id);
    EXPECT_NE(BuiltInThemes::theme(id), nullptr);
  }
  ASSERT_NE(BuiltInThemes::theme(BuiltInThemes::defaultID), nullptr);
  EXPECT_EQ(BuiltInThemes::theme("space-black"), &all[1]);
  EXPECT_EQ(BuiltInThemes::theme("Space-Black"), nullptr);
  EXPECT_EQ(BuiltInThemes::theme("space-black "), nullptr);
  EXPECT_EQ(BuiltInThemes::theme(""), nullptr);
}

TEST(BuiltInThemesTest, SAThemesHaveSculptedCaps) {
  for (const Theme& theme : BuiltInThemes::all()) {
    SCOPED_TRACE(theme.id);
    EXPECT_EQ(theme.caps.profile == CapProfile::sa, theme.name.ends_with(" SA"));
  }
}

}  // namespace
}  // namespace corvel
