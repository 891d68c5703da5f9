/// A ring with what is known about it before a point is asked.
#pragma once

#include <zelvan/pick/detail/ring_tree.h>
#include <zelvan/pick/detail/winding.h>

namespace zelvan {

/// Arrays are those of the index. Without points it winds about nothing.
struct PreparedRing {
  Box box;                         ///< empty, or the whole plane, where nothing is known
  const DblPt* points = nullptr;   ///< the first stands again after the last
  const BoxGroup* tree = nullptr;  ///< null if the ring is asked edge by edge
  unsigned int n = 0;

  int winding_number(double x, double y) const {
    if (!box.may_hold(x, y)) return 0;
    return tree != nullptr ? winding_in_tree(tree, points, n, x, y)
                           : winding_of_ring(points, n, x, y);
  }
};

}  // namespace zelvan
