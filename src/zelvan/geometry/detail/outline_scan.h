/// Searches along outlines and their flags: how they lie relative to an upright box, and how long
/// runs of like vertices are. Most vertices of a drawing need no further work.
#pragma once

#include <zelvan/detail/edge_flags.h>
#include <zelvan/detail/pair.h>
#include <zelvan/detail/vector_forms.h>
#include <zelvan/transforms/records.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace zelvan {

/// An upright box, which may be flat or empty.
struct ClipBox {
  double left, bottom, right, top;
};

constexpr ClipBox nowhere = {
    std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

/// Returns the box around points. Along an axis on which a coordinate is NaN, it is unbounded.
ClipBox box_around(const real_pt_t* points, int n);

/// Returns true if the rectangle is axis-aligned, in either sense, and its edge from corner k runs
/// along x.
bool is_upright_from(const real_rect_t& rect, int k);
inline bool is_upright(const real_rect_t& rect) {
  return is_upright_from(rect, 0) || is_upright_from(rect, 1);
}

/// The sides of a box, counter-clockwise.
enum box_side { left_side, bottom_side, right_side, top_side };

/// A set of sides: bit k stands for side k.
using Sides = unsigned;

/// The sides that a point lies beyond, and the sides that it is not strictly within: beyond or on.
/// With a NaN, a point is beyond neither side of that axis and within neither.
struct SidesOut {
  Sides beyond;
  Sides not_within;
};

inline SidesOut sides_out(const ClipBox& box, const real_pt_t& p) {
  const Pair v = {p.x, p.y};
  const Pair low = {box.left, box.bottom};
  const Pair high = {box.right, box.top};
  const auto sides = [](auto of_low, auto of_high) {
    using Mask = decltype(of_low);
    const Mask bits = (of_low & Mask{1 << left_side, 1 << bottom_side}) |
                      (of_high & Mask{1 << right_side, 1 << top_side});
    return static_cast<Sides>(bits[0] | bits[1]);
  };
  return {sides(low > v, v > high), sides(~(v > low), ~(high > v))};
}

/// Returns true if both points lie strictly beyond the same side of the box.
inline bool are_beyond_a_side(const ClipBox& box, const real_pt_t& p, const real_pt_t& q) {
  const Pair v = {p.x, p.y};
  const Pair w = {q.x, q.y};
  const Pair low = {box.left, box.bottom};
  const Pair high = {box.right, box.top};
  const auto beyond = ((low > v) & (low > w)) | ((v > high) & (w > high));
  return (beyond[0] | beyond[1]) != 0;
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

enum class OutlineKind : int { inside, mixed, not_finite };  ///< inside: all vertices, strictly

/// A set of edges between points: bit i stands for the one from point i to the next.
using EdgeSet = std::uint32_t;
constexpr int most_in_edge_set = 32;  ///< points

/// One polygon of a set, from its first vertex to its closing one.
struct Outline {
  const real_pt_t* points;
  const int* edge_flags;
  int count;
};

/// Appends the polygon unchanged.
inline void append(const Outline& outline, drw_pset_t* target) {
  std::copy_n(outline.points, outline.count, target->points + target->n_points);
  std::copy_n(outline.edge_flags, outline.count, target->edge_flags + target->n_points);
  target->n_points += outline.count;
}

// The kernels, in all forms; the functions below describe them.

Outline find_near_outline(Plain, const drw_pset_t& set, int from, const ClipBox& box);
Outline find_outline_within(Plain, const drw_pset_t& set, int from, const ClipBox& box,
                            OutlineKind* kind);
int count_inside(Plain, const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(Plain, const real_pt_t* points, int n, const ClipBox& box, int side);
bool has_repeats(Plain, const real_pt_t* points, int n);
EdgeSet near_edges(Plain, const real_pt_t* points, int n, const ClipBox& outer,
                   const ClipBox& inner);

Outline find_near_outline(Avx2, const drw_pset_t& set, int from, const ClipBox& box);
Outline find_outline_within(Avx2, const drw_pset_t& set, int from, const ClipBox& box,
                            OutlineKind* kind);
int count_inside(Avx2, const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(Avx2, const real_pt_t* points, int n, const ClipBox& box, int side);
bool has_repeats(Avx2, const real_pt_t* points, int n);
EdgeSet near_edges(Avx2, const real_pt_t* points, int n, const ClipBox& outer,
                   const ClipBox& inner);

/// Returns the next outline of at least two vertices, from vertex `from` on, that does not lie
/// strictly beyond one side of the box. Without a further one, the count is 0.
inline Outline find_near_outline(const drw_pset_t& set, int from, const ClipBox& box) {
  return with_best_form([&](auto form) { return find_near_outline(form, set, from, box); });
}

/// Returns the next outline of at least two vertices, from vertex `from` on, that has, for each
/// side of the box, some vertex strictly within it. Stores its kind in `*kind`. Without a further
/// one, the count is 0.
inline Outline find_outline_within(const drw_pset_t& set, int from, const ClipBox& box,
                                   OutlineKind* kind) {
  return with_best_form([&](auto form) { return find_outline_within(form, set, from, box, kind); });
}

/// Returns how many points, from the first on, lie strictly inside the box.
inline int count_inside(const real_pt_t* points, int n, const ClipBox& box) {
  if (n <= 0 || !is_inside(box, points[0])) return 0;
  return with_best_form([&](auto form) { return count_inside(form, points, n, box); });
}

/// Returns how many points, from the first on, lie strictly beyond one side of the box.
inline int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side) {
  if (n <= 0 || !is_beyond(box, side, points[0])) return 0;
  return with_best_form([&](auto form) { return count_beyond(form, points, n, box, side); });
}

/// Returns the edges between up to 32 points that may cross what lies between two boxes. Excluded
/// are edges with both ends strictly beyond the same side of the outer box, or both strictly inside
/// the inner one.
inline EdgeSet near_edges(const real_pt_t* points, int n, const ClipBox& outer,
                          const ClipBox& inner) {
  return with_best_form([&](auto form) { return near_edges(form, points, n, outer, inner); });
}

/// Returns true if some point is the same as the one before it.
inline bool has_repeats(const real_pt_t* points, int n) {
  return with_best_form([&](auto form) { return has_repeats(form, points, n); });
}

}  // namespace zelvan
