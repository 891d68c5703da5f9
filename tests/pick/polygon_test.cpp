#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/polygon.h>

#include "support/random.h"
#include "support/refusing_heap.h"
#include "support/vector_forms.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

// True when the ring winds about (x, y) moved a little to smaller x and far less to greater y, by
// the edges across the vertical ray above the point: another way than the library's, and exact.
bool is_inside_by_rule(const std::vector<DblPt>& ring, double x, double y) {
  const double px = x - 0x1p-10, py = y + 0x1p-20;
  int winding = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const DblPt &a = ring[i], &b = ring[(i + 1) % ring.size()];
    const double cross = (b.x - a.x) * (py - a.y) - (px - a.x) * (b.y - a.y);
    if (b.x < px && px < a.x && cross > 0) ++winding;
    if (a.x < px && px < b.x && cross < 0) --winding;
  }
  return winding != 0;
}

// Every ring of up to four vertices on a small grid and many of 3 to 70, asked at every half of
// the grid, on all boundaries and between: the rule, the tolerance's silence, and the same answers
// in every vector form. On any other numbers the forms answer alike, and nothing holds a NaN.
TEST(CPolygon, FollowsItsBoundaryRuleInEveryForm) {
  for (int code = 0; code < 6561 + 68 * 45; ++code) {
    support::Random random(code);
    const bool is_small = code < 6561, is_hard = !is_small && code % 3 == 0;
    std::vector<DblPt> ring(is_small ? 4 : 3 + code % 68), questions(49);
    for (int place = code; DblPt & p : ring) {
      p.set(place % 3, place / 3 % 3);
      place = is_small ? place / 9 : random.below(9);
    }
    for (int i = 0; DblPt & p : questions) p.set(i % 7 * 0.5 - 0.5, i / 7 * 0.5 - 0.5), ++i;
    for (auto* points : {&ring, &questions}) {
      for (DblPt& p : *points) is_hard ? p.set(random.hard_double(), random.hard_double()) : void();
    }
    CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
    std::vector<bool> plain;
    support::for_each_form([&](const char* form) {
      for (std::size_t i = 0; i < questions.size(); ++i) {
        DblPt p = questions[i];
        const bool inside = polygon.isInside(p, -1e9);
        if (plain.size() <= i) plain.push_back(inside);
        const bool expected = is_hard ? plain[i] : is_inside_by_rule(ring, p.x, p.y);
        ASSERT_EQ(inside, expected && !std::isnan(p.x + p.y)) << form << ", ring " << code;
        ASSERT_EQ(polygon.isInside(p.x, p.y, 1e9), inside);
      }
    });
  }
}

// What holds for the arrays of polylines holds for those of polygons.
template <class Region>
struct OwnedArray : testing::Test {};
using Regions = testing::Types<CPickPolyline, CPolygon>;
TYPED_TEST_SUITE(OwnedArray, Regions);

// Whatever fills a region, with the heap whole and with each request refused in turn: it has all
// points in an array of its own or is empty, a mapped copy is of its class, and nothing is thrown.
TYPED_TEST(OwnedArray, IsWholeOrEmptyAndItsOwn) {
  struct OnePoint : TypeParam {  // a derived class may leave what is no shape
    OnePoint(DblPt* p) { this->n_points = 1, this->points = p; }
  } one(static_cast<DblPt*>(std::calloc(1, sizeof(DblPt))));
  double xs[] = {0, 10, 10, 0}, ys[] = {0, 0, 10, 10};
  TypeParam source(4u, xs, ys), empty(std::is_same_v<TypeParam, CPolygon> + 1u);
  EXPECT_FALSE(one.isInside(0.0, 0.0, 1.0) || empty.isInside(0.0, 0.0, 1e9));
  Mtx2D shift(0, 0, Mtx2DOrientNone, 1, 1, 1, 2);
  std::optional<TypeParam> made;
  std::unique_ptr<CPickRegion> mapped;
  const auto expect = [&](int requests, const std::vector<DblPt>& points, auto fill) {
    const int refusals = support::refuse_each_request(fill, [&](bool refused) {
      auto* region = made ? &*made : dynamic_cast<TypeParam*>(mapped.get());
      const std::size_t n = refused ? 0 : points.size();
      EXPECT_TRUE(made || !mapped == (n == 0)) << "an empty copy is null";
      if (region == nullptr) return;
      ASSERT_EQ(region->end() - region->start(), n);
      const DblPt* start = region->start();
      EXPECT_TRUE((start == nullptr) == (n == 0) && start != source.start());
      EXPECT_TRUE(n == 0 || std::memcmp(start, points.data(), n * sizeof *start) == 0);
    });
    EXPECT_EQ(refusals, requests);
  };
  const auto square = {DblPt{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  expect(1, square, [&] { made.emplace(4u, xs, ys); });
  expect(1, square, [&] { made.emplace(4u, source.start()); });
  expect(1, square, [&] { made.emplace(source); });
  expect(1, std::vector<DblPt>(4), [&] { made.emplace(4u); });
  expect(1, square, [&] { *made = source; });
  expect(0, square, [&] { *made = *&*made; });
  expect(0, {}, [&] { *made = empty; });
  const auto take = [&](CPickRegion* region) { mapped.reset(region), made.reset(); };
  expect(2, {{1, 2}, {11, 2}, {11, 12}, {1, 12}}, [&] { take(source.xfm(shift)); });
  expect(2, {{1, 2}}, [&] { take(one.xfm(shift)); });
  expect(0, {}, [&] { take(empty.xfm(shift)); });
  CPickRect rect(0, 0, 1, 1);
  expect(1, {{0, 0}}, [&] { take(rect.xfm(shift)); });
}
