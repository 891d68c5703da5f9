#include "digests/group.h"

namespace {

// Rings of so many vertices that a vector form takes them in blocks, and of few. On whole numbers
// points meet boundaries all the time; in tenths the cross product is rounded.
const Group polygons("pick.polygons", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 20'000; ++i) {
    const auto place = [&] {
      return i % 3 == 2 ? random.hard_double() : random.below(7) * (i % 3 == 0 ? 0.5 : 0.1);
    };
    std::vector<DblPt> ring(3 + random.below(i % 4 == 0 ? 68 : 4));
    for (DblPt& vertex : ring) vertex = {place(), place()};
    CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
    DblPt p{place(), place()};
    log("CPolygon::isInside", inputs(ring, p), polygon.isInside(p, 0.0));
  }
});

}  // namespace
