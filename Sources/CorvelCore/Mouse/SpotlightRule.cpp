#include "CorvelCore/Mouse/SpotlightRule.h"

namespace corvel {

bool SpotlightRule::pressed(double now) {
  if (press_) return false;
  press_ = Press{now, isOn_};
  isOn_ = true;
  return !press_->wasOn;
}

bool SpotlightRule::released(double now) {
  if (!press_) return false;
  const Press press = *press_;
  press_.reset();
  const bool before = isOn_;
  // A release that comes before its press (a clock that went back) is a tap;
  // a time that cannot be compared (NaN) is not, so the spotlight falls back
  // to where it was, which is the harmless outcome.
  const bool isTap = now - press.began <= tapMax;
  isOn_ = isTap ? !press.wasOn : press.wasOn;
  return isOn_ != before;
}

}  // namespace corvel
