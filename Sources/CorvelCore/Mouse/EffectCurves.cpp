#include "CorvelCore/Mouse/EffectCurves.h"

#include <cmath>

namespace corvel {

namespace {

// The Bézier's second control point; the first is (0, 0).
constexpr double controlX = 0.58;
constexpr double controlY = 1.0;
// Bisection steps: 40 halvings pin the parameter far below a pixel's worth.
constexpr int bisectionSteps = 40;

double bezierX(double u) { return u * u * u + 3 * controlX * u * u * (1 - u); }

double bezierY(double u) { return u * u * u + 3 * controlY * u * u * (1 - u); }

// 1 until `holdFull`, then eased out to 0 over `fadeLength` seconds. The
// eased ratio clamps into 0...1, so a fade length of 0 ends the effect
// right after `holdFull` (the ratio is infinite), and a negative or NaN one
// keeps it at full opacity (the ratio is negative or NaN, which eases to 0).
double fade(double t, double fadeLength) {
  if (t <= EffectCurves::holdFull) return 1;
  return 1 - EffectCurves::easeOut((t - EffectCurves::holdFull) / fadeLength);
}

}  // namespace

double EffectCurves::easeOut(double t) {
  if (std::isnan(t) || t <= 0) return 0;
  if (t >= 1) return 1;
  // x(u) rises monotonically on 0...1, so bisection finds the one u with x(u) = t.
  double low = 0;
  double high = 1;
  for (int step = 0; step < bisectionSteps; ++step) {
    const double mid = (low + high) / 2;
    if (bezierX(mid) < t) {
      low = mid;
    } else {
      high = mid;
    }
  }
  return bezierY((low + high) / 2);
}

EffectCurves::Sample EffectCurves::ripple(double t, bool reduceMotion) {
  const double scale = reduceMotion ? 1 : easeOut(t / rippleDuration) + 0.25;
  return {scale, fade(t, rippleDuration - holdFull)};
}

EffectCurves::Sample EffectCurves::trailDotAt(double t, bool reduceMotion) {
  const double scale = reduceMotion ? 1 : 1 - 0.7 * easeOut(t / trailDuration);
  return {scale, fade(t, trailDuration - holdFull)};
}

double EffectCurves::heldOpacity(double t, double duration) { return fade(t, duration - holdFull); }

double EffectCurves::softEdge(double radius) {
  // fmax ignores a NaN radius and gives the floor.
  return std::fmax(radius * 0.25, 16.0);
}

}  // namespace corvel
