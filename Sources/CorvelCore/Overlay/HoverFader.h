// HoverFader: fades the board while the pointer rests over it, so that what
// lies under the board can be read, and brings it back when the pointer
// leaves. A plain value fed with pointer moves and the time (seconds on one
// monotonic clock); it keeps no timer: the caller asks `nextDeadline` and calls
// `tick` when that time comes.
#pragma once

#include <optional>

namespace corvel {

class HoverFader {
 public:
  // The opacity of a board that is not faded.
  static constexpr double normalAlpha = 1.0;

  // `restDelay`: seconds the pointer must rest over the board before it
  // fades; `fadedAlpha`: its opacity while faded. Starts outside, unfaded.
  HoverFader(double restDelay, double fadedAlpha)
      : restDelay_(restDelay), fadedAlpha_(fadedAlpha) {}

  [[nodiscard]] double restDelay() const { return restDelay_; }
  [[nodiscard]] double fadedAlpha() const { return fadedAlpha_; }
  [[nodiscard]] bool isPointerInside() const { return isPointerInside_; }
  // The opacity last reported.
  [[nodiscard]] double alpha() const { return alpha_; }
  // When the pending fade is due, if one is pending; `tick` then.
  [[nodiscard]] std::optional<double> nextDeadline() const { return fadeAt_; }

  // The pointer moved, inside or outside the board: answers the new opacity
  // to apply, or nothing when the opacity stays.
  std::optional<double> pointer(bool inside, double now);
  // Time passed: answers the new opacity when the rest delay has run out.
  std::optional<double> tick(double now);

 private:
  // Fades when the pending fade is due.
  std::optional<double> fadeIfDue(double now);

  double restDelay_;
  double fadedAlpha_;
  bool isPointerInside_ = false;
  double alpha_ = normalAlpha;
  std::optional<double> fadeAt_;
};

}  // namespace corvel
