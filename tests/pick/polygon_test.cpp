#include <zelvan/pick/polygon.h>

#include "geometry/clip_model.h"
#include "support/vector_forms.h"

TEST(CPolygon, HoldsAPointIfItWindsAboutAPlaceJustLeftOfAndAboveIt) {
  support::for_each_form([](const char* form) {
    support::Random random(1);
    for (int i = 0; i < 300; ++i) {
      Set ring(3 + random.below(i % 4 == 3 ? 68 : 5));
      for (auto& vertex : ring) vertex = {{1.0 * random.below(5), 1.0 * random.below(5)}, 1};
      ring.back().flag = drw_edge_close_visible;
      std::vector<DblPt> vertices;
      for (const auto& [point, flag] : ring) vertices.emplace_back(point.x, point.y);
      const CPolygon polygon(static_cast<unsigned int>(ring.size()), vertices.data());
      for (double y = -0.5; y < 5; y += 0.5) {
        for (double x = -0.5; x < 5; x += 0.5) {
          const bool is_held = winding(ring, {x - 0x1p-10, y + 0x1p-20}) != 0;
          ASSERT_EQ(polygon.isInside(x, y, 1e9), is_held)
              << form << ": (" << x << ", " << y << ") in " << testing::PrintToString(ring);
        }
      }
    }
  });
}
