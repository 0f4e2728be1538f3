#include "CorvelCore/Overlay/HoverFader.h"

namespace corvel {

std::optional<double> HoverFader::pointer(bool inside, double now) {
  if (inside) {
    // The rest delay counts from the moment the pointer came in; moving
    // around inside does not restart it.
    if (!isPointerInside_) {
      isPointerInside_ = true;
      fadeAt_ = now + restDelay_;
    }
    return fadeIfDue(now);
  }
  if (!isPointerInside_) return std::nullopt;
  isPointerInside_ = false;
  fadeAt_.reset();
  if (alpha_ == normalAlpha) return std::nullopt;
  alpha_ = normalAlpha;
  return alpha_;
}

std::optional<double> HoverFader::tick(double now) { return fadeIfDue(now); }

std::optional<double> HoverFader::fadeIfDue(double now) {
  if (!fadeAt_ || *fadeAt_ > now) return std::nullopt;
  fadeAt_.reset();
  if (alpha_ == fadedAlpha_) return std::nullopt;
  alpha_ = fadedAlpha_;
  return alpha_;
}

}  // namespace corvel
