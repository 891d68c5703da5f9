#include <zelvan/pick/pick_index_functions.h>
#include <zelvan/pick/polygon_of.h>

#include "support/polygon_set.h"
#include "support/random.h"

#include <climits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Random;
using Polygons = support::SetArrays<real_pt_t>;

// Vertex i of a ring of n.
const struct {
  const char* name;
  DblPt (*vertex)(int i, int n, Random& random);
} shapes[] = {
    {"circle",
     [](int i, int n, Random&) { return DblPt(std::cos(7.0 * i / n), std::sin(7.0 * i / n)); }},
    {"comb", [](int i, int n, Random&) { return DblPt(1.0 * i / n, i % 2); }},
    {"tangle", [](int, int, Random& r) { return DblPt(r.unit(), r.unit()); }},
    {"flat", [](int, int, Random& r) { return DblPt(r.unit(), 0x1p-60 * r.below(3)); }},
    {"grid", [](int, int, Random& r) { return DblPt(r.below(9), r.below(9)); }},
    {"hard", [](int, int, Random& r) { return DblPt(r.hard_double(), r.hard_double()); }},
};

void add(Polygons* polygons, int shape, int n, double scale, DblPt corner, Random& random) {
  for (int i = 0; i < n; ++i) {
    const DblPt p = shapes[shape].vertex(i, n, random);
    polygons->points.push_back({corner.x + scale * p.x, corner.y + scale * p.y});
    polygons->flags.push_back(i == n - 1 ? drw_edge_close_visible : drw_edge_visible);
  }
}

// Returns a place where answers change: at the height of a vertex, one bit beside it, far away.
DblPt hard_place(const std::vector<real_pt_t>& points, Random& random) {
  const double x = points[random.below(static_cast<int>(points.size()))].x;
  const double y = points[random.below(static_cast<int>(points.size()))].y;
  const double ends[] = {x, y, -INFINITY, INFINITY, 0.0, NAN};
  const double end = ends[random.below(6)];
  const DblPt places[] = {{x, y},
                          {std::nextafter(x, end), y},
                          {end, std::nextafter(y, x)},
                          {x + (y - x) * random.unit(), y + (x - y) * random.unit()}};
  return places[random.below(4)];
}

// The model asks each polygon. The functions zelvan_... call the operations of the class.
void expect_answers_of_polygons(Polygons polygons, Random& random) {
  auto& [points, flags] = polygons;
  const drw_pset_t set = {static_cast<int>(points.size()), points.data(), flags.data()};
  const CPickIndex index(set);
  EXPECT_LE(index.countBytes(), 64 * points.size() + 512);
  EXPECT_GT(index.countBytes(), 16 * points.size()) << "it has a copy of the points";
  std::vector<CPolygon> model;
  const int n = zelvan::count_polygons(set);
  EXPECT_EQ(index.countPolygons(), n);
  for (int k = 0; k < n; ++k) model.push_back(zelvan::polygon_of(set, k));
  for (int i = 0; i < 200; ++i) {
    const DblPt p = hard_place(points, random);
    std::vector<int> expected;
    int sum = 0;
    for (int k = 0; k < n; ++k) {
      if (model[k].isInside(p.x, p.y, 0.0)) expected.push_back(k);
      if (k >= n / 2) sum += index.windingNumber(k, p.x, p.y);
    }
    std::vector<int> numbers(n);
    numbers.resize(zelvan_find_polygons(&index, p.x, p.y, numbers.data(), n));
    ASSERT_EQ(numbers, expected) << "findPolygons at " << testing::PrintToString(p);
    ASSERT_EQ(zelvan_winding_number(&index, n / 2, INT_MAX, p.x, p.y), sum)
        << "the sum from polygon " << n / 2 << " on at " << testing::PrintToString(p);
    ASSERT_EQ(zelvan_hit_pick_index(&index, p.x, p.y), !expected.empty())
        << "at " << testing::PrintToString(p);
    ASSERT_EQ(index.windingNumber(n, p.x, p.y), 0) << "there is no polygon " << n;
  }
}

TEST(PickIndex, AnswersAsCPolygonDoesOfEachPolygon) {
  Random random(1);
  for (int shape = 0; shape < 6; ++shape) {
    for (const double scale : {1.0, 1e200, 0x1p-300, 1e-160, 1e-310}) {
      for (const int n : {1, 3, 127, 128, 129, 255, 1025, 3000}) {
        SCOPED_TRACE(testing::Message() << shapes[shape].name << " of " << n << " by " << scale);
        Polygons polygons(0);
        add(&polygons, shape, n, scale, {0, 0}, random);
        expect_answers_of_polygons(polygons, random);
        for (int k = 0; k < 20; ++k) {
          const DblPt corner(scale * random.below(9), scale * random.below(9));
          add(&polygons, random.below(6), 1 + random.below(6), scale, corner, random);
        }
        expect_answers_of_polygons(polygons, random);
      }
    }
  }
}

TEST(PickIndex, LeavesOutNoEdgeThatRoundingPutsOnThePoint) {
  std::vector<DblPt> ring = {{-0x1p60, -0x1p60}, {1, 1}};
  for (int i = 100; i > -100; --i) ring.emplace_back(-0x1p60, i * 0x1p53);
  const CPickIndex index(static_cast<unsigned>(ring.size()), ring.data());
  EXPECT_TRUE(index.isInside(1 + 0x1p-52, 1 - 0x1p-53)) << "2^60 * 2^60 - 2^60 * 2^60 is 0";
  EXPECT_FALSE(index.isInside(0x1p20, 1 - 0x1p-53)) << "2^60 * 2^60 - (2^60 + 2^20) * 2^60 is not";
}

TEST(PickIndex, IsMovedWithItsPolygons) {
  const DblPt replaced[] = {{0, 0}, {8, 0}, {0, 8}};
  const DblPt moved[] = {{20, 20}, {21, 20}, {20, 21}};
  CPickIndex index(3, replaced);
  CPickIndex other(3, moved);
  index = std::move(other);
  std::vector<unsigned char> hits(3);
  EXPECT_EQ(index.countInside(3, moved, hits.data()), 1);
  EXPECT_EQ(hits, (std::vector<unsigned char>{0, 1, 0})) << "the lower right corner alone";
  EXPECT_FALSE(index.isInside(DblPt(1, 1))) << "replaced";
  EXPECT_FALSE(other.isReady() || other.isInside(20.25, 20.25) || other.isInside(1, 1));
}

}  // namespace
