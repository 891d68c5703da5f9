#include <zelvan/detail/same_point.h>
#include <zelvan/geometry/detail/finite_point.h>
#include <zelvan/geometry/detail/outline_scan.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace zelvan {

bool is_upright_from(const real_rect_t& rect, int k) {
  const real_pt_t &a = rect.corners[k], &b = rect.corners[(k + 1) % 4];
  const real_pt_t &c = rect.corners[(k + 2) % 4], &d = rect.corners[(k + 3) % 4];
  return a.y == b.y && b.x == c.x && c.y == d.y && d.x == a.x;
}

ClipBox box_around(const real_pt_t* points, int n) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  ClipBox box = nowhere;
  // Of zeros with different signs, the first becomes the least, and the last the largest.
  const auto include = [](double v, double* least, double* largest) {
    *least = std::isnan(v) ? -infinity : std::min(*least, v);
    *largest = std::isnan(v) ? infinity : std::max(v, *largest);
  };
  for (int i = 0; i < n; ++i) {
    include(points[i].x, &box.left, &box.right);
    include(points[i].y, &box.bottom, &box.top);
  }
  return box;
}

namespace {

// Returns the next outline of at least two vertices for which `is_wanted` returns true.
template <class Test>
Outline find_outline(const drw_pset_t& set, int from, const Test& is_wanted) {
  const int* const flags = set.edge_flags;
  for (int first = from;;) {
    const int* const closing = std::find_if(flags + first, flags + set.n_points, is_closing);
    const int last = static_cast<int>(closing - flags);
    if (last >= set.n_points) return {};
    const Outline outline = {set.points + first, set.edge_flags + first, last - first + 1};
    if (outline.count > 1 && is_wanted(outline.points, outline.count)) return outline;
    first = last + 1;
  }
}

}  // namespace

Outline find_near_outline(Plain, const drw_pset_t& set, int from, const ClipBox& box) {
  return find_outline(set, from, [&](const real_pt_t* points, int count) {
    const Sides of_first = sides_out(box, points[0]).beyond;
    Sides beyond = of_first & sides_out(box, points[count / 2]).beyond;
    for (; beyond != 0; beyond &= beyond - 1) {
      const int side = std::countr_zero(beyond);
      if (count_beyond(Plain{}, points, count, box, side) == count) return false;
    }
    return true;
  });
}

Outline find_outline_within(Plain, const drw_pset_t& set, int from, const ClipBox& box,
                            OutlineKind* kind) {
  return find_outline(set, from, [&](const real_pt_t* points, int count) {
    Sides not_within = 0b1111;
    for (int i = 0; i < count; ++i) not_within &= sides_out(box, points[i]).not_within;
    if (not_within != 0) return false;
    const bool inside = count_inside(Plain{}, points, count, box) == count;
    const bool finite = std::all_of(points, points + count, is_finite);
    *kind = inside ? OutlineKind::inside : finite ? OutlineKind::mixed : OutlineKind::not_finite;
    return true;
  });
}

int count_inside(Plain, const real_pt_t* points, int n, const ClipBox& box) {
  int i = 0;
  while (i < n && is_inside(box, points[i])) ++i;
  return i;
}

int count_beyond(Plain, const real_pt_t* points, int n, const ClipBox& box, int side) {
  int i = 0;
  while (i < n && is_beyond(box, side, points[i])) ++i;
  return i;
}

bool has_repeats(Plain, const real_pt_t* points, int n) {
  return std::adjacent_find(points, points + n, is_same_point<real_pt_t>) != points + n;
}

EdgeSet near_edges(Plain, const real_pt_t* points, int n, const ClipBox& outer,
                   const ClipBox& inner) {
  EdgeSet near = 0;
  bool is_inside_a = is_inside(inner, points[0]);
  for (int i = 0; i + 1 < n; ++i) {
    const real_pt_t &a = points[i], &b = points[i + 1];
    const bool is_apart =
        !is_inside_a &&
        ((a.x < outer.left && b.x < outer.left) || (a.x > outer.right && b.x > outer.right) ||
         (a.y < outer.bottom && b.y < outer.bottom) || (a.y > outer.top && b.y > outer.top));
    const bool is_inside_b = !is_apart && is_inside(inner, b);
    const bool is_near = !is_apart && !(is_inside_a && is_inside_b);
    near |= EdgeSet{is_near} << i;
    is_inside_a = is_inside_b;
  }
  return near;
}

}  // namespace zelvan
