#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/polygon.h>

#include <gtest/gtest.h>

static_assert(sizeof(void*) == 4 && sizeof(DblPt) == 16, "with 64 bits all of these fit");

TEST(PickRegions, OfMorePointsThanMemoryCanHoldAreEmpty) {
  EXPECT_EQ(CPolygon(0x10000001).start(), nullptr) << "their bytes wrap to 16";
  EXPECT_EQ(CPickPolyline(0x10000001).start(), nullptr) << "their bytes wrap to 16";
}
