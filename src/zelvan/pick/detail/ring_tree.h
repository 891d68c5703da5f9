/// A tree of boxes over the edges of a ring: it finds the few that decide about a point.
///
/// A leaf is a run of consecutive edges, a node a run of consecutive leaves. Of a run that lies all
/// above, below or to the left of a point no edge counts. Of one all to the right each edge
/// counts that passes the point's height, so its first and last point tell the sum. Only the runs
/// whose box holds the point are entered, and there `winding_of_chain` decides.
#pragma once

#include <zelvan/transforms/points.h>

#include <cstddef>
#include <limits>

namespace zelvan {

inline constexpr double infinity = std::numeric_limits<double>::infinity();

/// A box about edges, with a margin at its left and right: see `box_of_chain`.
struct Box {
  double left = infinity;
  double bottom = infinity;
  double right = -infinity;
  double top = -infinity;

  /// True if a ring in the box may wind about the point. False for a NaN, and for an empty box.
  bool may_hold(double x, double y) const {
    return (y >= bottom) & (y < top) & (x >= left) & (x <= right);
  }
};

inline constexpr Box whole_plane = {-infinity, -infinity, infinity, infinity};

/// The smallest box about both.
Box unite(const Box& a, const Box& b);

/// True if no product of the comparison with edges between these points overflows, or underflows
/// so that it matters: if each coordinate is 0, or from 2^-300 to 2^300 in magnitude.
bool are_ordinary(const DblPt* points, std::size_t n);

/// The box of the edges between `n` ordinary points. Beyond its left and right side the comparison
/// is certain, and it is not needed.
Box box_of_chain(const DblPt* points, std::size_t n);

inline constexpr std::size_t boxes_in_group = 8;
inline constexpr std::size_t edges_in_leaf = 16;

/// Sibling boxes, coordinate by coordinate. Where there are no more edges, a box is empty.
///
/// Groups are laid out as in a heap: box j of group i is about group 8i + 1 + j, or about a leaf.
struct BoxGroup {
  double left[boxes_in_group];
  double bottom[boxes_in_group];
  double right[boxes_in_group];
  double top[boxes_in_group];
};

/// The number of groups in the tree of a ring of `n` edges.
std::size_t groups_in_tree(std::size_t n);

/// Fills the tree of a ring of `n` ordinary vertices, the first of which stands again at points[n].
/// Returns the box of the ring.
Box fill_tree(BoxGroup* tree, const DblPt* points, std::size_t n);

/// True if most leaves span more than half of the ring, so that a tree would leave out few edges.
bool is_scribble(const BoxGroup* tree, std::size_t n, const Box& ring);

/// Returns what `winding_of_ring(points, n, x, y)` does.
int winding_in_tree(const BoxGroup* tree, const DblPt* points, std::size_t n, double x, double y);

}  // namespace zelvan
