#include "common/countries.h"

namespace example {

void add_polygon(MapPolygons& polygons, std::span<const real_pt_t> ring) {
  polygons.points.insert(polygons.points.end(), ring.begin(), ring.end());
  polygons.edge_flags.resize(polygons.points.size(), drw_edge_visible);
  polygons.edge_flags.back() = drw_edge_close_visible;
}

}  // namespace example
