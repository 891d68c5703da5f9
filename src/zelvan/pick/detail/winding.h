/// The winding number of a ring about a point.
#pragma once

#include <zelvan/detail/vector_forms.h>
#include <zelvan/transforms/points.h>

namespace zelvan {

/// What the edge from `a` to `b` adds to the winding number about (x, y) if `y` is at least the
/// height of one of its ends and not of the other: of `a`, when the edge goes up.
///
/// It counts when it crosses the horizontal through the point at the point or on the side of
/// greater x: a cross product of 0 or more counts going up, one of 0 or less going down. A NaN
/// among the coordinates makes a NaN of the product, and the comparison with that fails.
inline int winding_of_crossing(const DblPt& a, const DblPt& b, bool goes_up, double x, double y) {
  const double cross = (b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y);
  const int direction = goes_up ? 1 : -1;
  return cross * direction >= 0.0 ? direction : 0;
}

/// What the edge from `a` to `b` adds to the winding number about (x, y).
///
/// It covers the heights from its lower end, included, to its upper end, excluded: so of a ring one
/// passes the point's height just where the answer changes. A NaN counts as above.
inline int winding_of_edge(const DblPt& a, const DblPt& b, double x, double y) {
  const bool goes_up = y >= a.y;
  return goes_up != (y >= b.y) ? winding_of_crossing(a, b, goes_up, x, y) : 0;
}

/// The sum over the edges between the `n` points. Most end at the comparison of heights.
inline int winding_of_chain(Plain /*form*/, const DblPt* points, unsigned int n, double x,
                            double y) {
  int winding = 0;
  bool was_reached = y >= points[0].y;
  for (unsigned int i = 1; i < n; ++i) {
    const bool is_reached = y >= points[i].y;
    if (is_reached != was_reached) {
      winding += winding_of_crossing(points[i - 1], points[i], was_reached, x, y);
    }
    was_reached = is_reached;
  }
  return winding;
}
int winding_of_chain(Avx2, const DblPt* points, unsigned int n, double x, double y);

/// The sum over all edges of a ring, the closing one included.
inline int winding_of_ring(Plain form, const DblPt* points, unsigned int n, double x, double y) {
  return winding_of_edge(points[n - 1], points[0], x, y) + winding_of_chain(form, points, n, x, y);
}
int winding_of_ring(Avx2, const DblPt* points, unsigned int n, double x, double y);

/// Calls the best form for this processor. Requires: `n` is not 0.
inline int winding_of_chain(const DblPt* points, unsigned int n, double x, double y) {
  return with_best_form([=](auto form) { return winding_of_chain(form, points, n, x, y); });
}

/// Calls the best form for this processor. Requires: `n` is not 0.
inline int winding_of_ring(const DblPt* points, unsigned int n, double x, double y) {
  return with_best_form([=](auto form) { return winding_of_ring(form, points, n, x, y); });
}

}  // namespace zelvan
