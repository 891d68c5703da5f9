#include <zelvan/pick/pick_index.h>
#include <zelvan/pick/polygon_of.h>

#include "support/heap.h"
#include "support/printers.h"
#include "support/random.h"

#include <climits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Random;

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

struct Polygons {
  void add(int shape, int n, double scale, const DblPt& corner, Random& random) {
    for (int i = 0; i < n; ++i) {
      const DblPt p = shapes[shape].vertex(i, n, random);
      points.push_back({corner.x + scale * p.x, corner.y + scale * p.y});
      flags.push_back(i == n - 1 ? drw_edge_close_visible : drw_edge_visible);
    }
  }
  drw_pset_t set() { return {static_cast<int>(points.size()), points.data(), flags.data()}; }

  // At the heights of vertices, one bit beside them, and far away: where answers change.
  DblPt hard_place(Random& random) const {
    const double x = points[random.below(static_cast<int>(points.size()))].x;
    const double y = points[random.below(static_cast<int>(points.size()))].y;
    const double ends[] = {x, y, -INFINITY, INFINITY, 0.0, NAN};
    const double end = ends[random.below(6)];
    switch (random.below(4)) {
      case 0:
        return {x, y};
      case 1:
        return {std::nextafter(x, end), y};
      case 2:
        return {end, std::nextafter(y, x)};
      default:
        return {x + (y - x) * random.unit(), y + (x - y) * random.unit()};
    }
  }

  std::vector<real_pt_t> points;
  std::vector<int> flags;
};

// The model asks each polygon.
void expect_answers_of_polygons(Polygons polygons, Random& random) {
  const CPickIndex index(polygons.set());
  EXPECT_LE(index.countBytes(), 64 * polygons.points.size() + 512);
  EXPECT_GT(index.countBytes(), polygons.points.size());
  std::vector<CPolygon> model;
  const int n = zelvan::count_polygons(polygons.set());
  for (int k = 0; k < n; ++k) model.push_back(zelvan::polygon_of(polygons.set(), k));
  for (int i = 0; i < 200; ++i) {
    const DblPt p = polygons.hard_place(random);
    std::vector<int> expected;
    int sum = 0;
    for (int k = 0; k < n; ++k) {
      if (model[k].isInside(p.x, p.y, 0.0)) expected.push_back(k);
      if (k >= n / 2) sum += index.windingNumber(k, p.x, p.y);
    }
    std::vector<int> numbers(n);
    numbers.resize(index.findPolygons(p.x, p.y, numbers.data(), n));
    ASSERT_EQ(numbers, expected) << "findPolygons at " << testing::PrintToString(p);
    ASSERT_EQ(index.windingNumber(n / 2, n, p.x, p.y), sum)
        << "the sum at " << testing::PrintToString(p);
    ASSERT_EQ(index.isInside(p), !expected.empty()) << "at " << testing::PrintToString(p);
    ASSERT_EQ(index.windingNumber(n, p.x, p.y), 0) << "there is no polygon " << n;
  }
}

TEST(PickIndex, AnswersAsCPolygonDoesOfEachPolygon) {
  Random random(1);
  for (int shape = 0; shape < 6; ++shape) {
    for (const double scale : {1.0, 1e200, 0x1p-300, 1e-160, 1e-310}) {
      for (const int n : {2, 3, 127, 128, 129, 255, 1025, 3000}) {
        SCOPED_TRACE(testing::Message() << shapes[shape].name << " of " << n << " by " << scale);
        Polygons polygons;
        polygons.add(shape, n, scale, {0, 0}, random);
        expect_answers_of_polygons(polygons, random);
        for (int k = 0; k < 20; ++k) {
          const DblPt corner(scale * random.below(9), scale * random.below(9));
          polygons.add(random.below(6), 1 + random.below(6), scale, corner, random);
        }
        expect_answers_of_polygons(polygons, random);
      }
    }
  }
}

TEST(PickIndex, LeavesOutNoEdgeWhoseProductOverflows) {
  std::vector<DblPt> ring = {{3e200, -1e200}, {1e200, 1e200}};
  for (int i = 100; i >= -100; --i) ring.emplace_back(-1e200, i * 1e198);
  const CPickIndex index(static_cast<unsigned>(ring.size()), ring.data());
  EXPECT_FALSE(index.isInside(0.9e200, 0.5e200)) << "infinity - infinity: the edge does not count";
  EXPECT_TRUE(index.isInside(0.9e200, -1e200)) << "0 - -infinity: the edge counts";
}

TEST(PickIndex, LeavesOutNoEdgeThatRoundingPutsOnThePoint) {
  std::vector<DblPt> ring = {{-0x1p60, -0x1p60}, {1, 1}};
  for (int i = 100; i > -100; --i) ring.emplace_back(-0x1p60, i * 0x1p53);
  const CPickIndex index(static_cast<unsigned>(ring.size()), ring.data());
  EXPECT_TRUE(index.isInside(1 + 0x1p-52, 1 - 0x1p-53)) << "2^60 * 2^60 - 2^60 * 2^60 is 0";
  EXPECT_FALSE(index.isInside(0x1p20, 1 - 0x1p-53)) << "2^60 * 2^60 - (2^60 + 2^20) * 2^60 is not";
}

// A square, a hole in it, a polygon of two vertices, a square about a corner of the first.
struct Squares {
  real_pt_t points[15] = {{0, 0}, {8, 0}, {8, 8}, {0, 8},  {2, 2},   {2, 6},  {6, 6}, {6, 2},
                          {9, 9}, {7, 9}, {4, 4}, {12, 4}, {12, 12}, {4, 12}, {5, 5}};
  int edge_flags[15] = {1, 1, 1, 3, 1, 1, 1, 2, 1, 3, 1, 1, 1, 3, 1};
  drw_pset_t set = {15, points, edge_flags};
};

TEST(PickIndex, CountsAndListsPolygons) {
  const CPickIndex index(Squares().set);
  EXPECT_EQ(index.countPolygons(), 4) << "nothing closes the last vertex";
  std::vector<int> numbers(3, -1);
  EXPECT_EQ(index.findPolygons(5, 5, numbers.data(), 2), 3) << "all that there are";
  EXPECT_EQ(numbers, (std::vector{0, 1, -1})) << "the lowest, up to the capacity";
  const DblPt places[] = {{5, 5}, {20, 5}, {11, 11}};
  std::vector<unsigned char> hits(3, 9);
  EXPECT_EQ(index.countInside(3, places, nullptr), 2);
  index.countInside(3, places, hits.data());
  EXPECT_EQ(hits, (std::vector<unsigned char>{1, 0, 1}));
}

TEST(PickIndex, SumsWindingNumbersOverARun) {
  const CPickIndex index(Squares().set);
  EXPECT_EQ(index.windingNumber(0, 5, 5), 1) << "counterclockwise";
  EXPECT_EQ(index.windingNumber(1, 5, 5), -1) << "clockwise";
  EXPECT_EQ(index.windingNumber(0, 2, 5, 5), 0) << "in the hole";
  EXPECT_EQ(index.windingNumber(-5, INT_MAX, 7, 5), 2) << "other numbers add nothing";
  EXPECT_EQ(index.windingNumber(1, -1, 5, 5), 0) << "no polygons";
  EXPECT_EQ(index.windingNumber(INT_MIN, INT_MIN + 9, 5, 5), 0) << "all before the first";
}

TEST(PickIndex, IsEmptyIfTheHeapRefuses) {
  const Squares squares;
  bool holds = false;
  const auto build = [&] {
    const CPickIndex index(squares.set);
    holds = index.isInside(1, 1) || index.isReady();
    EXPECT_EQ(holds, index.findPolygons(1, 1, nullptr, 0) == 1 && index.countPolygons() == 4);
  };
  EXPECT_GT(heap::refuse_each(build, [&] { EXPECT_FALSE(holds); }), 0);
  EXPECT_TRUE(holds) << "once nothing is refused";
  EXPECT_EQ(heap::blocks_left(), 0);
}

TEST(PickIndex, IsMovedWithItsPolygons) {
  const DblPt triangle[] = {{20, 20}, {21, 20}, {20, 21}};
  CPickIndex index(Squares().set);
  CPickIndex other(3, triangle);
  index = std::move(other);
  EXPECT_TRUE(index.isInside(20.25, 20.25));
  EXPECT_FALSE(index.isInside(1, 1)) << "replaced";
  EXPECT_FALSE(other.isReady() || other.isInside(20.25, 20.25) || other.isInside(1, 1));
}

}  // namespace
