#include <zelvan/transforms/aligned_rect.h>
#include <zelvan/transforms/points.h>

#include <cmath>

#include <gtest/gtest.h>

static const double nan_ = std::nan("");

TEST(DblPt, IsEqualWithinAStrictSquare) {
  const struct {
    double dx, dy, tol;
    bool equal;
  } rows[] = {{0, 0, 0, false},         {0, 0, 1e-300, true},     {0.5, 0, 0.5, false},
              {0, -0.5, 0.5, false},    {0.49, -0.49, 0.5, true}, {0.49, 0.51, 0.5, false},
              {0.51, 0.49, 0.5, false}, {nan_, 0, 9, false},      {0, 0, nan_, false}};
  for (const auto& [dx, dy, tol, equal] : rows) {
    EXPECT_EQ(DblPt(1, 2).isEqualTo({1 + dx, 2 + dy}, tol), equal) << dx << ' ' << dy;
  }
}

// Which operand wins a tie shows in the sign of a zero, and in what a NaN leaves behind.
TEST(CAlignedRect, SortsByTheInterfacesComparisons) {
  CAlignedRect zeros(0.0, -0.0, -0.0, 0.0), odd(nan_, 1, 2, nan_);
  EXPECT_TRUE(std::signbit(zeros.left()) && !std::signbit(zeros.right()));
  EXPECT_TRUE(!std::signbit(zeros.bottom()) && std::signbit(zeros.top()));
  EXPECT_TRUE(odd.left() == 2 && std::isnan(odd.right()));
  EXPECT_TRUE(std::isnan(odd.bottom()) && odd.top() == 1);
}

// Given by any two corners; a point on the grown or shrunk edge is inside, a NaN never.
TEST(CAlignedRect, HoldsItsEdgesWithinTheTolerance) {
  const double places[] = {-0.5, 0, 5, 10, 10.5, nan_}, tols[] = {0, 0.5, 0.25, -1, -5, -5.1, nan_};
  for (CAlignedRect box : {CAlignedRect(0, 0, 10, 10), CAlignedRect(10, 0, 0, 10)}) {
    for (const double x : places) {
      for (const double y : places) {
        for (const double tol : tols) {
          const bool inside = std::fabs(x - 5) <= 5 + tol && std::fabs(y - 5) <= 5 + tol;
          DblPt p(x, y);
          EXPECT_EQ(box.isInside(p, tol), inside) << x << ' ' << y << ' ' << tol;
          EXPECT_EQ(box.isInside(x, y, tol), inside) << x << ' ' << y << ' ' << tol;
        }
      }
    }
  }
}
