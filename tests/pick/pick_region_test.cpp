#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/polygon.h>

#include "support/heap.h"
#include "support/printers.h"

#include <memory>

#include <gtest/gtest.h>

template <class Region>
struct OwnedPoints : testing::Test {
  static std::vector<DblPt> of(Region& region) { return {region.start(), region.end()}; }

  double xs[3] = {1, 2, 3}, ys[3] = {4, 5, 6};
  std::vector<DblPt> three = {{1, 4}, {2, 5}, {3, 6}};
  Mtx2D shift = {0, 0, Mtx2DOrientNone, 1, 1, 10, 20};
};
using Regions = testing::Types<CPickPolyline, CPolygon>;
TYPED_TEST_SUITE(OwnedPoints, Regions);

TYPED_TEST(OwnedPoints, AreThoseGivenOrNoneIfTooFewForTheShape) {
  const int least = std::is_same_v<TypeParam, CPolygon> ? 3 : 2;
  for (const int n : {least, least - 1}) {
    TypeParam by_axes(n, this->xs, this->ys), by_points(n, this->three.data()), by_set(n);
    for (int i = 0; n == least && i < n; ++i) by_set.set(i, this->xs[i], this->ys[i]);
    const auto given = this->three.begin();
    for (TypeParam* region : {&by_axes, &by_points, &by_set}) {
      EXPECT_EQ(this->of(*region), std::vector(given, given + (n == least ? n : 0))) << n;
    }
  }
}

TYPED_TEST(OwnedPoints, BelongToEachCopyAlone) {
  heap::refuse(0, false);  // refuses nothing, but counts
  {
    TypeParam region(3, this->xs, this->ys), copy(region), assigned(7u);
    TypeParam& self = assigned = region;
    assigned = self;
    copy.set(0, 9, 9);
    const std::unique_ptr<CPickRegion> mapped(region.xfm(this->shift));
    EXPECT_EQ(this->of(dynamic_cast<TypeParam&>(*mapped))[2], DblPt(13, 26));
    EXPECT_EQ(this->of(region), this->three);
    EXPECT_EQ(this->of(assigned), this->three);
  }
  heap::grant_all();
  EXPECT_EQ(heap::blocks_left(), 0);
}

TYPED_TEST(OwnedPoints, AreNoneWhereTheHeapRefuses) {
  TypeParam region(3, this->xs, this->ys), target(3);
  heap::refuse(1, true);
  TypeParam by_axes(3, this->xs, this->ys), by_points(3, this->three.data()), by_set(3);
  TypeParam copy(region);
  target = region;
  const CPickRegion* const without_region = region.xfm(this->shift);
  heap::refuse(2, false);
  const CPickRegion* const without_points = region.xfm(this->shift);
  heap::grant_all();
  EXPECT_TRUE(heap::is_null(without_region) && heap::is_null(without_points));
  for (TypeParam* empty : {&by_axes, &by_points, &by_set, &copy, &target}) {
    EXPECT_TRUE(heap::is_null(empty->start()) && heap::is_null(empty->end()));
    EXPECT_FALSE(empty->isInside(0.0, 0.0, 9.0));
  }
}
