#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/polygon.h>

#include "digests/group.h"
#include "digests/heap.h"
#include "support/random.h"

#include <cstdlib>
#include <memory>

namespace {

using support::Random;

/// On whole numbers, on tenths, where sums and the cross product are rounded, or of any numbers.
double place(Random& random, int kind, int range) {
  return kind == 2 ? random.hard_double() : random.below(range) * (kind == 0 ? 1.0 : 0.1);
}

std::vector<DblPt> some_points(Random& random, int kind, int range, int n) {
  std::vector<DblPt> points(static_cast<std::size_t>(n));
  for (DblPt& p : points) p = {place(random, kind, range), place(random, kind, range)};
  return points;
}

// A polyline adds the tolerance to the box of a segment, a rectangle to the point.
const Group tolerances("pick.tolerances", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 60'000; ++i) {
    const double tolerance = (random.below(7) - 2) * (i % 3 == 0 ? 0.5 : 0.1);
    std::vector<DblPt> points = some_points(random, i % 3, 9, 3 + random.below(3));
    DblPt p = points.back();
    CPickPolyline polyline(static_cast<unsigned>(points.size()) - 1, points.data());
    CPickRect rect(points[0], points[1]);
    digest(polyline.isInside(p, tolerance), polyline.isInside(p.y, p.x, tolerance),
           rect.isInside(p, tolerance), rect.isInside(p.y, p.x, tolerance));
  }
});

// Rings of few vertices and of so many that a vector form takes them in blocks, with points on
// their boundaries all the time. A polygon has no tolerance.
const Group rings("pick.rings", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 6000; ++i) {
    const int kind = i % 3, range = i % 4 == 0 ? 9 : 3;
    std::vector<DblPt> ring =
        some_points(random, kind, range, 3 + random.below(range == 9 ? 68 : 3));
    CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
    for (int k = 0; k < 25; ++k) {
      DblPt p{place(random, kind, 2 * range) / 2, place(random, kind, 2 * range) / 2};
      digest(polygon.isInside(p, -1e9), polygon.isInside(p.y, p.x, 1e9));
    }
  }
});

template <class Region>
void take(Digest& digest, Region&& region) {
  digest(region.start() == nullptr, std::vector<DblPt>(region.start(), region.end()));
}

/// All ways to fill a region, with too few points too, and what a derived class may do.
template <class Region>
void take_regions(Digest& digest, std::vector<DblPt> points, Mtx2D& m) {
  const unsigned n = static_cast<unsigned>(points.size());
  std::vector<double> xs, ys;
  for (const DblPt& p : points) {
    xs.push_back(p.x);
    ys.push_back(p.y);
  }
  Region region(n, points.data()), by_axes(n, xs.data(), ys.data()), set(n), assigned(7u), none(0u);
  take(digest, set);
  if (set.start() != nullptr) set.set(static_cast<int>(n) - 1, 3.5, -0.0);
  Region& self = assigned = region;
  assigned = self;
  for (Region* filled : {&region, &by_axes, &set, &assigned, &none}) take(digest, *filled);
  take(digest, Region(assigned));
  take(digest, assigned = none);
  const auto take_mapped = [&](CPickRegion& from) {
    const std::unique_ptr<CPickRegion> mapped(from.xfm(m));
    digest(mapped == nullptr);
    if (mapped != nullptr) take(digest, dynamic_cast<Region&>(*mapped));
  };
  take_mapped(region);
  struct Derived : Region {
    using Region::n_points, Region::points;
  } derived;
  take(digest, derived);
  derived.n_points = n;
  derived.points = static_cast<DblPt*>(std::calloc(n, sizeof(DblPt)));
  digest(derived.isInside(0.0, 0.0, 9.0));
  if (n != 0) take_mapped(derived);
}

const Group regions("pick.regions", [](Digest& digest) {
  Random random(2);
  for (int i = 0; i < 3000; ++i) {
    Mtx2D m = random.matrix(i % 6 - 1);
    std::vector<DblPt> points = some_points(random, 2, 0, 2 + random.below(9));
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
    points.resize(static_cast<std::size_t>(random.below(6)));
    take_regions<CPickPolyline>(digest, points, m);
    take_regions<CPolygon>(digest, points, m);
  }
});

/// What is there when the heap refuses.
template <class Region>
void take_refusals(Digest& digest) {
  double xs[] = {0, 10, 10, 0}, ys[] = {0, 0, 10, 10};
  Region whole(4u, xs, ys), target(3u);
  Mtx2D m;
  const auto take_size = [&](Region&& region) {
    digest(heap::is_null(region.start()), region.end() - region.start());
  };
  const long blocks = heap::blocks;
  heap::refuse_each([&] { take_size(Region(4u)); });
  heap::refuse_each([&] { take_size(Region(4u, ys, xs)); });
  heap::refuse_each([&] { take_size(Region(4u, whole.start())); });
  heap::refuse_each([&] { take_size(Region(whole)); });
  heap::refuse_each([&] {
    Region assigned(3u);
    digest(heap::is_null(assigned.start()));
    assigned = whole;
    take_size(std::move(assigned));
  });
  heap::refuse_each([&] {
    const std::unique_ptr<CPickRegion> mapped(whole.xfm(m));
    digest(heap::is_null(mapped.get()));
  });
  digest(heap::blocks - blocks);
}

const Group refusals("pick.refusals", [](Digest& digest) {
  take_refusals<CPickPolyline>(digest);
  take_refusals<CPolygon>(digest);
  heap::refuse_each([&] {
    Mtx2D m;
    const std::unique_ptr<CPickRegion> mapped(CPickRect(0, 0, 1, 1).xfm(m));
    digest(heap::is_null(mapped.get()));
  });
});

}  // namespace
