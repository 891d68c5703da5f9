/// The winding number of a ring about a point.
#pragma once

#include <zelvan/transforms/points.h>

namespace zelvan {

/// What the edge from `a` to `b` adds to the winding number about (x, y).
///
/// An edge counts when it crosses the horizontal through the point, its lower end included and
/// its upper end excluded, at the point or on the side of greater x. The products come last:
/// most edges end at a comparison. Every comparison with a NaN fails.
inline int winding_of_edge(const DblPt& a, const DblPt& b, double x, double y) {
  const auto cross = [&] { return (b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y); };
  if (y >= a.y) return b.y > y && cross() >= 0.0 ? 1 : 0;
  return y >= b.y && cross() <= 0.0 ? -1 : 0;
}

/// The sum over the edges between the `n` points, the edge from the last to the first left out.
inline int winding_of_chain(const DblPt* points, unsigned int n, double x, double y) {
  int winding = 0;
  for (unsigned int i = 1; i < n; ++i) {
    winding += winding_of_edge(points[i - 1], points[i], x, y);
  }
  return winding;
}

/// The number of edges that the vector forms look at in one step; shorter chains gain nothing.
inline constexpr unsigned int winding_block = 16;

namespace avx2 {

/// The same for processors with AVX2. Only called where `has_avx2` is true.
int winding_of_chain(const DblPt* points, unsigned int n, double x, double y);

}  // namespace avx2

}  // namespace zelvan
