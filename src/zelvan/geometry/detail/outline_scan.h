/// Looks along outlines and their flags: how they lie to an upright box, and how far they run on
/// in the same way. Most vertices of a drawing need no more than this.
#pragma once

#include <zelvan/transforms/detail/instruction_set.h>
#include <zelvan/transforms/records.h>

namespace zelvan {

/// Requires: left < right, bottom < top.
struct ClipBox {
  double left, bottom, right, top;
};

/// How all vertices of an outline lie together.
struct OutlineExtent {
  bool is_inside;  ///< strictly
  bool is_apart;   ///< on or beyond one and the same side of the box
  bool is_finite;
};

/// The sides of a box are numbered counter-clockwise from the bottom.
enum box_side { bottom_side, right_side, top_side, left_side };

inline bool is_inside(const ClipBox& box, const real_pt_t& p) {
  return p.x > box.left && p.x < box.right && p.y > box.bottom && p.y < box.top;
}

inline bool is_beyond(const ClipBox& box, int side, const real_pt_t& p) {
  switch (side) {
    case bottom_side:
      return p.y < box.bottom;
    case right_side:
      return p.x > box.right;
    case top_side:
      return p.y > box.top;
    default:
      return p.x < box.left;
  }
}

inline bool is_closing(int edge_flag) {
  return edge_flag == drw_edge_close_invisible || edge_flag == drw_edge_close_visible;
}

namespace plain {

OutlineExtent extent_of(const real_pt_t* points, int n, const ClipBox& box);
int count_inside(const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side);
int count_open(const int* edge_flags, int n);

}  // namespace plain

namespace avx2 {

/// The same for processors with AVX2. Only called where `has_avx2` is true.
OutlineExtent extent_of(const real_pt_t* points, int n, const ClipBox& box);
int count_inside(const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side);
int count_open(const int* edge_flags, int n);

}  // namespace avx2

inline OutlineExtent extent_of(const real_pt_t* points, int n, const ClipBox& box) {
  return has_avx2 ? avx2::extent_of(points, n, box) : plain::extent_of(points, n, box);
}

/// How many points from the first on lie strictly inside the box.
inline int count_inside(const real_pt_t* points, int n, const ClipBox& box) {
  return has_avx2 ? avx2::count_inside(points, n, box) : plain::count_inside(points, n, box);
}

/// How many points from the first on lie strictly beyond a side of the box.
inline int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side) {
  return has_avx2 ? avx2::count_beyond(points, n, box, side)
                  : plain::count_beyond(points, n, box, side);
}

/// How many flags from the first on close no polygon.
inline int count_open(const int* edge_flags, int n) {
  return has_avx2 ? avx2::count_open(edge_flags, n) : plain::count_open(edge_flags, n);
}

}  // namespace zelvan
