#include "CorvelCore/Overlay/InteractState.h"

namespace corvel {

void InteractState::gripClicked(double now) {
  if (isActive_) {
    leave();
    return;
  }
  isActive_ = true;
  timeoutAt_ = now + idleTimeout_;
}

void InteractState::boardClicked(double now) {
  if (isActive_ && !isPinned_) timeoutAt_ = now + idleTimeout_;
}

void InteractState::menuToggled(double /*now*/) {
  isPinned_ = !isPinned_;
  isActive_ = isPinned_;
  timeoutAt_.reset();
}

void InteractState::escapePressed() {
  if (!isPinned_) leave();
}

void InteractState::leave() {
  isActive_ = false;
  isPinned_ = false;
  timeoutAt_.reset();
}

bool InteractState::tick(double now) {
  if (!timeoutAt_ || *timeoutAt_ > now) return false;
  leave();
  return true;
}

}  // namespace corvel
