/// When two points are one.
#pragma once

namespace zelvan {

/// True if both coordinates compare equal: zeros of opposite sign do, and NaN does not.
template <class Point>
constexpr bool is_same_point(const Point& a, const Point& b) {
  return a.x == b.x && a.y == b.y;
}

}  // namespace zelvan
