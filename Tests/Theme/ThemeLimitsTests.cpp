#include "CorvelCore/Theme/ThemeLimits.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace corvel {
namespace {

TEST(ThemeLimitsTest, IDs) {
  struct Case {
    std::string id;
    bool valid;
    bool mine;
  };
  const Case cases[] = {
      {"a", true, false},
      {"retro-80s", true, false},
      {"x9", true, false},
      {"mine-a", true, true},
      {"mine-retro-80s", true, true},
      {std::string(64, 'a'), true, false},
      {"mine-" + std::string(59, 'b'), true, true},
      {std::string(65, 'a'), false, false},
      {"mine-" + std::string(60, 'b'), false, false},
      {"", false, false},
      {"mine-", false, false},
      {"mine--a", false, false},
      {"mine", true, false},
      {"-a", false, false},
      {"a-", false, false},
      {"A1", false, false},
      {"a_b", false, false},
      {"a b", false, false},
      {"caf\xC3\xA9", false, false},
      {std::string("a\0b", 3), false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.id);
    EXPECT_EQ(ThemeLimits::isValidID(c.id), c.valid);
    EXPECT_EQ(ThemeLimits::isMineID(c.id), c.mine);
  }
}

TEST(ThemeLimitsTest, CleanNameDropsInvisiblesTrimsAndCutsByCharacter) {
  struct Case {
    std::string text;
    std::int64_t max;
    std::string cleaned;
  };
  const Case cases[] = {
      {"  \t\x01\x7F \n", 60, ""},
      {"  Retro\n", 60, "Retro"},
      {"Re\ttro", 60, "Retro"},
      {"\u2028Name\u2029", 60, "Name"},  // line and paragraph separators
      {"a\u200Bb\uFEFF", 60, "ab"},      // zero-width space, byte order mark
      {"\u00A0Name\u3000", 60, "Name"},  // no-break and ideographic spaces
      {"\U0001F469\u200D\U0001F4BB", 1,  // woman technologist: one character
       "\U0001F469\u200D\U0001F4BB"},
      {"\u05E9\u05DC\u200F", 60, "\u05E9\u05DC\u200F"},  // a right-to-left mark stays
      {"abc def", 4, "abc"},                             // trimmed again after the cut
      {"a\xFF!", 60, "a\uFFFD!"},                        // a bad byte reads as U+FFFD
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(ThemeLimits::cleanName(c.text, c.max), c.cleaned);
  }
}

TEST(ThemeLimitsTest, RangesAreDistinctAndOrdered) {
  std::set<std::string_view> keys;
  for (const auto& range : ThemeLimits::ranges) {
    SCOPED_TRACE(range.key);
    EXPECT_TRUE(keys.insert(range.key).second);
    EXPECT_LT(range.lo, range.hi);
    EXPECT_EQ(ThemeLimits::find(range.key), &range);
  }
  EXPECT_EQ(ThemeLimits::find("caps.width"), nullptr);
  constexpr ThemeRange weight = ThemeLimits::range("legends.weight");
  EXPECT_EQ(weight.clamp(50), 100);
  EXPECT_EQ(weight.clamp(950), 900);
}

}  // namespace
}  // namespace corvel
