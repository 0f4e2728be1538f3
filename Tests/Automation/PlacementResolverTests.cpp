#include "CorvelCore/Automation/PlacementResolver.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvel {
namespace {

const std::vector<PlacementDisplay> displays{
    {"main", {0, 0, 1440, 875}},
    {"side", {1440, 100, 1920, 1050}},
    {"tv", {-1000, 0, 1000, 500}},
};
const std::map<std::string, std::string> names{{"main", "Built-in Retina Display"},
                                               {"side",
                                                "\xC3\x89"
                                                "cran LG"},
                                               {"tv", "Living Room"}};
const std::map<std::string, std::uint32_t> ids{{"main", 1}, {"side", 7}, {"tv", 3}};

TEST(PlacementResolverTest, ChoosesTheDisplay) {
  struct Case {
    std::string label;
    std::optional<ScreenRequest> screen;
    std::string current;
    std::optional<std::string> expected;
  };
  const Case cases[] = {
      {"by number", ScreenRequest::id(7), "main", "side"},
      {"unknown number", ScreenRequest::id(9), "tv", "tv"},
      {"by part of the name, any case", ScreenRequest::name("retina"), "side", "main"},
      {"without diacritics, trimmed", ScreenRequest::name("  ecran "), "main", "side"},
      {"no match stays", ScreenRequest::name("Projector"), "tv", "tv"},
      {"blank name matches nothing", ScreenRequest::name(" "), "side", "side"},
      {"no request", std::nullopt, "side", "side"},
      {"current unknown", ScreenRequest::name("Projector"), "gone", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    auto display = PlacementResolver::display(c.screen, displays, names, ids, c.current);
    ASSERT_EQ(display.has_value(), c.expected.has_value());
    if (display) {
      EXPECT_EQ(display->key, *c.expected);
    }
  }
}

TEST(PlacementResolverTest, PlacesTheBoard) {
  const PlacementDisplay& main = displays[0];  // 1440 x 875 at the origin
  const PlacementSize board{600, 200};
  constexpr double inf = std::numeric_limits<double>::infinity();
  struct Case {
    std::string label;
    PositionRequest position;
    std::optional<PlacementFraction> expected;
  };
  const Case cases[] = {
      // 12 in from the left and the top: midX 312, minY 875 - 12 - 200.
      {"topLeft", PositionRequest::named(NamedPosition::topLeft),
       PlacementFraction{312.0 / 1440, 663.0 / 875}},
      {"top", PositionRequest::named(NamedPosition::top), PlacementFraction{0.5, 663.0 / 875}},
      {"bottomRight", PositionRequest::named(NamedPosition::bottomRight),
       PlacementFraction{1128.0 / 1440, 12.0 / 875}},
      {"left", PositionRequest::named(NamedPosition::left),
       PlacementFraction{312.0 / 1440, 337.5 / 875}},
      {"center", PositionRequest::named(NamedPosition::center),
       PlacementFraction{0.5, 337.5 / 875}},
      {"point from the top left", PositionRequest::point(100, 50),
       PlacementFraction{400.0 / 1440, 625.0 / 875}},
      {"point beyond the frame is clamped", PositionRequest::point(5000, 5000),
       PlacementFraction{1140.0 / 1440, 0}},
      {"negative point is clamped", PositionRequest::point(-50, -50),
       PlacementFraction{300.0 / 1440, 675.0 / 875}},
      {"infinite coordinate", PositionRequest::point(inf, 10), std::nullopt},
      {"not a number", PositionRequest::point(10, std::numeric_limits<double>::quiet_NaN()),
       std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    auto placed = PlacementResolver::place(c.position, board, main);
    ASSERT_EQ(placed.has_value(), c.expected.has_value());
    if (!placed) continue;
    EXPECT_DOUBLE_EQ(placed->x, c.expected->x);
    EXPECT_DOUBLE_EQ(placed->y, c.expected->y);
  }
}

TEST(PlacementResolverTest, ClampsIntoTheFrame) {
  const PlacementRect frame{100, 50, 400, 300};
  struct Case {
    PlacementRect rect;
    PlacementRect expected;
  };
  const Case cases[] = {
      {{150, 60, 100, 100}, {150, 60, 100, 100}},  // inside stays
      {{450, 300, 100, 100}, {400, 250, 100, 100}},
      {{0, 0, 100, 100}, {100, 50, 100, 100}},
      {{300, 200, 500, 400}, {100, 50, 500, 400}},  // larger: against minX and minY
  };
  for (const auto& c : cases) EXPECT_EQ(PlacementResolver::clamp(c.rect, frame), c.expected);
  // A degenerate frame gives the fallback fractions.
  PlacementDisplay flat{"flat", {0, 0, 0, 0}};
  auto placed =
      PlacementResolver::place(PositionRequest::named(NamedPosition::center), {100, 100}, flat);
  ASSERT_TRUE(placed);
  EXPECT_EQ(*placed, (PlacementFraction{0.5, 0}));
}

TEST(PlacementResolverTest, OverrideScalesTheUnitAndPlaces) {
  const PlacementSize board{1000, 400};  // unit 40
  struct Case {
    std::string label;
    ShowOptions options;
    double unitNow;
    std::optional<double> unit;
    bool hasDisplay;
    bool hasPosition;
  };
  ShowOptions wide;
  wide.width = 4000;
  ShowOptions narrow;
  narrow.width = 300;
  ShowOptions half;
  half.width = 1200;
  half.position = PositionRequest::named(NamedPosition::topLeft);
  ShowOptions onScreen;
  onScreen.screen = ScreenRequest::id(7);
  const Case cases[] = {
      {"capped at 64", wide, 40, 64, false, false},
      {"at least 26", narrow, 40, 26, false, false},
      {"scaled", half, 40, 48, true, true},
      {"unit unknown", wide, std::numeric_limits<double>::quiet_NaN(), std::nullopt, false, false},
      {"unit zero", wide, 0, std::nullopt, false, false},
      {"screen only", onScreen, 40, std::nullopt, true, false},
      {"nothing", ShowOptions{}, 40, std::nullopt, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.label);
    auto result =
        PlacementResolver::override(c.options, board, c.unitNow, displays, names, ids, "main");
    EXPECT_EQ(result.unit, c.unit);
    EXPECT_EQ(result.display.has_value(), c.hasDisplay);
    EXPECT_EQ(result.position.has_value(), c.hasPosition);
  }
  // The scaled board (1200 x 480) is what gets placed.
  auto result = PlacementResolver::override(half, board, 40, displays, names, ids, "main");
  ASSERT_TRUE(result.position);
  EXPECT_DOUBLE_EQ(result.position->x, 612.0 / 1440);
  EXPECT_DOUBLE_EQ(result.position->y, 383.0 / 875);
}

}  // namespace
}  // namespace corvel
