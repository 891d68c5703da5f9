#include <zelvan/geometry/detail/outline_scan.h>

#include <cmath>

namespace zelvan::plain {

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

}  // namespace zelvan::plain
