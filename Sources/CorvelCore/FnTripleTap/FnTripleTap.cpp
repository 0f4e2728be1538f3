#include "CorvelCore/FnTripleTap/FnTripleTap.h"

namespace corvel {

bool FnTripleTap::feed(const KeyEvent& event, double now) {
  const bool isFn = event.key == KeyID::function;
  switch (event.kind) {
    case KeyEvent::Kind::keyDown:
      // A key-down of fn itself (some keyboards send one) neither taps nor interrupts.
      if (!isFn) presses_ = 0;
      return false;
    case KeyEvent::Kind::keyUp:
      return false;
    case KeyEvent::Kind::media:
      if (event.isPress) presses_ = 0;
      return false;
    case KeyEvent::Kind::flagsChanged:
      break;
  }
  if (!isFn) {
    presses_ = 0;
    return false;
  }
  // fn coming up ends a tap but decides nothing; the next press does.
  if ((event.flags & functionFlag) == 0) return false;
  // fn together with another modifier is a shortcut, not a tap.
  if ((event.flags & otherModifierFlags) != 0) {
    presses_ = 0;
    return false;
  }
  if (presses_ > 0 && now - firstPress_ <= window_) {
    ++presses_;
    if (presses_ < tapsNeeded) return false;
    presses_ = 0;
    return true;
  }
  presses_ = 1;
  firstPress_ = now;
  return false;
}

}  // namespace corvel
