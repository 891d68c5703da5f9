/// Looks along outlines and their flags: how they lie to an upright box, and how far they run on
/// in the same way. Most vertices of a drawing need no more than this.
#pragma once

#include <zelvan/detail/instruction_set.h>
#include <zelvan/transforms/records.h>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace zelvan {

/// Requires: left < right, bottom < top.
struct ClipBox {
  double left, bottom, right, top;
};

/// The sides of a box, counter-clockwise.
enum box_side { left_side, bottom_side, right_side, top_side };

/// A set of sides: bit k stands for side k.
using Sides = unsigned;

/// The sides that a point lies beyond, and those that it lies beyond or on.
struct SidesOut {
  Sides beyond;
  Sides not_within;
};

namespace plain {

inline SidesOut sides_out(const ClipBox& box, const real_pt_t& p) {
  const auto sides = [](bool left, bool bottom, bool right, bool top) -> Sides {
    return unsigned{left} | unsigned{bottom} << 1 | unsigned{right} << 2 | unsigned{top} << 3;
  };
  return {sides(box.left > p.x, box.bottom > p.y, p.x > box.right, p.y > box.top),
          sides(box.left >= p.x, box.bottom >= p.y, p.x >= box.right, p.y >= box.top)};
}

}  // namespace plain

inline SidesOut sides_out(const ClipBox& box, const real_pt_t& p) {
#if defined(__x86_64__)
  if (has_avx2) {  // two bits at a time; every processor of the kind could do so
    const __m128d v = _mm_loadu_pd(&p.x);
    const __m128d low = _mm_loadu_pd(&box.left), high = _mm_loadu_pd(&box.right);
    const auto lanes = [](__m128d mask) { return static_cast<Sides>(_mm_movemask_pd(mask)); };
    return {lanes(_mm_cmplt_pd(v, low)) | lanes(_mm_cmpgt_pd(v, high)) << 2,
            lanes(_mm_cmple_pd(v, low)) | lanes(_mm_cmpge_pd(v, high)) << 2};
  }
#endif
  return plain::sides_out(box, p);
}

inline bool is_inside(const ClipBox& box, const real_pt_t& p) {
  return p.x > box.left && p.x < box.right && p.y > box.bottom && p.y < box.top;
}

inline bool is_beyond(const ClipBox& box, int side, const real_pt_t& p) {
  return side == left_side     ? p.x < box.left
         : side == bottom_side ? p.y < box.bottom
         : side == right_side  ? p.x > box.right
                               : p.y > box.top;
}

inline bool is_closing(int edge_flag) {
  return edge_flag == drw_edge_close_invisible || edge_flag == drw_edge_close_visible;
}

enum class OutlineKind : int { inside, mixed, not_finite };  ///< inside: all of it, strictly

/// An outline within a set: a run of vertices of which the last one is the first that closes.
struct FoundOutline {
  int first;
  int count;  ///< 0 when there is none left
  OutlineKind kind;
};

namespace plain {

FoundOutline find_outline(const drw_pset_t& set, int from, const ClipBox& box);
int count_inside(const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side);

}  // namespace plain

namespace avx2 {

/// The same for processors with AVX2. Only called where `has_avx2` is true.
FoundOutline find_outline(const drw_pset_t& set, int from, const ClipBox& box);
int count_inside(const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side);

}  // namespace avx2

/// The next outline of two vertices or more, from vertex `from` on, that is not all on or beyond
/// one and the same side of the box.
inline FoundOutline find_outline(const drw_pset_t& set, int from, const ClipBox& box) {
  return has_avx2 ? avx2::find_outline(set, from, box) : plain::find_outline(set, from, box);
}

/// How many points from the first on lie strictly inside the box.
inline int count_inside(const real_pt_t* points, int n, const ClipBox& box) {
  if (n <= 0 || !is_inside(box, points[0])) return 0;
  return has_avx2 ? avx2::count_inside(points, n, box) : plain::count_inside(points, n, box);
}

/// How many points from the first on lie strictly beyond a side of the box.
inline int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side) {
  if (n <= 0 || !is_beyond(box, side, points[0])) return 0;
  return has_avx2 ? avx2::count_beyond(points, n, box, side)
                  : plain::count_beyond(points, n, box, side);
}

}  // namespace zelvan
