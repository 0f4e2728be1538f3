#include "CorvelCore/Theme/BacklightWave.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace corvel {
namespace {

// Caps as points, so that distances are exact: the pressed A at the origin.
constexpr Keycap point(KeyID key, double x, double y) { return {key, {x, y, 0, 0}, std::nullopt}; }

constexpr std::array testCaps{
    point(KeyID::keyA, 0, 0),          point(KeyID::keyB, 2.8, 0),  // exactly at reach: left out
    point(KeyID::keyC, 0, 2.8 - 1e-9),                              // just inside
    point(KeyID::keyD, 1, 0),                                       // distance 1, earlier in order
    point(KeyID::keyE, -1, 0),                                      // distance 1, later
    point(KeyID::keyF, 0.6, 0.8),                                   // distance 1, latest
    point(KeyID::keyG, 0.3, 0.4),                                   // distance 0.5
    point(KeyID::keyA, 0.1, 0),  // a second cap of the pressed key
};

TEST(BacklightWaveTest, DistanceOrderTiesAndReach) {
  const KeyboardGeometry geometry("points", testCaps);
  const auto steps = BacklightWave::neighbours(KeyID::keyA, geometry);
  ASSERT_EQ(steps.size(), 5u);
  const KeyID order[] = {KeyID::keyG, KeyID::keyD, KeyID::keyE, KeyID::keyF, KeyID::keyC};
  for (std::size_t i = 0; i < steps.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(steps[i].key, order[i]);
  }
  EXPECT_NEAR(steps[0].delay, 0.035, 1e-12);
  EXPECT_NEAR(steps[1].delay, 0.07, 1e-12);
  EXPECT_LT(steps[4].delay, 0.196);
  EXPECT_NEAR(steps[4].delay, 0.196, 1e-9);
}

TEST(BacklightWaveTest, MissingKeyGivesNothing) {
  EXPECT_TRUE(BacklightWave::neighbours(KeyID::keypad5, KeyboardGeometry::macBookANSI()).empty());
  const KeyboardGeometry empty("empty", {});
  EXPECT_TRUE(BacklightWave::neighbours(KeyID::keyA, empty).empty());
}

TEST(BacklightWaveTest, RealKeyboards) {
  const struct {
    const KeyboardGeometry* geometry;
    KeyID pressed;
    KeyID nearest;
  } cases[] = {
      // J's nearest are H and K at distance 1, H first in the row.
      {&KeyboardGeometry::macBookANSI(), KeyID::keyJ, KeyID::keyH},
      // The half-height up arrow: down sits half a unit below.
      {&KeyboardGeometry::macBookANSI(), KeyID::arrowUp, KeyID::arrowDown},
      // ISO return counts from the centre of its two rectangles (14, 3): the
      // backslash at (13.25, 3.5) is nearer than the right bracket at (13, 2.5).
      {&KeyboardGeometry::fullSizeISO(), KeyID::returnKey, KeyID::backslash},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.geometry->name()) + " " +
                 std::string(keyInfo(c.pressed).identifier));
    const auto steps = BacklightWave::neighbours(c.pressed, *c.geometry);
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(steps.front().key, c.nearest);
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end(),
                               [](const auto& a, const auto& b) { return a.delay < b.delay; }));
    EXPECT_TRUE(std::none_of(steps.begin(), steps.end(),
                             [&](const auto& s) { return s.key == c.pressed; }));
    EXPECT_LT(steps.back().delay, BacklightWave::reach * BacklightWave::stepDelay);
  }
}

}  // namespace
}  // namespace corvel
