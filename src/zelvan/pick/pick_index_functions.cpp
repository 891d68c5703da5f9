#include <zelvan/pick/pick_index_functions.h>
#include <zelvan/pick/polygon.h>
#include <zelvan/pick/region_functions.h>

#include <memory>
#include <new>

namespace {

// Returns the index; if its memory could not be allocated, deletes it and returns null.
CPickIndex* if_ready(CPickIndex* index) {
  if (index == nullptr || index->isReady()) return index;
  delete index;
  return nullptr;
}

}  // namespace

CPickIndex* zelvan_new_pick_index(const drw_pset_t* set) {
  return if_ready(new (std::nothrow) CPickIndex(*set));
}

CPickIndex* zelvan_new_pick_index_of_ring(int n, const real_pt_t* points) {
  const std::unique_ptr<CPickRegion> ring(zelvan_new_polygon_region(n, points));
  if (ring == nullptr) return nullptr;
  return if_ready(new (std::nothrow) CPickIndex(static_cast<const CPolygon&>(*ring)));
}

void zelvan_delete_pick_index(CPickIndex* index) { delete index; }

int zelvan_hit_pick_index(const CPickIndex* index, double x, double y) {
  return index->isInside(x, y) ? 1 : 0;
}

int zelvan_hit_pick_index_with_points(const CPickIndex* index, int n, const real_pt_t* points,
                                      unsigned char* hits) {
  int count = 0;
  for (int i = 0; i < n; ++i) {
    const bool is_hit = index->isInside(points[i].x, points[i].y);
    if (hits != nullptr) hits[i] = is_hit ? 1 : 0;
    count += is_hit;
  }
  return count;
}

int zelvan_find_polygons(const CPickIndex* index, double x, double y, int* numbers, int capacity) {
  return index->findPolygons(x, y, numbers, capacity);
}

int zelvan_winding_number(const CPickIndex* index, int first, int count, double x, double y) {
  return index->windingNumber(first, count, x, y);
}
