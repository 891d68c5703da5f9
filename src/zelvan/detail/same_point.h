/// Equality of points.
#pragma once

namespace zelvan {

/// True if both coordinates compare equal: 0.0 equals -0.0, and NaN equals nothing.
template <class Point>
constexpr bool is_same_point(const Point& a, const Point& b) {
  return a.x == b.x && a.y == b.y;
}

}  // namespace zelvan
