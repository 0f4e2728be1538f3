#include "CorvelCore/Automation/AutomationListings.h"

#include <gtest/gtest.h>

namespace corvel {
namespace {

Theme theme(std::string id, std::string name) {
  Theme made;
  made.id = std::move(id);
  made.name = std::move(name);
  made.family = "Family";
  return made;
}

// An exact id wins over a name, wherever the two stand; names are compared
// without regard to case, built-in themes first.
TEST(AutomationListingsTest, ThemesAreMatchedByIdBeforeName) {
  const std::vector<Theme> builtIns = {theme("ink", "Paper"), theme("night", "Night")};
  const std::vector<Theme> mine = {theme("paper", "Mine"), theme("mine-night", "NIGHT")};
  struct Case {
    std::string wanted;
    std::optional<std::string> id;
  };
  const Case cases[] = {
      {"paper", "paper"},  // my theme's id, although a built-in theme is named Paper
      {"PAPER", "ink"},    // no id is PAPER: the first name that matches
      {"mine-night", "mine-night"},
      {"NIGHT", "night"},  // the built-in name first
      {"mine", "paper"},
      {"nothing", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.wanted);
    const auto found = AutomationListings::match(builtIns, mine, c.wanted);
    EXPECT_EQ(found ? std::optional(found->id) : std::nullopt, c.id);
  }
}

// Columns are as wide as their longest cell in characters: a wide or
// combined character is one, whatever its bytes; the last cell is never
// padded.
TEST(AutomationListingsTest, TableColumnsCountCharacters) {
  const std::string table = AutomationListings::table({
      {"東京", "e\u0301te\u0301", "last"},
      {"abc", "x", "longer last"},
      {"🙂", "", "z"},
  });
  EXPECT_EQ(table,
            "東京    e\u0301te\u0301   last\n"
            "abc   x     longer last\n"
            "🙂           z");
}

TEST(AutomationListingsTest, LayerRows) {
  const std::vector<LayerRow> rows = {{"One", "rcmd", std::nullopt, true, false, 1},
                                      {"Two", "hyper", "com.apple.Safari", true, true, 0},
                                      {"Three", "lopt", std::nullopt, false, false, 12}};
  EXPECT_EQ(AutomationListings::text(rows),
            "One     rcmd    all apps           on                  1 key\n"
            "Two     hyper   com.apple.Safari   off, needs review   0 keys\n"
            "Three   lopt    all apps           off                 12 keys");
}

}  // namespace
}  // namespace corvel
