#include <zelvan/pick/pick_polyline.h>

#include <gtest/gtest.h>

TEST(CPickPolyline, IsHitInTheBoxOfASegment) {
  DblPt chain[] = {{0, 0}, {10, 0}, {10, 10}, {20, 20}};
  CPickPolyline line(4, chain);
  EXPECT_TRUE(line.isInside(-.5, -.5, .5)) << "as far off as the tolerance";
  EXPECT_FALSE(line.isInside(-.5, 0, .25)) << "farther to the left";
  EXPECT_FALSE(line.isInside(5, -.5, .25)) << "farther down";
  EXPECT_TRUE(line.isInside(20.5, 20.5, .5)) << "as far off as the tolerance";
  EXPECT_FALSE(line.isInside(20.5, 15, .25)) << "farther to the right";
  EXPECT_FALSE(line.isInside(15, 20.5, .25)) << "farther up";
  EXPECT_TRUE(line.isInside(11, 19, 0)) << "in the box of the slope, far from its line";
  EXPECT_FALSE(line.isInside(2, 8, 0)) << "where a closing edge would be";
}
