#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/polygon.h>
#include <zelvan/pick/polygon_of.h>
#include <zelvan/pick/region_functions.h>

#include <new>

namespace {

// Returns the region; if it is empty, for lack of points or memory, deletes it and returns null.
template <class Region>
Region* unless_empty(Region* region) {
  if (region == nullptr || region->start() != nullptr) return region;
  delete region;
  return nullptr;
}

template <class Region>
Region* new_region(int n, int fewest, const real_pt_t* points) {
  if (n < fewest) return nullptr;
  auto* const region = unless_empty(new (std::nothrow) Region(static_cast<unsigned int>(n)));
  if (region == nullptr) return nullptr;
  for (int i = 0; i < n; ++i) region->set(i, points[i].x, points[i].y);
  return region;
}

}  // namespace

CPickRegion* zelvan_new_rect_region(double x1, double y1, double x2, double y2) {
  return new (std::nothrow) CPickRect(x1, y1, x2, y2);
}

CPickRegion* zelvan_new_polyline_region(int n, const real_pt_t* points) {
  return new_region<CPickPolyline>(n, 2, points);
}

CPickRegion* zelvan_new_polygon_region(int n, const real_pt_t* points) {
  return new_region<CPolygon>(n, 3, points);
}

CPickRegion* zelvan_new_region_of_polygon(const drw_pset_t* set, int k) {
  return unless_empty(new (std::nothrow) CPolygon(zelvan::polygon_of(*set, k)));
}

int zelvan_count_polygons(const drw_pset_t* set) { return zelvan::count_polygons(*set); }

CPickRegion* zelvan_map_region(const CPickRegion* region, const Mtx2D* matrix) {
  return region->xfm(*matrix);
}

void zelvan_delete_region(CPickRegion* region) { delete region; }

int zelvan_hit_region(const CPickRegion* region, double x, double y, double tolerance) {
  return region->isInside(x, y, tolerance) ? 1 : 0;
}

int zelvan_hit_region_with_points(const CPickRegion* region, int n, const real_pt_t* points,
                                  double tolerance, unsigned char* hits) {
  int count = 0;
  for (int i = 0; i < n; ++i) {
    const bool is_hit = region->isInside(points[i].x, points[i].y, tolerance);
    if (hits != nullptr) hits[i] = is_hit ? 1 : 0;
    count += is_hit;
  }
  return count;
}
