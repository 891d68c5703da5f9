// Makes pick regions of the polygons of a set and tests points, one by one and many at a time. For
// coordinates on the grid, the winding number decides whether a point off the edges is inside, and
// the boxes of the segments decide whether a line is hit. For coordinates of any bits, the two
// ways of testing must only agree with each other.

#include <zelvan/pick/polygon_of.h>
#include <zelvan/pick/region_functions.h>
#include <zelvan/transforms/mtx2d.h>

#include "bytes.h"
#include "clip_judge.h"

namespace {

using fuzz::require;

double coordinate(fuzz::Bytes& bytes, bool any_bits) {
  return any_bits ? bytes.any<double>() : static_cast<std::int8_t>(bytes.byte()) / 16;
}

bool is_on_an_edge(const PolygonSet& ring, real_pt_t p) {
  bool is_on = false;
  for_each_edge(ring, [&](real_pt_t a, real_pt_t b, int) { is_on = is_on || area(a, b, p) == 0; });
  return is_on;
}

bool hits_a_box(const PolygonSet& ring, real_pt_t p, double tolerance) {
  bool hits = false;
  for_each_edge(ring, [&](real_pt_t a, real_pt_t b, int) {
    hits =
        hits || (p.x >= std::min(a.x, b.x) - tolerance && p.x <= std::max(a.x, b.x) + tolerance &&
                 p.y >= std::min(a.y, b.y) - tolerance && p.y <= std::max(a.y, b.y) + tolerance);
  });
  return hits;
}

/// Requires that a test of many points has the same results as single tests.
void ask(const CPickRegion* region, const std::vector<real_pt_t>& points, double tolerance) {
  if (region == nullptr) return;
  const int n = static_cast<int>(points.size());
  const std::unique_ptr<unsigned char[]> hits(new unsigned char[points.size()]);
  int sum = 0;
  const int total = zelvan_hit_region_with_points(region, n, points.data(), tolerance, hits.get());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const int is_hit = zelvan_hit_region(region, points[i].x, points[i].y, tolerance);
    require(is_hit == hits[i]);
    sum += is_hit;
  }
  require(total == sum);
}

void check_ring(drw_pset_t set, int k, const PolygonSet& ring, const std::vector<real_pt_t>& points,
                double tolerance, bool on_grid) {
  CPickRegion* const region = zelvan_new_region_of_polygon(&set, k);
  require((region != nullptr) == (ring.points.size() >= 3));
  ask(region, points, 0.0);
  Mtx2D turned;
  turned.Rotate(30.0, 0);
  CPickRegion* const mapped = region != nullptr ? zelvan_map_region(region, &turned) : nullptr;
  ask(mapped, points, 0.0);
  zelvan_delete_region(mapped);
  zelvan_delete_region(region);

  CPolygon polygon = zelvan::polygon_of(set, k);
  CPickPolyline outline = zelvan::polyline_of(set, k);
  ask(&outline, points, tolerance);
  for (const real_pt_t p : points) {
    const bool is_inside = polygon.isInside(p.x, p.y, 0.0);
    const bool is_hit = outline.isInside(p.x, p.y, tolerance);
    if (!on_grid) continue;
    require(is_hit == hits_a_box(ring, p, tolerance));
    if (ring.points.size() < 3) require(!is_inside);
    if (ring.points.size() < 3 || is_on_an_edge(ring, p)) continue;
    require(is_inside == (winding(ring, p) != 0));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const bool any_bits = bytes.byte() % 4 == 0;
  const double tolerance = bytes.number();
  std::vector<real_pt_t> asked(static_cast<std::size_t>(bytes.below(20)));
  for (real_pt_t& p : asked) p = {coordinate(bytes, any_bits), coordinate(bytes, any_bits)};
  PolygonSet all;
  std::vector<PolygonSet> rings(1);
  while (bytes.left() > 0 && all.points.size() < 200) {
    const int flag = bytes.byte();
    all.flags.push_back(flag % 8 == 0 ? 2 + flag / 128 : flag % 2);
    all.points.push_back({coordinate(bytes, any_bits), coordinate(bytes, any_bits)});
    rings.back().points.push_back(all.points.back());
    rings.back().flags.push_back(all.flags.back());
    if (all.flags.back() >= 2) rings.emplace_back();
  }
  drw_pset_t set = {static_cast<int>(all.points.size()), all.points.data(), all.flags.data()};
  const int count = static_cast<int>(rings.size()) - 1;  // all but the last ring are closed
  require(zelvan::count_polygons(set) == count && zelvan_count_polygons(&set) == count);
  require(zelvan_new_region_of_polygon(&set, count) == nullptr);
  for (int k = 0; k < count; ++k) {
    check_ring(set, k, rings[static_cast<std::size_t>(k)], asked, tolerance, !any_bits);
  }
  return 0;
}
