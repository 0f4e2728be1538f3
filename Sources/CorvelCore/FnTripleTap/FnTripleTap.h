// FnTripleTap: recognises three taps of the fn key in quick succession, the
// gesture that toggles the overlay. A tap counts only when fn goes down on
// its own; any other key, modifier or media key in between starts over. The
// window runs from the first tap of a run, not between taps. Times are
// seconds on one monotonic clock.
#pragma once

#include <cstdint>

#include "CorvelCore/Keyboard/KeyEvent.h"

namespace corvel {

class FnTripleTap {
 public:
  // The system's function-key modifier flag.
  static constexpr std::uint64_t functionFlag = 0x800000;
  // Every other modifier flag: shift, control, option and command, and the
  // device-dependent side bits of each.
  static constexpr std::uint64_t otherModifierFlags = 0x1E207F;
  // Taps that make the gesture.
  static constexpr int tapsNeeded = 3;

  // `window`: seconds from the first tap within which the third must come.
  explicit FnTripleTap(double window) : window_(window) {}

  [[nodiscard]] double window() const { return window_; }
  // Taps counted in the current run (0 when none is running).
  [[nodiscard]] int presses() const { return presses_; }
  // When the current run's first tap came.
  [[nodiscard]] double firstPress() const { return firstPress_; }

  // Feeds one keyboard event; answers true exactly when it is the third tap
  // of a run inside the window, which also ends the run.
  bool feed(const KeyEvent& event, double now);

 private:
  double window_;
  int presses_ = 0;
  double firstPress_ = 0;
};

}  // namespace corvel
