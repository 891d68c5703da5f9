#include <zelvan/pick/polygon.h>

#include "support/printers.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <complex>

#include <gtest/gtest.h>

static bool winds_about(const std::vector<DblPt>& ring, double x, double y) {
  double angle = 0;  // the sum of those under which the edges are seen
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const DblPt a = ring[i], b = ring[(i + 1) % ring.size()];
    angle += std::arg(std::complex(b.x - x, b.y - y) / std::complex(a.x - x, a.y - y));
  }
  return std::lround(angle / (2 * M_PI)) != 0;
}

TEST(CPolygon, HoldsThePointsAboutWhichItWindsOnceTheyMoveALittle) {
  support::for_each_form([](const char* form) {
    support::Random random(1);
    for (int i = 0; i < 300; ++i) {
      std::vector<DblPt> ring(3 + random.below(i % 4 == 3 ? 68 : 5));
      for (DblPt& p : ring) p.set(random.below(5), random.below(5));
      CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
      for (int k = 0; k < 121; ++k) {
        DblPt p(k % 11 / 2.0 - 0.5, k / 11 / 2.0 - 0.5);
        ASSERT_EQ(polygon.isInside(p, 1e9), winds_about(ring, p.x - 0x1p-10, p.y + 0x1p-20))
            << form << ": " << testing::PrintToString(p) << " in " << testing::PrintToString(ring);
      }
    }
  });
}
