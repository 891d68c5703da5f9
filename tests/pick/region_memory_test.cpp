#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/polygon.h>

#include "support/refusing_heap.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

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
