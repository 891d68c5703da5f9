#include "digests/group.h"

#include <cstdlib>
#include <memory>

namespace {

/// On whole numbers, on tenths, where sums and the cross product are rounded, or of any numbers.
double place(Random& random, int kind, int range) {
  return kind == 2 ? random.hard_double() : random.below(range) * (kind == 0 ? 1.0 : 0.1);
}

std::vector<DblPt> some_points(Random& random, int kind, int range, int n) {
  std::vector<DblPt> points(n);
  for (DblPt& p : points) p = {place(random, kind, range), place(random, kind, range)};
  return points;
}

// Rings of few vertices and of so many that a vector form takes them in blocks, with points on
// their boundaries all the time; on a grid these answer as if moved a little to smaller x and far
// less to greater y. A polyline is hit in the box of any of its segments, in whose size the last
// digit of a tolerance tells.
const Group hits("pick.hits", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 6000; ++i) {
    const int kind = i % 3, range = i % 4 == 0 ? 9 : 3, n = 3 + random.below(i % 4 == 0 ? 68 : 3);
    std::vector<DblPt> ring = some_points(random, kind, range, n);
    std::vector<DblPt> chain = some_points(random, kind, 9, 2 + i % 4);
    CPolygon polygon(n, ring.data());
    CPickPolyline polyline(chain.size(), chain.data());
    for (int k = 0; k < 25; ++k) {
      DblPt p{place(random, kind, 2 * range) / 2, place(random, kind, 2 * range) / 2};
      DblPt moved{p.x - 0x1p-10, p.y + 0x1p-20};
      const double tolerance = (random.below(7) - 2) * (kind == 0 ? 0.5 : 0.1);
      const bool is_hit = polyline.isInside(p, tolerance), is_inside = polygon.isInside(p, -1e9);
      bool is_in_a_box = false;
      for (std::size_t b = 1; b < chain.size(); ++b) {
        CPickRect box(chain[b - 1], chain[b]);
        is_in_a_box |= box.isInside(p, tolerance);
        digest(box.isInside(p, tolerance), box.isInside(p.y, p.x, tolerance));
      }
      digest(is_hit, is_inside, polyline.isInside(p.y, p.x, tolerance),
             polygon.isInside(p.y, p.x, 1e9));
      if (kind != 0) continue;
      digest.expect(is_hit == is_in_a_box);
      digest.expect(polygon.isInside(moved, 1e9) == is_inside);
    }
  }
});

template <class Region>
void take(Digest& digest, Region&& region) {
  digest(region.start() == nullptr, std::vector<DblPt>(region.start(), region.end()));
}

template <class Region>
void take_mapped(Digest& digest, Region& region, Mtx2D& m) {
  const std::unique_ptr<CPickRegion> mapped(region.xfm(m));
  digest(mapped == nullptr);
  if (mapped != nullptr) take(digest, dynamic_cast<Region&>(*mapped));
}

/// All ways to fill a region, with too few points too, and what a derived class may do.
template <class Region>
void take_regions(Digest& digest, std::vector<DblPt> points, Mtx2D& m) {
  const int n = static_cast<int>(points.size());
  std::vector<double> xs(9), ys(9);
  for (int i = 0; i < n; ++i) xs[i] = points[i].x;
  for (int i = 0; i < n; ++i) ys[i] = points[i].y;
  Region region(n, points.data()), by_axes(n, xs.data(), ys.data()), set(n), none(0), assigned(7);
  take(digest, set);
  if (set.start() != nullptr) set.set(n - 1, 3.5, -0.0);
  Region& self = assigned = region;
  assigned = self;
  for (Region* filled : {&region, &by_axes, &set, &assigned, &none}) take(digest, *filled);
  take(digest, Region(assigned));
  take(digest, assigned = none);
  take_mapped(digest, region, m);
  struct Derived : Region {
    using Region::n_points, Region::points;
  } derived;
  take(digest, derived);
  derived.n_points = n;
  derived.points = static_cast<DblPt*>(std::calloc(n, sizeof(DblPt)));
  digest(derived.isInside(0.0, 0.0, 9.0));
  take_mapped<Region>(digest, derived, m);
}

const Group regions("pick.regions", [](Digest& digest) {
  Random random(2);
  for (int i = 0; i < 3000; ++i) {
    Mtx2D m = random.matrix(i % 6 - 1);
    std::vector<DblPt> points = some_points(random, 2, 0, 6);
    DblPt p = points[0], q = points[1], got[2];
    CPickRect rects[] = {{p, q}, {p.x, p.y, q.y, q.x}, {0, 0, 0, 0}, {0, 0, 0, 0}};
    rects[2].setPoints(q.x, p.y, p.x, q.y);
    rects[3] = rects[0];
    for (CPickRect rect : rects) {
      rect.getPoints(&got[0], &got[1]);
      digest(got);
      const std::unique_ptr<CPickRegion> mapped(rect.xfm(m));
      dynamic_cast<CPickRect&>(*mapped).getPoints(&got[0], &got[1]);
      digest(got);
    }
    points.resize(i % 7);
    take_regions<CPickPolyline>(digest, points, m);
    take_regions<CPolygon>(digest, points, m);
  }
});

}  // namespace
