/// The winding number of a ring about a point.
#pragma once

#include <zelvan/detail/vector_forms.h>
#include <zelvan/transforms/points.h>

namespace zelvan {

/// Returns what an edge that passes the height of the point (x, y) adds to the winding number: 1,
/// -1 or 0. Requires: `y` is at least the height of just one end, which is `a` if the edge goes up.
///
/// The edge counts if it meets the horizontal line through the point at the point or to its right
/// (greater x). That is a cross product of 0 or more for an edge that goes up, of 0 or less for one
/// that goes down. A NaN coordinate makes the product a NaN, and the comparison false.
inline int winding_of_crossing(const DblPt& a, const DblPt& b, bool goes_up, double x, double y) {
  const double cross = (b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y);
  const int direction = goes_up ? 1 : -1;
  return cross * direction >= 0.0 ? direction : 0;
}

/// Returns what the edge from `a` to `b` adds to the winding number about (x, y).
///
/// An edge covers the heights from its lower end, included, to its upper end, excluded. So where
/// two edges meet, exactly one covers the height of their common end if the ring passes it. A NaN
/// counts as above.
inline int winding_of_edge(const DblPt& a, const DblPt& b, double x, double y) {
  const bool goes_up = y >= a.y;
  return goes_up != (y >= b.y) ? winding_of_crossing(a, b, goes_up, x, y) : 0;
}

/// Returns the sum over the edges between the `n` points. For most edges the comparison of heights
/// decides.
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

/// Returns the sum over all edges of a ring, including the closing one.
inline int winding_of_ring(Plain form, const DblPt* points, unsigned int n, double x, double y) {
  return winding_of_edge(points[n - 1], points[0], x, y) + winding_of_chain(form, points, n, x, y);
}
int winding_of_ring(Avx2, const DblPt* points, unsigned int n, double x, double y);

/// Runs `winding_of_chain` in the best form for this processor. Requires: `n` is not 0.
inline int winding_of_chain(const DblPt* points, unsigned int n, double x, double y) {
  return with_best_form([=](auto form) { return winding_of_chain(form, points, n, x, y); });
}

/// Runs `winding_of_ring` in the best form for this processor. Requires: `n` is not 0.
inline int winding_of_ring(const DblPt* points, unsigned int n, double x, double y) {
  return with_best_form([=](auto form) { return winding_of_ring(form, points, n, x, y); });
}

}  // namespace zelvan
