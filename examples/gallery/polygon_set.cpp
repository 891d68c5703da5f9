#include "gallery/polygon_set.h"

#include <cmath>

namespace gallery {

namespace {

bool is_closing(int flag) {
  return flag == drw_edge_close_invisible || flag == drw_edge_close_visible;
}

}  // namespace

void PolygonSet::add(const Points& ring) {
  points.insert(points.end(), ring.begin(), ring.end());
  edge_flags.resize(points.size(), drw_edge_visible);
  edge_flags.back() = drw_edge_close_visible;
}

std::vector<Points> PolygonSet::rings() const {
  std::vector<Points> rings(1);
  for (std::size_t i = 0; i < points.size(); ++i) {
    rings.back().push_back(points[i]);
    if (is_closing(edge_flags[i])) rings.emplace_back();
  }
  rings.pop_back();
  return rings;
}

double PolygonSet::area() const {
  double sum = 0.0;
  for (const Points& ring : rings()) {
    double twice = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const real_pt_t a = ring[i], b = ring[(i + 1) % ring.size()];
      twice += a.x * b.y - b.x * a.y;
    }
    sum += std::abs(twice) / 2.0;
  }
  return sum;
}

PolygonSet clipped(PolygonSet set, real_rect_t view, ClipSet clip) {
  PolygonSet kept;
  // Either operation needs at most 5 n + 4 for a polygon of n vertices.
  kept.points.resize(10 * set.points.size());
  kept.edge_flags.resize(kept.points.size());
  drw_pset_t source = {static_cast<int>(set.points.size()), set.points.data(),
                       set.edge_flags.data()};
  drw_pset_t target = {0, kept.points.data(), kept.edge_flags.data()};
  clip(&source, &target, &view);
  kept.points.resize(static_cast<std::size_t>(target.n_points));
  kept.edge_flags.resize(kept.points.size());
  return kept;
}

void stroke_edges(Panel& panel, const PolygonSet& set) {
  for (std::size_t i = 0, first = 0; i < set.points.size(); ++i) {
    const bool closes = is_closing(set.edge_flags[i]);
    const bool is_visible = set.edge_flags[i] % 2 == 1;
    const real_pt_t to = set.points[closes ? first : i + 1];
    panel.stroke({set.points[i], to}, is_visible ? Stroke{ink, 2.0} : Stroke{orange, 1.4, true});
    if (closes) first = i + 1;
  }
}

}  // namespace gallery
