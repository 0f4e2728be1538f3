// SpotlightRule: turns the spotlight shortcut's press and release into the
// spotlight's state, so that one shortcut serves two ways: a quick tap toggles
// the spotlight, and holding the shortcut shows it only while it is held. The
// menu item toggles the same state. Times are seconds on one monotonic clock.
#pragma once

#include <optional>

namespace corvel {

class SpotlightRule {
 public:
  // The longest press, in seconds, that still counts as a tap (inclusive).
  static constexpr double tapMax = 0.3;

  // A press of the shortcut that has not been released yet.
  struct Press {
    double began = 0;    // when the shortcut went down
    bool wasOn = false;  // the spotlight's state just before it went down
  };

  // Starts with the given state and no press pending.
  explicit SpotlightRule(bool isOn = false) : isOn_(isOn) {}

  // Whether the spotlight is on now.
  [[nodiscard]] bool isOn() const { return isOn_; }
  // The pending press, if the shortcut is down.
  [[nodiscard]] const std::optional<Press>& press() const { return press_; }

  // Flips the spotlight from the menu; a pending press is left as it is.
  void menuToggled() { isOn_ = !isOn_; }
  // The shortcut went down: shows the spotlight and answers true when it was
  // off. A second press while one is pending is ignored (false).
  bool pressed(double now);
  // The shortcut came up: a tap leaves the spotlight opposite to its state
  // before the press, a hold puts that state back. Answers true when the
  // state changed; false with no press pending.
  bool released(double now);
  // Drops a pending press without touching the state (the shortcut's key-up
  // will never come, for instance because the shortcut was reassigned).
  void forgetPress() { press_.reset(); }

 private:
  bool isOn_ = false;
  std::optional<Press> press_;
};

}  // namespace corvel
