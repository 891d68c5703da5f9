#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>

#include <memory>

#include <gtest/gtest.h>

namespace {

TEST(CPickRect, IsASortedBoxUnderEveryMatrix) {
  CPickRect rect(10, 10, 0, 2);
  DblPt low, high;
  rect.getPoints(&low, &high);
  EXPECT_EQ(low.x, 0.0);
  EXPECT_EQ(low.y, 2.0);
  EXPECT_EQ(high.x, 10.0);
  EXPECT_EQ(high.y, 10.0);
  EXPECT_TRUE(rect.isInside(10.5, 5.0, 0.5));
  EXPECT_FALSE(rect.isInside(10.5, 5.0, 0.25));

  // A device flip and a turn reverse axes; the copy must still be hit.
  Mtx2D turn;
  turn.InvertYAxis(100.0);
  turn.Rotate(90.0, Mtx2DRotateLast);
  std::unique_ptr<CPickRegion> copy(rect.xfm(turn));
  auto* mapped = dynamic_cast<CPickRect*>(copy.get());
  ASSERT_NE(mapped, nullptr);
  mapped->getPoints(&low, &high);
  EXPECT_EQ(low.x, -98.0);
  EXPECT_EQ(low.y, 0.0);
  EXPECT_EQ(high.x, -90.0);
  EXPECT_EQ(high.y, 10.0);
  DblPt inside(-95.0, 5.0);
  EXPECT_TRUE(copy->isInside(inside, 0.0));
  mapped->setPoints(1, 1, -1, -1);
  EXPECT_TRUE(copy->isInside(0.0, 0.0, 0.0));
}

// A segment is hit anywhere in its box; the open end is not joined to the start.
TEST(CPickPolyline, HitsTheBoxOfEachSegment) {
  DblPt corner[] = {{0, 0}, {10, 0}, {10, 10}};
  DblPt diagonal[] = {{10, 10}, {0, 0}};
  CPickPolyline open(3u, corner), slanted(2u, diagonal), one(1u, corner), none(0u);
  const struct {
    CPickPolyline* line;
    double x, y, tol;
    bool inside;
  } rows[] = {
      {&slanted, 5, 9, 0.0, true},     {&slanted, 11, 5, 0.5, false},
      {&slanted, 10.5, 5, 0.5, true},  {&slanted, -0.5, 5, 0.5, true},
      {&slanted, 5, 10.5, 0.5, true},  {&slanted, 5, -0.5, 0.5, true},
      {&slanted, 5, -0.6, 0.5, false}, {&slanted, 5, 5, -5.0, true},
      {&slanted, 5, 5, -5.1, false},   {&open, 2, 8, 0.0, false},
      {&open, 10, 8, 0.0, true},       {&open, 5, 0, 0.0, true},
      {&open, 5, 0, -1.0, false},      {&one, 0, 0, 100.0, false},
      {&none, 0, 0, 100.0, false},
  };
  for (const auto& row : rows) {
    DblPt p(row.x, row.y);
    EXPECT_EQ(row.line->isInside(p, row.tol), row.inside) << row.x << ' ' << row.y;
    EXPECT_EQ(row.line->isInside(row.x, row.y, row.tol), row.inside);
  }
  EXPECT_EQ(one.start(), nullptr);
  EXPECT_EQ(one.end(), nullptr);
}

// A caller's region: one overridden form answers for both, and the base pointer deletes it.
TEST(CPickPolyline, AsksTheOverriddenForm) {
  class Everywhere : public CPickPolyline {
   public:
    using CPickPolyline::isInside;
    bool isInside(DblPt&, double) override { return true; }
  };
  Everywhere everywhere;
  std::unique_ptr<CPickRegion> copy(new Everywhere(everywhere));
  EXPECT_TRUE(copy->isInside(1e9, 1e9, 0.0));
}

}  // namespace
