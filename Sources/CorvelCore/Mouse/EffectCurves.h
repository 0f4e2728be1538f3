// EffectCurves: the sizes, times and opacities of the mouse effects (click
// ripples, trail dots, the halo and the spotlight) and the pure functions that
// give an effect's scale and opacity at a moment of its life, so that every
// effect eases the same way. Times are seconds from the effect's start, sizes
// are points.
#pragma once

#include "CorvelCore/Theme/ThemeColor.h"

namespace corvel {

struct EffectCurves {
  // An effect's look at one moment: its size relative to its nominal size,
  // and its opacity from 0 to 1.
  struct Sample {
    double scale = 1;
    double opacity = 1;
  };

  static constexpr double rippleDuration = 0.55;        // life of a click ripple
  static constexpr double rippleSize = 56.0;            // ripple diameter at scale 1
  static constexpr double rippleStroke = 3.0;           // ripple ring width
  static constexpr double rippleStrokeIncreased = 4.5;  // ring width, increased contrast
  static constexpr double rightCornerRadius = 14.0;     // corner of the right button's ripple
  static constexpr double diamondCornerRadius = 8.0;    // corner of the diamond ripple
  static constexpr double trailSpacing = 0.016;         // seconds between two trail dots
  static constexpr double trailDuration = 0.6;          // life of one trail dot
  static constexpr double trailDot = 8.0;               // trail dot diameter
  static constexpr int trailLimit = 64;                 // most trail dots alive at once
  static constexpr double haloSize = 64.0;              // halo diameter
  static constexpr double haloFillAlpha = 0.28;         // halo fill opacity
  static constexpr double haloRing = 2.0;               // halo ring width
  static constexpr double haloRingAlpha = 0.6;          // halo ring opacity
  static constexpr double haloFade = 0.2;               // halo fade time
  static constexpr double spotlightFade = 0.25;         // spotlight fade-in and fade-out
  static constexpr double holdFull = 0.2;               // full opacity before any fade
  static constexpr double keylineWidth = 1.0;           // outline drawn around effects
  static constexpr double keylineAlpha = 0.85;          // outline opacity
  static constexpr double keylineAlphaIncreased = 1.0;  // outline opacity, increased contrast
  // The colour of the dimmed screen around the spotlight: a near-black blue.
  static constexpr ThemeColor spotlightDimColour{5.0 / 255, 8.0 / 255, 15.0 / 255, 1};

  // The ease-out timing curve (cubic Bézier with control points (0, 0) and
  // (0.58, 1)) at t, clamped into 0...1; NaN reads as 0.
  [[nodiscard]] static double easeOut(double t);
  // A click ripple at t: it grows from a quarter of its size to a quarter
  // over full size (scale stays 1 with reduced motion), holds full opacity for
  // `holdFull` and fades out by `rippleDuration`.
  [[nodiscard]] static Sample ripple(double t, bool reduceMotion);
  // A trail dot at t: it shrinks to 30 % of its size (scale stays 1 with
  // reduced motion), holds full opacity for `holdFull` and fades out by
  // `trailDuration`.
  [[nodiscard]] static Sample trailDotAt(double t, bool reduceMotion);
  // The opacity at t of an effect that lives `duration` seconds: 1 while
  // t <= `holdFull`, then 1 - easeOut((t - holdFull) / (duration - holdFull)),
  // which reaches 0 at `duration`. As the eased ratio clamps into 0...1, a
  // duration of exactly `holdFull` gives 0 after `holdFull`, and a shorter
  // (or NaN) duration, whose ratio is negative, keeps the opacity at 1.
  [[nodiscard]] static double heldOpacity(double t, double duration);
  // The width of the soft border of a spotlight circle of `radius`: a quarter
  // of the radius, at least 16 points.
  [[nodiscard]] static double softEdge(double radius);
};

}  // namespace corvel
