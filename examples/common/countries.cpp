#include "common/countries.h"

#include <cmath>

namespace example {

namespace {

bool is_cut(real_pt_t a, real_pt_t b) {
  const bool is_on_antimeridian = a.x == b.x && std::abs(a.x) == 180.0;
  const bool is_on_pole = a.y == b.y && std::abs(a.y) == 90.0;
  return is_on_antimeridian || is_on_pole;
}

}  // namespace

void add_polygon(MapPolygons& polygons, std::span<const real_pt_t> ring) {
  polygons.points.insert(polygons.points.end(), ring.begin(), ring.end());
  polygons.edge_flags.resize(polygons.points.size(), drw_edge_visible);
  polygons.edge_flags.back() = drw_edge_close_visible;
}

void hide_cuts(MapPolygons& polygons, std::size_t start) {
  std::size_t first = start;
  for (std::size_t i = start; i < polygons.points.size(); ++i) {
    int& flag = polygons.edge_flags[i];
    const bool is_last = flag >= drw_edge_close_invisible;
    const std::size_t next = is_last ? first : i + 1;
    if (is_cut(polygons.points[i], polygons.points[next])) {
      flag = is_last ? drw_edge_close_invisible : drw_edge_invisible;
    }
    if (is_last) first = i + 1;
  }
}

}  // namespace example
