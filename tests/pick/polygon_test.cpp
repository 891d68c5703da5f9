#include <zelvan/pick/polygon.h>

#include "support/random.h"
#include "support/vector_forms.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct GridPoint {
  int x, y;
};

// The winding number about (x, y) moved a little to smaller x and far less to greater y, in
// whole numbers and by counting crossings of the vertical ray above the point: another way
// than the library's, and exact.
int winding_by_rule(const std::vector<GridPoint>& ring, double x, double y) {
  const long px = static_cast<long>(x * 20000) - 100;
  const long py = static_cast<long>(y * 20000) + 1;
  int winding = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const long ax = ring[i].x * 20000L, ay = ring[i].y * 20000L;
    const GridPoint& next = ring[(i + 1) % ring.size()];
    const long bx = next.x * 20000L, by = next.y * 20000L;
    if ((ax < px) == (bx < px)) continue;
    const long cross = (bx - ax) * (py - ay) - (px - ax) * (by - ay);
    if (bx < ax && cross > 0) ++winding;  // the edge passes above the point, leftwards
    if (bx > ax && cross < 0) --winding;
  }
  return winding;
}

// Every ring of three and four vertices on a small grid, asked at every grid point, on all its
// boundaries and between: the winding rule, its boundary rule, and the tolerance's silence.
TEST(CPolygon, FollowsItsBoundaryRuleOnEverySmallRing) {
  constexpr int side = 3;
  for (int n = 3; n <= 4; ++n) {
    const int rings = n == 3 ? 729 : 6561;
    for (int code = 0; code < rings; ++code) {
      std::vector<GridPoint> ring;
      std::vector<DblPt> vertices;
      for (int i = 0, rest = code; i < n; ++i, rest /= side * side) {
        ring.push_back({rest % side, rest / side % side});
        vertices.emplace_back(ring.back().x, ring.back().y);
      }
      CPolygon polygon(static_cast<unsigned>(n), vertices.data());
      for (double x = -0.5; x <= 2.5; x += 0.5) {
        for (double y = -0.5; y <= 2.5; y += 0.5) {
          const bool expected = winding_by_rule(ring, x, y) != 0;
          DblPt p(x, y);
          ASSERT_EQ(polygon.isInside(p, -1e9), expected)
              << "ring " << code << " of " << n << " at " << x << ' ' << y;
          ASSERT_EQ(polygon.isInside(x, y, 1e9), expected);
        }
      }
    }
  }
}

TEST(CPolygon, WindsByTheNonZeroRule) {
  const struct {
    const char* name;
    std::vector<DblPt> ring;
    double x, y;
    bool inside;
  } rows[] = {
      {"bow-tie, right lobe", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, 1.5, 1.0, true},
      {"bow-tie, left lobe", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, 0.5, 1.0, true},
      {"bow-tie, between", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, 1.0, 0.2, false},
      {"square walked twice",
       {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}},
       0.5,
       0.5,
       true},
      {"centre of a pentagram", {{0, 3}, {2, -3}, {-3, 1}, {3, 1}, {-2, -3}}, 0, 0, true},
      {"first vertex repeated", {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}, 0.5, 0.5, true},
      {"flat", {{0, 1}, {5, 1}, {2, 1}}, 2, 1, false},
      {"NaN height", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, 0.5, std::nan(""), false},
      {"NaN place", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, std::nan(""), 0.5, false},
  };
  for (const auto& row : rows) {
    std::vector<DblPt> ring = row.ring;
    CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
    EXPECT_EQ(polygon.isInside(row.x, row.y, 0.0), row.inside) << row.name;
  }
}

// The vector forms answer as the plain one does, at every length, on small whole numbers that
// put points onto edges and vertices, and on anything else.
TEST(CPolygon, AnswersTheSameInEveryForm) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    support::Random random(seed);
    const auto coordinate = [&] { return seed % 4 == 0 ? random.hard_double() : random.below(6); };
    for (unsigned n = 3; n <= 70; ++n) {
      std::vector<DblPt> ring, questions;
      while (ring.size() < n) ring.emplace_back(coordinate(), coordinate());
      while (questions.size() < 20) questions.emplace_back(coordinate(), coordinate());
      CPolygon polygon(n, ring.data());
      std::vector<bool> answers;
      support::for_each_form([&](const char* form) {
        for (std::size_t i = 0; i < questions.size(); ++i) {
          const bool inside = polygon.isInside(questions[i], 0.0);
          if (answers.size() <= i) answers.push_back(inside);
          ASSERT_EQ(inside, answers[i]) << "seed " << seed << ", n " << n << ", " << form;
        }
      });
    }
  }
}

}  // namespace
