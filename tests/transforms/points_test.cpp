#include <zelvan/transforms/aligned_rect.h>
#include <zelvan/transforms/points.h>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

TEST(DblPt, IsEqualWithinAStrictSquare) {
  const struct {
    double dx, dy, tol;
    bool equal;
  } rows[] = {
      {0.0, 0.0, 0.0, false},   {0.0, 0.0, 1e-300, true}, {0.5, 0.0, 0.5, false},
      {0.0, -0.5, 0.5, false},  {0.49, -0.49, 0.5, true}, {0.49, 0.51, 0.5, false},
      {0.51, 0.49, 0.5, false}, {nan, 0.0, 9.0, false},   {0.0, 0.0, nan, false},
  };
  for (const auto& row : rows) {
    const DblPt p(1.0, 2.0);
    const DblPt q(1.0 + row.dx, 2.0 + row.dy);
    EXPECT_EQ(p.isEqualTo(q, row.tol), row.equal) << row.dx << ' ' << row.dy << ' ' << row.tol;
  }
}

// Which operand wins a tie shows in the sign of a zero, and in what a NaN leaves behind.
TEST(CAlignedRect, SortsByTheInterfacesComparisons) {
  DblPt p(3.0, 1.0), q(1.0, 4.0);
  for (CAlignedRect box : {CAlignedRect(p, q), CAlignedRect(q, p), CAlignedRect(1, 4, 3, 1)}) {
    EXPECT_EQ(box.left(), 1.0);
    EXPECT_EQ(box.bottom(), 1.0);
    EXPECT_EQ(box.right(), 3.0);
    EXPECT_EQ(box.top(), 4.0);
  }
  CAlignedRect zeros(0.0, -0.0, -0.0, 0.0);
  EXPECT_TRUE(std::signbit(zeros.left()));
  EXPECT_FALSE(std::signbit(zeros.right()));
  EXPECT_FALSE(std::signbit(zeros.bottom()));
  EXPECT_TRUE(std::signbit(zeros.top()));
  CAlignedRect odd(nan, 1.0, 2.0, nan);
  EXPECT_EQ(odd.left(), 2.0);
  EXPECT_TRUE(std::isnan(odd.right()));
  EXPECT_TRUE(std::isnan(odd.bottom()));
  EXPECT_EQ(odd.top(), 1.0);
}

TEST(CAlignedRect, HoldsItsEdgesWithinTheTolerance) {
  const struct {
    double x, y, tol;
    bool inside;
  } rows[] = {
      {10.0, 10.0, 0.0, true},  {0.0, 0.0, 0.0, true},    {10.5, 5.0, 0.5, true},
      {10.5, 5.0, 0.25, false}, {-0.5, 5.0, 0.5, true},   {-0.5, 5.0, 0.25, false},
      {5.0, 10.5, 0.5, true},   {5.0, 10.5, 0.25, false}, {5.0, -0.5, 0.5, true},
      {5.0, -0.5, 0.25, false}, {0.5, 5.0, -1.0, false},  {5.0, 5.0, -1.0, true},
      {5.0, 5.0, -5.0, true},   {5.0, 5.0, -5.1, false},  {nan, 5.0, 1.0, false},
      {5.0, nan, 1.0, false},   {5.0, 5.0, nan, false},
  };
  CAlignedRect box(0, 0, 10, 10);
  for (const auto& row : rows) {
    DblPt p(row.x, row.y);
    EXPECT_EQ(box.isInside(p, row.tol), row.inside) << row.x << ' ' << row.y << ' ' << row.tol;
    EXPECT_EQ(box.isInside(row.x, row.y, row.tol), row.inside);
  }
}

}  // namespace
