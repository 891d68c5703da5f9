#include <zelvan/geometry/detail/outline_scan.h>

#include <algorithm>
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
  ClipBox box = {infinity, infinity, -infinity, -infinity};
  // Of zeros with different signs, the first is the least, the last the largest.
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

}  // namespace zelvan

namespace zelvan::plain {

int find_closing(const int* edge_flags, int from, int end) {
  if (from >= end) return end;
  return static_cast<int>(std::find_if(edge_flags + from, edge_flags + end, is_closing) -
                          edge_flags);
}

FoundOutline find_outline(const drw_pset_t& set, int from, const ClipBox& box) {
  for (int first = from, last; first < set.n_points; first = last + 1) {
    last = first;
    bool inside = true, finite = true;
    Sides sides = 0b1111;
    for (;; ++last) {
      if (last == set.n_points) return {};
      const real_pt_t& p = set.points[last];
      inside = inside && is_inside(box, p);
      finite = finite && std::isfinite(p.x) && std::isfinite(p.y);
      sides &= plain::sides_out(box, p).not_within;
      if (is_closing(set.edge_flags[last])) break;
    }
    if (sides != 0 || last == first) continue;
    return {first, last - first + 1,
            inside   ? OutlineKind::inside
            : finite ? OutlineKind::mixed
                     : OutlineKind::not_finite};
  }
  return {};
}

int count_inside(const real_pt_t* points, int n, const ClipBox& box) {
  int i = 0;
  while (i < n && is_inside(box, points[i])) ++i;
  return i;
}

int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side) {
  int i = 0;
  while (i < n && is_beyond(box, side, points[i])) ++i;
  return i;
}

bool has_repeats(const real_pt_t* points, int n) {
  const auto is_same = [](const real_pt_t& a, const real_pt_t& b) {
    return a.x == b.x && a.y == b.y;
  };
  return std::adjacent_find(points, points + n, is_same) != points + n;
}

EdgeSet near_edges(const real_pt_t* points, int n, const ClipBox& outer, const ClipBox& inner) {
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
    near |= EdgeSet{is_near} << 2 * i;
    is_inside_a = is_inside_b;
  }
  return near;
}

}  // namespace zelvan::plain
