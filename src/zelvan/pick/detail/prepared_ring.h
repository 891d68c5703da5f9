/// A ring of a `CPickIndex`, with what is computed for it in advance.
#pragma once

#include <zelvan/pick/detail/ring_tree.h>
#include <zelvan/pick/detail/winding.h>

namespace zelvan {

/// A ring prepared for queries. Its arrays belong to the index. Without points its winding number
/// is 0.
struct PreparedRing {
  Box box;                         ///< empty without points; `whole_plane` if not `are_ordinary`
  const DblPt* points = nullptr;   ///< ends with a copy of the first point
  const BoxGroup* tree = nullptr;  ///< null if queries test edge by edge
  unsigned int n = 0;

  int winding_number(double x, double y) const {
    if (!box.may_hold(x, y)) return 0;
    return tree != nullptr ? winding_in_tree(tree, points, n, x, y)
                           : winding_of_ring(points, n, x, y);
  }
};

}  // namespace zelvan
