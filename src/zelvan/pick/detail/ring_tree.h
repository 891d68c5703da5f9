/// A tree of boxes over the edges of a ring, to find the few edges that decide about a point.
///
/// A leaf is a run of consecutive edges, a node a run of consecutive leaves. A run wholly above,
/// below or to the left of a point contributes nothing. In a run wholly to the right, every edge
/// that passes the point's height counts, so the first and last point of the run determine the sum.
/// Only runs whose box contains the point are entered, and there `winding_of_chain` decides.
#pragma once

#include <zelvan/transforms/points.h>

#include <cstddef>
#include <limits>

namespace zelvan {

inline constexpr double infinity = std::numeric_limits<double>::infinity();

/// A box around edges, with a margin at its left and right: see `box_of_chain`.
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

/// Returns the smallest box around both.
Box unite(const Box& a, const Box& b);

/// Returns true if each coordinate is 0, or from 2^-300 to 2^300 in magnitude. Then no product of
/// the winding comparison overflows, or underflows so that it matters.
bool are_ordinary(const DblPt* points, std::size_t n);

/// Returns the box of the edges between `n` ordinary points, with a margin at its left and right.
/// For points beyond the margin the result of the winding comparison is certain, so it is skipped.
Box box_of_chain(const DblPt* points, std::size_t n);

inline constexpr std::size_t boxes_in_group = 8;
inline constexpr std::size_t edges_in_leaf = 16;

/// Sibling boxes, stored by coordinate; those after the last edge are empty.
///
/// Groups are stored like a binary heap, but with 8 children: box j of group i surrounds group 8i +
/// 1 + j, or a leaf.
struct BoxGroup {
  double left[boxes_in_group];
  double bottom[boxes_in_group];
  double right[boxes_in_group];
  double top[boxes_in_group];
};

/// Returns the number of groups in the tree of a ring of `n` edges.
std::size_t groups_in_tree(std::size_t n);

/// Fills the tree of a ring of `n` ordinary vertices and returns the box of the ring. Requires:
/// `points[n]` repeats the first vertex.
Box fill_tree(BoxGroup* tree, const DblPt* points, std::size_t n);

/// Returns true if most edges are in leaves whose boxes are wider and higher than half of the
/// ring's box. A tree would rarely skip such leaves.
bool is_scribble(const BoxGroup* tree, std::size_t n, const Box& ring);

/// Returns the same winding number as `winding_of_ring(points, n, x, y)`.
int winding_in_tree(const BoxGroup* tree, const DblPt* points, std::size_t n, double x, double y);

}  // namespace zelvan
