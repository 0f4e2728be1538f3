// ClosedRange: the bounds lower...upper, both included, of a numeric
// parameter.
#pragma once

namespace corvel {

template <class T>
struct ClosedRange {
  T lower;
  T upper;

  [[nodiscard]] constexpr bool contains(T value) const { return value >= lower && value <= upper; }
  friend constexpr bool operator==(const ClosedRange&, const ClosedRange&) = default;
};

}  // namespace corvel
