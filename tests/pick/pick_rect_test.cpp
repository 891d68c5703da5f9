#include <zelvan/pick/pick_rect.h>

#include "support/printers.h"

#include <memory>

#include <gtest/gtest.h>

TEST(CPickRect, SortsTheCornersOfItsImage) {
  Mtx2D half_turn(0, 0, Mtx2DOrientNone, -1, -1, 10, 10);
  CPickRect rect(0, 0, 0, 0);
  rect.setPoints(5, 2, 1, 8);
  const std::unique_ptr<CPickRegion> mapped(rect.xfm(half_turn));
  DblPt low, high;
  dynamic_cast<CPickRect&>(*mapped).getPoints(&low, &high);
  EXPECT_EQ(low, DblPt(5, 2));
  EXPECT_EQ(high, DblPt(9, 8));
}
