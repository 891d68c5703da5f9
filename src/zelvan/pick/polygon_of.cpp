#include <zelvan/detail/edge_flags.h>
#include <zelvan/pick/polygon_of.h>

namespace zelvan {

namespace {

struct Part {
  const real_pt_t* points;
  unsigned int count;  // 0 if the set has no such polygon
};

Part find_polygon(const drw_pset_t& set, int k) {
  int number = 0;
  int first = 0;
  for (int i = 0; i < set.n_points; ++i) {
    if (!is_closing(set.edge_flags[i])) continue;
    if (number == k) return {set.points + first, static_cast<unsigned int>(i + 1 - first)};
    ++number;
    first = i + 1;
  }
  return {nullptr, 0};
}

// Copies the points into the region, unless it is empty. Requires: a region that is not empty has
// room for them.
template <class Region>
void fill(Region& region, const Part& part) {
  DblPt* to = region.start();
  if (to == nullptr) return;
  for (unsigned int i = 0; i < part.count; ++i, ++to) to->set(part.points[i].x, part.points[i].y);
}

}  // namespace

int count_polygons(const drw_pset_t& set) {
  int count = 0;
  for (int i = 0; i < set.n_points; ++i) count += is_closing(set.edge_flags[i]);
  return count;
}

CPolygon polygon_of(const drw_pset_t& set, int k) {
  const Part part = find_polygon(set, k);
  CPolygon polygon(part.count < 3 ? 0 : part.count);
  fill(polygon, part);
  return polygon;
}

CPickPolyline polyline_of(const drw_pset_t& set, int k) {
  const Part part = find_polygon(set, k);
  CPickPolyline polyline(part.count == 0 ? 0 : part.count + 1);
  fill(polyline, part);
  if (polyline.start() != nullptr) *(polyline.end() - 1) = *polyline.start();
  return polyline;
}

}  // namespace zelvan
