#include <zelvan/transforms/points.h>

#include <gtest/gtest.h>

TEST(DblPt, EqualsPointsInASquareAboutIt) {
  const DblPt point(10, 20);
  EXPECT_TRUE(point.isEqualTo({10.75, 19.25}, 1)) << "in a corner, beyond a circle";
  EXPECT_FALSE(point.isEqualTo({11, 20}, 1)) << "as far off in x as the tolerance";
  EXPECT_FALSE(point.isEqualTo({10, 19}, 1)) << "as far off in y";
  EXPECT_FALSE(point.isEqualTo(point, 0)) << "no point equals itself without a tolerance";
}
