#include <zelvan/transforms/points.h>

#include "support/printers.h"

#include <gtest/gtest.h>

TEST(DblPt, IsEqualInsideASquareWithoutItsEdges) {
  const auto expect = [](DblPt p, double tolerance, bool equal, const char* why) {
    EXPECT_EQ(DblPt(1.0, 2.0).isEqualTo(p, tolerance), equal)
        << why << ": (1, 2) and " << testing::PrintToString(p) << " within " << tolerance;
  };
  expect({1.0, 2.0}, 0.0, false, "at tolerance 0 no point equals itself");
  expect({1.5, 2.0}, 0.5, false, "x differs by just the tolerance");
  expect({1.0, 1.5}, 0.5, false, "y differs by just the tolerance");
  expect({0.625, 2.375}, 0.5, true, "a square: the distance is above 0.5");
  expect({NAN, 2.0}, HUGE_VAL, false, "a NaN in x equals nothing");
}
