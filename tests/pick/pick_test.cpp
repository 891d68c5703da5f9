#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>

#include <cmath>
#include <memory>

#include <gtest/gtest.h>

// A device flip and a turn reverse axes; the copy is sorted all the same, and can be hit.
TEST(CPickRect, IsASortedBoxUnderEveryMatrix) {
  CPickRect rect(10, 10, 0, 2);
  Mtx2D turn;
  turn.InvertYAxis(100.0);
  turn.Rotate(90.0, Mtx2DRotateLast);
  std::unique_ptr<CPickRegion> copy(rect.xfm(turn));
  DblPt low, high, corner(-98.0, 0.0);
  dynamic_cast<CPickRect&>(*copy).getPoints(&low, &high);
  EXPECT_TRUE(low.x == -98.0 && low.y == 0.0 && high.x == -90.0 && high.y == 10.0);
  EXPECT_TRUE(copy->isInside(corner, 0.0) && !copy->isInside(-98.5, 5.0, 0.25));
  rect.setPoints(1, 1, -1, -1);
  EXPECT_TRUE(rect.isInside(-1.5, 0.0, 0.5));
}

// Every chain of two segments on a small grid: a segment is hit anywhere in its box, grown or
// shrunk by the tolerance, and the open end is not joined to the start. A form that a caller
// overrides answers for both.
TEST(CPickPolyline, HitsTheBoxOfEachSegment) {
  for (int code = 0; code < 9 * 9 * 9 * 49 * 3; ++code) {
    DblPt p(code % 7 * 0.5 - 0.5, code / 7 % 7 * 0.5 - 0.5), chain[3];
    const double tol = (code / 49 % 3 - 1) * 0.5;
    for (int i = 0, rest = code / 147; i < 3; ++i, rest /= 9) chain[i].set(rest % 3, rest / 3 % 3);
    const auto in_box = [&](const DblPt& a, const DblPt& b) {
      return std::fabs(2 * p.x - a.x - b.x) <= std::fabs(a.x - b.x) + 2 * tol &&
             std::fabs(2 * p.y - a.y - b.y) <= std::fabs(a.y - b.y) + 2 * tol;
    };
    CPickPolyline open(3u, chain), shortest(2u, chain);
    const bool first = in_box(chain[0], chain[1]), second = in_box(chain[1], chain[2]);
    ASSERT_EQ(shortest.isInside(p, tol), first) << code;
    ASSERT_EQ(open.isInside(p.x, p.y, tol), first || second) << code;
  }
  struct : CPickPolyline {
    using CPickPolyline::isInside;
    bool isInside(DblPt&, double) override { return true; }
  } everywhere;
  EXPECT_TRUE(everywhere.isInside(1e9, 1e9, 0.0));
}
