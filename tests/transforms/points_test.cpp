#include <zelvan/transforms/points.h>

#include <cmath>

#include <gtest/gtest.h>

TEST(DblPt, IsEqualToPointsInASquareAboutIt) {
  const auto expect = [](double x, double y, double tolerance, bool is_equal, const char* why) {
    EXPECT_EQ(DblPt(10.0, 20.0).isEqualTo(DblPt(x, y), tolerance), is_equal)
        << "(10, 20) and (" << x << ", " << y << ") by " << tolerance << ": " << why;
  };
  expect(10.375, 19.625, 0.5, true, "in the square, though farther away than 0.5");
  expect(10.5, 20.0, 0.5, false, "x differs by the tolerance");
  expect(10.0, 19.5, 0.5, false, "y differs by the tolerance");
  expect(10.0, 20.0, 0.0, false, "no points are less than 0 apart");
  expect(NAN, 20.0, 9.0, false, "x is no number");
}

TEST(IntPt, EqualsAPointWithBothCoordinates) {
  EXPECT_TRUE(IntPt(1, 2) == IntPt(1, 2));
  EXPECT_FALSE(IntPt(1, 2) == IntPt(1, 3));
  EXPECT_FALSE(IntPt(1, 2) == IntPt(3, 2));
}
