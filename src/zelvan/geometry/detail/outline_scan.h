/// Looks along outlines and their flags: how they lie to an upright box, and how far they run on
/// in the same way. Most vertices of a drawing need no more than this.
#pragma once

#include <zelvan/detail/edge_flags.h>
#include <zelvan/detail/pair.h>
#include <zelvan/detail/vector_forms.h>
#include <zelvan/transforms/records.h>

#include <cstdint>
#include <limits>

namespace zelvan {

/// An upright box. It may be flat, or hold no point at all.
struct ClipBox {
  double left, bottom, right, top;
};

constexpr ClipBox nowhere = {
    std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

/// The box around points. Along an axis on which one is not a number it reaches from end to end.
ClipBox box_around(const real_pt_t* points, int n);

/// True when a rectangle's edges are the sides of the box around it, in either sense, and the one
/// from corner k runs along x.
bool is_upright_from(const real_rect_t& rect, int k);
inline bool is_upright(const real_rect_t& rect) {
  return is_upright_from(rect, 0) || is_upright_from(rect, 1);
}

/// The sides of a box, counter-clockwise.
enum box_side { left_side, bottom_side, right_side, top_side };

/// A set of sides: bit k stands for side k.
using Sides = unsigned;

/// The sides that a point lies beyond, and those that it is not strictly within: beyond or on. With
/// a NaN it lies beyond neither of two opposite sides and is within neither.
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

/// True if both points lie strictly beyond the same side of the box.
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

enum class OutlineKind : int { inside, mixed, not_finite };  ///< inside: all of it, strictly

/// A set of edges between points: bit i stands for the one from point i to the next.
using EdgeSet = std::uint32_t;
constexpr int most_in_edge_set = 32;  ///< points

/// An outline within a set: a run of vertices of which the last one is the first that closes.
struct FoundOutline {
  int first;
  int count;  ///< 0 when there is none left
};

// The kernels, form by form; what each does stands below.

FoundOutline find_near_outline(Plain, const drw_pset_t& set, int from, const ClipBox& box);
FoundOutline find_outline_within(Plain, const drw_pset_t& set, int from, const ClipBox& box,
                                 OutlineKind* kind);
int count_inside(Plain, const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(Plain, const real_pt_t* points, int n, const ClipBox& box, int side);
bool has_repeats(Plain, const real_pt_t* points, int n);
EdgeSet near_edges(Plain, const real_pt_t* points, int n, const ClipBox& outer,
                   const ClipBox& inner);

FoundOutline find_near_outline(Avx2, const drw_pset_t& set, int from, const ClipBox& box);
FoundOutline find_outline_within(Avx2, const drw_pset_t& set, int from, const ClipBox& box,
                                 OutlineKind* kind);
int count_inside(Avx2, const real_pt_t* points, int n, const ClipBox& box);
int count_beyond(Avx2, const real_pt_t* points, int n, const ClipBox& box, int side);
bool has_repeats(Avx2, const real_pt_t* points, int n);
EdgeSet near_edges(Avx2, const real_pt_t* points, int n, const ClipBox& outer,
                   const ClipBox& inner);

/// The next outline of two vertices or more, from vertex `from` on, that does not lie strictly
/// beyond one side of the box.
inline FoundOutline find_near_outline(const drw_pset_t& set, int from, const ClipBox& box) {
  return with_best_form([&](auto form) { return find_near_outline(form, set, from, box); });
}

/// The next outline of two vertices or more, from vertex `from` on, that has vertices strictly
/// within each side of the box.
inline FoundOutline find_outline_within(const drw_pset_t& set, int from, const ClipBox& box,
                                        OutlineKind* kind) {
  return with_best_form([&](auto form) { return find_outline_within(form, set, from, box, kind); });
}

/// How many points from the first on lie strictly inside the box.
inline int count_inside(const real_pt_t* points, int n, const ClipBox& box) {
  if (n <= 0 || !is_inside(box, points[0])) return 0;
  return with_best_form([&](auto form) { return count_inside(form, points, n, box); });
}

/// How many points from the first on lie strictly beyond a side of the box.
inline int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side) {
  if (n <= 0 || !is_beyond(box, side, points[0])) return 0;
  return with_best_form([&](auto form) { return count_beyond(form, points, n, box, side); });
}

/// The edges between up to 32 points that may come near what lies between two boxes: their ends are
/// neither both strictly beyond the same side of the outer one nor both strictly inside the inner
/// one.
inline EdgeSet near_edges(const real_pt_t* points, int n, const ClipBox& outer,
                          const ClipBox& inner) {
  return with_best_form([&](auto form) { return near_edges(form, points, n, outer, inner); });
}

/// True when some point is the same as the one before it.
inline bool has_repeats(const real_pt_t* points, int n) {
  return with_best_form([&](auto form) { return has_repeats(form, points, n); });
}

}  // namespace zelvan
