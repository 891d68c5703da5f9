#include "gallery/contour.h"

namespace gallery {

std::vector<Points> contour(const std::function<double(real_pt_t)>& value, double level,
                            real_pt_t low, real_pt_t high, int cells) {
  const auto node = [&](int i, int j) -> real_pt_t {
    return {low.x + (high.x - low.x) * i / cells, low.y + (high.y - low.y) * j / cells};
  };
  std::vector<double> above;  // value minus level at each node, row by row
  for (int j = 0; j <= cells; ++j) {
    for (int i = 0; i <= cells; ++i) above.push_back(value(node(i, j)) - level);
  }
  const auto above_at = [&](int i, int j) {
    return above[static_cast<std::size_t>(j * (cells + 1) + i)];
  };

  std::vector<Points> segments;
  constexpr int ring[5][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
  for (int j = 0; j < cells; ++j) {
    for (int i = 0; i < cells; ++i) {
      Points crossings;
      for (int side = 0; side < 4; ++side) {
        const int i0 = i + ring[side][0], j0 = j + ring[side][1];
        const int i1 = i + ring[side + 1][0], j1 = j + ring[side + 1][1];
        const double a = above_at(i0, j0), b = above_at(i1, j1);
        if ((a < 0.0) == (b < 0.0)) continue;
        const double t = a / (a - b);
        const real_pt_t p = node(i0, j0), q = node(i1, j1);
        crossings.push_back({p.x + t * (q.x - p.x), p.y + t * (q.y - p.y)});
      }
      for (std::size_t k = 0; k + 1 < crossings.size(); k += 2) {
        segments.push_back({crossings[k], crossings[k + 1]});
      }
    }
  }
  return segments;
}

}  // namespace gallery
