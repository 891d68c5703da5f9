#include <zelvan/pick/pick_rect.h>

#include "support/printers.h"

#include <memory>

#include <gtest/gtest.h>

TEST(CPickRect, SortsItsCornersAlsoWhenMapped) {
  Mtx2D half_turn(0, 0, Mtx2DOrientNone, -1, -1, 10, 10);
  DblPt corners[] = {{5, 2}, {1, 8}};
  CPickRect rect(corners[0], corners[1]);
  const std::unique_ptr<CPickRegion> mapped(rect.xfm(half_turn));
  rect.getPoints(&corners[0], &corners[1]);
  EXPECT_EQ(std::vector(corners, corners + 2), (std::vector<DblPt>{{1, 2}, {5, 8}}));
  dynamic_cast<CPickRect&>(*mapped).getPoints(&corners[0], &corners[1]);
  EXPECT_EQ(std::vector(corners, corners + 2), (std::vector<DblPt>{{5, 2}, {9, 8}}));
}

TEST(CPickRect, IsHitWithinTheToleranceOfItsSides) {
  CPickRect rect(0, 0, 1, 1);
  rect.setPoints(10, 20, 0, 0);
  EXPECT_TRUE(rect.isInside(-0.5, 20.5, 0.5)) << "as far off as the tolerance";
  EXPECT_FALSE(rect.isInside(-0.5, 20, 0.25)) << "farther";
}
