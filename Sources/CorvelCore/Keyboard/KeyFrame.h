// KeyFrame: a rectangle on a keyboard's plan, in key units (1 is the width of
// a letter key), measured from the keyboard's top left corner with y growing
// downwards.
#pragma once

#include <algorithm>

namespace corvel {

struct KeyFrame {
  double x = 0;
  double y = 0;
  double width = 1;
  double height = 1;

  [[nodiscard]] constexpr double maxX() const { return x + width; }
  [[nodiscard]] constexpr double maxY() const { return y + height; }
  [[nodiscard]] constexpr double midX() const { return x + width / 2; }
  [[nodiscard]] constexpr double midY() const { return y + height / 2; }

  // The smallest rectangle holding both.
  [[nodiscard]] constexpr KeyFrame united(const KeyFrame& other) const {
    const double left = std::min(x, other.x);
    const double top = std::min(y, other.y);
    return {left, top, std::max(maxX(), other.maxX()) - left, std::max(maxY(), other.maxY()) - top};
  }

  friend constexpr bool operator==(const KeyFrame&, const KeyFrame&) = default;
};

}  // namespace corvel
