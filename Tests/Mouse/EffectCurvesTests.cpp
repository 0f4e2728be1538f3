#include "CorvelCore/Mouse/EffectCurves.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace corvel {
namespace {

constexpr double tolerance = 1e-9;

TEST(EffectCurvesTest, EaseOutEndsAndClamping) {
  const struct {
    double t;
    double expected;
  } cases[] = {
      {0, 0},
      {1, 1},
      {-0.5, 0},
      {1.5, 1},
      {-std::numeric_limits<double>::infinity(), 0},
      {std::numeric_limits<double>::infinity(), 1},
      {std::nan(""), 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.t);
    EXPECT_EQ(EffectCurves::easeOut(c.t), c.expected);
  }
}

TEST(EffectCurvesTest, EaseOutIsTheBezierAndRisesMonotonically) {
  // At u = 0.5 the curve is at x = 0.125 + 0.2175 = 0.3425, y = 0.125 + 0.375 = 0.5.
  EXPECT_NEAR(EffectCurves::easeOut(0.3425), 0.5, tolerance);
  double previous = 0;
  for (int step = 1; step <= 100; ++step) {
    const double value = EffectCurves::easeOut(step / 100.0);
    EXPECT_GT(value, previous) << step;
    previous = value;
  }
  // An ease-out curve runs ahead of linear time.
  EXPECT_GT(EffectCurves::easeOut(0.25), 0.25);
}

TEST(EffectCurvesTest, RippleAndTrailAtTheirEnds) {
  const struct {
    std::string name;
    EffectCurves::Sample sample;
    double scale;
    double opacity;
  } cases[] = {
      {"ripple start", EffectCurves::ripple(0, false), 0.25, 1},
      {"ripple end", EffectCurves::ripple(0.55, false), 1.25, 0},
      {"ripple long after", EffectCurves::ripple(3, false), 1.25, 0},
      {"ripple reduced start", EffectCurves::ripple(0, true), 1, 1},
      {"ripple reduced end", EffectCurves::ripple(0.55, true), 1, 0},
      {"trail start", EffectCurves::trailDotAt(0, false), 1, 1},
      {"trail end", EffectCurves::trailDotAt(0.6, false), 0.3, 0},
      {"trail reduced end", EffectCurves::trailDotAt(0.6, true), 1, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_NEAR(c.sample.scale, c.scale, tolerance);
    EXPECT_NEAR(c.sample.opacity, c.opacity, tolerance);
  }
}

TEST(EffectCurvesTest, FadesStartAfterHoldFull) {
  EXPECT_EQ(EffectCurves::heldOpacity(0.2, 1.0), 1);
  EXPECT_LT(EffectCurves::heldOpacity(0.21, 1.0), 1);
  EXPECT_EQ(EffectCurves::heldOpacity(1.0, 1.0), 0);
  EXPECT_NEAR(EffectCurves::heldOpacity(0.6, 1.0), 1 - EffectCurves::easeOut(0.5), tolerance);
  // A ripple's fade is heldOpacity over the ripple's life.
  EXPECT_EQ(EffectCurves::ripple(0.4, false).opacity, EffectCurves::heldOpacity(0.4, 0.55));
}

// With no time left to fade over, the formula still decides: the eased
// ratio clamps, so a duration of exactly holdFull ends the effect after
// holdFull, and a shorter one (its ratio negative) leaves it at 1.
TEST(EffectCurvesTest, HeldOpacityWithNoTimeToFadeFollowsTheClampedRatio) {
  const struct {
    double t;
    double duration;
    double opacity;
  } cases[] = {
      {0.3, 0.1, 1}, {0.25, 0, 1},   {0.25, -1, 1}, {0.25, std::nan(""), 1},
      {0.2, 0.2, 1}, {0.25, 0.2, 0}, {0.1, 0.1, 1}, {5, 0.1, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.t) + " over " + std::to_string(c.duration));
    EXPECT_EQ(EffectCurves::heldOpacity(c.t, c.duration), c.opacity);
  }
}

TEST(EffectCurvesTest, SoftEdge) {
  const struct {
    double radius;
    double edge;
  } cases[] = {{40, 16}, {64, 16}, {100, 25}, {0, 16}, {-50, 16}, {std::nan(""), 16}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.radius);
    EXPECT_EQ(EffectCurves::softEdge(c.radius), c.edge);
  }
}

}  // namespace
}  // namespace corvel
