#include <zelvan/geometry/detail/outline_scan.h>

#include <cmath>

namespace zelvan::plain {

OutlineExtent extent_of(const real_pt_t* points, int n, const ClipBox& box) {
  int inside = 1, finite = 1, sides = 1 | 2 | 4 | 8;
  for (int i = 0; i < n; ++i) {
    const real_pt_t& p = points[i];
    inside &= is_inside(box, p);
    finite &= std::isfinite(p.x) && std::isfinite(p.y);
    sides &= (p.x <= box.left ? 1 : 0) | (p.y <= box.bottom ? 2 : 0) | (p.x >= box.right ? 4 : 0) |
             (p.y >= box.top ? 8 : 0);
  }
  return {inside != 0, sides != 0, finite != 0};
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

int count_open(const int* edge_flags, int n) {
  int i = 0;
  while (i < n && !is_closing(edge_flags[i])) ++i;
  return i;
}

}  // namespace zelvan::plain
