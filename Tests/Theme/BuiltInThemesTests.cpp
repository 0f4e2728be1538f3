#include "CorvelCore/Theme/BuiltInThemes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "CorvelCore/Theme/ThemeCodec.h"
#include "CorvelCore/Theme/ThemeLimits.h"

namespace corvel {
namespace {

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

    // Reading clamps every number to its range, so a number out of range
    // would not come back as the same bytes.
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

TEST(BuiltInThemesTest, FamiliesAndLookups) {
  const auto& all = BuiltInThemes::all();
  // Each family holds its own themes in the order of the list.
  std::size_t total = 0;
  for (const auto family : BuiltInThemes::families) {
    SCOPED_TRACE(family);
    const auto themes = BuiltInThemes::themes(family);
    EXPECT_FALSE(themes.empty());
    EXPECT_TRUE(std::is_sorted(themes.begin(), themes.end()));
    for (const Theme* theme : themes) EXPECT_EQ(theme->family, family);
    total += themes.size();
  }
  EXPECT_EQ(total, all.size());
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
