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

/// The sum over the edges between the `n` points, and with `is_closed` the edge from the last to
/// the first. An edge covers the heights from its lower end, included, to its upper end, excluded:
/// so one passes the point's height just where the answer changes, and most edges end at that
/// comparison. A NaN counts as above. Requires: `n` is not 0.
inline int winding_of_chain(const DblPt* points, unsigned int n, bool is_closed, double x,
                            double y) {
  int winding = 0;
  const DblPt* from = &points[is_closed ? n - 1 : 0];
  bool was_reached = y >= from->y;
  for (const DblPt* to = points; to != points + n; from = to++) {
    const bool is_reached = y >= to->y;
    if (is_reached != was_reached) winding += winding_of_crossing(*from, *to, was_reached, x, y);
    was_reached = is_reached;
  }
  return winding;
}

/// The sum over all edges of a ring, the closing one included. Requires: `n` is not 0.
inline int winding_of_ring(Plain /*form*/, const DblPt* points, unsigned int n, double x,
                           double y) {
  return winding_of_chain(points, n, true, x, y);
}
int winding_of_ring(Avx2, const DblPt* points, unsigned int n, double x, double y);

/// Calls the best form for this processor. Requires: `n` is not 0.
inline int winding_of_ring(const DblPt* points, unsigned int n, double x, double y) {
  return with_best_form([=](auto form) { return winding_of_ring(form, points, n, x, y); });
}

}  // namespace zelvan
