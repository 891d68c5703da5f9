#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/polygon.h>

#include <gtest/gtest.h>

template <class Region, class... Form>
struct Everywhere : Region {
  using Region::isInside;
  bool isInside(Form...) override { return true; }
};

// A form that a caller overrides answers for itself; in a polyline the point's answers for both.
TEST(PickRegions, AnswerInEachFormAlone) {
  DblPt p(0, 0);
  EXPECT_TRUE((Everywhere<CPickPolyline, DblPt&, double>().isInside(0.0, 0.0, 9.0)));
  EXPECT_FALSE((Everywhere<CPolygon, DblPt&, double>().isInside(0.0, 0.0, 9.0)));
  EXPECT_FALSE((Everywhere<CPickRect, DblPt&, double>().isInside(1.0, 1.0, 0.0)));
  EXPECT_FALSE((Everywhere<CPolygon, double, double, double>().isInside(p, 9.0)));
  EXPECT_FALSE((Everywhere<CPickRect, double, double, double>().isInside(p, -1.0)));
}
