#include "digests/group.h"

namespace {

/// Coordinates by kind: whole numbers, on which points meet boundaries all the time; tenths, where
/// sums and the cross product are rounded; or hard numbers.
DblPt some_point(Random& random, int kind) {
  const auto place = [&] {
    return kind == 2 ? random.hard_double() : random.below(7) * (kind == 0 ? 0.5 : 0.1);
  };
  return {place(), place()};
}

std::vector<DblPt> some_points(Random& random, int kind, int n) {
  std::vector<DblPt> points(n);
  for (DblPt& p : points) p = some_point(random, kind);
  return points;
}

const Group polylines("pick.polylines", [](Log& log) {
  Random random(1);
  for (int i = 0; i < 20'000; ++i) {
    std::vector<DblPt> chain = some_points(random, i % 3, 2 + i % 7);
    CPickPolyline polyline(static_cast<unsigned>(chain.size()), chain.data());
    DblPt p = some_point(random, i % 3);
    const double tolerance = (random.below(7) - 2) * 0.1;
    log("CPickPolyline::isInside", inputs(chain, p, tolerance), polyline.isInside(p, tolerance));
  }
});

// Rings of so many vertices that a vector form takes them in blocks, and of few.
const Group polygons("pick.polygons", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 20'000; ++i) {
    std::vector<DblPt> ring = some_points(random, i % 3, 3 + random.below(i % 4 == 0 ? 68 : 4));
    CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
    DblPt p = some_point(random, i % 3);
    log("CPolygon::isInside", inputs(ring, p), polygon.isInside(p, 0.0));
  }
});

}  // namespace
