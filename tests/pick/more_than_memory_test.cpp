// Counts whose points take more bytes than a size of 32 bits can say. Each row's product of count
// and size of a point wraps to a number that any heap grants.
#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/polygon.h>

#include <gtest/gtest.h>

namespace {

static_assert(sizeof(void*) == 4 && sizeof(DblPt) == 16, "with 64 bits all of these fit");

const struct {
  unsigned int count;
  const char* bytes;
} rows[] = {
    {0x10000000, "2^32, which wraps to 0"},
    {0x10000001, "2^32 + 16, which wraps to one point"},
    {0xFFFFFFFF, "2^36 - 16, which wraps to 2^32 - 16"},
};

/// Ends the test if `region` has points, for any of them may lie outside its array.
template <class Region>
void expect_empty(Region region, const char* bytes) {
  ASSERT_EQ(region.start(), nullptr) << bytes;
  EXPECT_EQ(region.end(), nullptr) << bytes;
  EXPECT_FALSE(region.isInside(0.0, 0.0, 0.0)) << bytes;
}

}  // namespace

TEST(PickRegions, OfMorePointsThanMemoryCanHoldAreEmpty) {
  double number = 0.0;
  DblPt point;
  for (const auto& row : rows) {
    expect_empty(CPolygon(row.count), row.bytes);
    expect_empty(CPolygon(row.count, &number, &number), row.bytes);
    expect_empty(CPolygon(row.count, &point), row.bytes);
    expect_empty(CPickPolyline(row.count), row.bytes);
    expect_empty(CPickPolyline(row.count, &number, &number), row.bytes);
    expect_empty(CPickPolyline(row.count, &point), row.bytes);
  }
}
