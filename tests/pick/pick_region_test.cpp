#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/polygon.h>

#include "support/heap.h"
#include "support/printers.h"

#include <memory>

#include <gtest/gtest.h>

template <class Region>
struct OwnedPoints : testing::Test {
  static std::vector<DblPt> of(Region& region) { return {region.start(), region.end()}; }

  double xs[3] = {1, 2, 3};
  double ys[3] = {4, 5, 6};
  std::vector<DblPt> three = {{1, 4}, {2, 5}, {3, 6}};
  Mtx2D shift = {0, 0, Mtx2DOrientNone, 1, 1, 10, 20};
};
using Regions = testing::Types<CPickPolyline, CPolygon>;
TYPED_TEST_SUITE(OwnedPoints, Regions);

TYPED_TEST(OwnedPoints, AreNullIfTooFewForTheShapeOrTooManyForTheMemory) {
  const unsigned int least = std::is_same_v<TypeParam, CPolygon> ? 3 : 2;
  TypeParam enough(least);
  EXPECT_EQ(this->of(enough), std::vector<DblPt>(least));
  EXPECT_EQ(TypeParam(least - 1, this->xs, this->ys).start(), nullptr);
  EXPECT_EQ(TypeParam(least - 1, this->three.data()).start(), nullptr);
  EXPECT_TRUE(sizeof(void*) > 4 || TypeParam(0x10000001).start() == nullptr) << "bytes wrap to 16";
}

TYPED_TEST(OwnedPoints, BelongToEachCopyAlone) {
  heap::refuse(0, false);  // refuses nothing, but counts
  {
    TypeParam region(3, this->xs, this->ys);
    TypeParam copy(region);
    TypeParam assigned(7u);
    assigned = region;
    assigned = static_cast<TypeParam&>(assigned);
    copy.set(0, 9, 9);
    const std::unique_ptr<CPickRegion> mapped(region.xfm(this->shift));
    EXPECT_EQ(this->of(dynamic_cast<TypeParam&>(*mapped))[2], DblPt(13, 26));
    EXPECT_EQ(this->of(region), this->three);
    EXPECT_EQ(this->of(assigned), this->three);
  }
  heap::grant_all();
  EXPECT_EQ(heap::blocks_left(), 0);
}

TYPED_TEST(OwnedPoints, AreNullWhereTheHeapRefuses) {
  TypeParam region(3, this->three.data());
  TypeParam target(3);
  heap::refuse(1, true);
  TypeParam made(3, this->three.data());
  TypeParam copy(region);
  target = region;
  const CPickRegion* const without_region = region.xfm(this->shift);
  heap::refuse(2, false);
  const CPickRegion* const without_points = region.xfm(this->shift);
  heap::grant_all();
  EXPECT_TRUE(heap::is_null(without_region));
  EXPECT_TRUE(heap::is_null(without_points));
  for (TypeParam* empty : {&made, &copy, &target}) {
    EXPECT_TRUE(heap::is_null(empty->start()));
    EXPECT_TRUE(heap::is_null(empty->end()));
    EXPECT_TRUE(heap::is_null(empty->xfm(this->shift))) << "nothing to map";
    EXPECT_FALSE(empty->isInside(0.0, 0.0, 9.0));
  }
}
