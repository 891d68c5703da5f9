#include <zelvan/transforms/aligned_rect.h>

#include "support/printers.h"

#include <gtest/gtest.h>

// Minimum: `p < q ? p : q`, maximum: `q > p ? q : p`. That decides about NaNs and signed zeros.
TEST(CAlignedRect, SortsTwoCornersOnEachAxis) {
  const auto expect = [](DblPt p, DblPt q, DblPt low, DblPt high, const char* why) {
    CAlignedRect rect(p, q);
    EXPECT_EQ(DblPt(rect.left(), rect.bottom()), low) << why;
    EXPECT_EQ(DblPt(rect.right(), rect.top()), high) << why;
  };
  expect({3.0, 1.0}, {1.0, 4.0}, {1.0, 1.0}, {3.0, 4.0}, "each axis is sorted by itself");
  expect({0.0, -0.0}, {-0.0, 0.0}, {-0.0, 0.0}, {0.0, -0.0}, "of equal zeros one of each is kept");
  expect({NAN, 1.0}, {2.0, NAN}, {2.0, NAN}, {NAN, 1.0}, "beside a NaN, q is the smaller");
}

TEST(CAlignedRect, HoldsItsEdgesGrownByTheTolerance) {
  const auto expect = [](DblPt p, double tolerance, bool inside, const char* why) {
    CAlignedRect rect(0.0, 10.0, 11.0, 30.0);
    SCOPED_TRACE(testing::Message() << why << ": (0, 10) to (11, 30), point "
                                    << testing::PrintToString(p) << ", tolerance " << tolerance);
    EXPECT_EQ(rect.isInside(p, tolerance), inside);
    EXPECT_EQ(rect.isInside(p.x, p.y, tolerance), inside);
  };
  for (const DblPt half_beyond : {DblPt(-0.5, 20.0), {11.5, 20.0}, {5.0, 9.5}, {5.0, 30.5}}) {
    expect(half_beyond, 0.5, true, "just the tolerance beyond a side");
    expect(half_beyond, 0.25, false, "farther than the tolerance");
  }
  expect({0.5, 20.0}, -1.0, false, "a negative tolerance shrinks the box");
  expect({0x1p54 + 12.0, 20.0}, 0x1p54, false, "12 is left; added to the edge it would round up");
}
