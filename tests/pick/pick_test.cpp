#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/polygon.h>

#include "support/bits.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

// A polyline is hit in the box of any segment. In halves that is the rectangle's answer; in tenths
// a polyline adds the tolerance to the box and a rectangle to the point, and the last digit tells.
TEST(PickRegions, AreHitWithinTheTolerance) {
  support::Random random(1);
  support::FnvDigest digest;
  for (int i = 0; i < 100000; ++i) {
    const double unit = i % 2 == 0 ? 0.5 : 0.1, tol = (random.below(7) - 2) * unit;
    std::vector<DblPt> chain(3 + random.below(3));
    for (DblPt& p : chain) p = {random.below(9) * unit, random.below(9) * unit};
    DblPt p = chain.back();
    CPickPolyline polyline(static_cast<unsigned>(chain.size()) - 1, chain.data());
    const bool hit = polyline.isInside(p, tol);
    bool in_a_box = false;
    for (DblPt* b = &chain[1]; b != &chain.back(); ++b) {
      CPickRect rect(b[-1], b[0]);
      const bool inside = CAlignedRect(b[-1], b[0]).isInside(p, tol);
      ASSERT_TRUE(rect.isInside(p, tol) == inside && rect.isInside(p.x, p.y, tol) == inside);
      in_a_box |= inside;
    }
    ASSERT_TRUE(polyline.isInside(p.x, p.y, tol) == hit && (unit == 0.1 || in_a_box == hit));
    digest.add(hit);
  }
  EXPECT_EQ(digest.value(), 10517068056449075972u);
}

// Rings on a grid, on tenths, where the cross product is rounded, and of any numbers. A point on a
// boundary answers as if moved a little to smaller x and far less to greater y.
TEST(CPolygon, FollowsItsBoundaryRuleInEveryForm) {
  support::for_each_form([](const char* form) {
    support::FnvDigest digest;
    for (int seed = 0; seed < 9000 && !HasFailure(); ++seed) {
      support::Random random(seed);
      const int kind = seed % 3, grid = seed % 4 == 0 ? 9 : 3;
      const double unit = kind == 0 ? 1.0 : 0.1;
      const auto place = [&](int n, double step) {
        return kind == 2 ? random.hard_double() : random.below(n) * step;
      };
      std::vector<DblPt> ring(3 + random.below(grid == 9 ? 68 : 3));
      for (DblPt& p : ring) p = {place(grid, unit), place(grid, unit)};
      CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
      for (int i = 0; i < 50; ++i) {
        DblPt p = {place(2 * grid, unit / 2), place(2 * grid, unit / 2)};
        const bool inside = polygon.isInside(p, -1e9);
        ASSERT_EQ(polygon.isInside(p.x, p.y, 1e9), inside);
        if (kind == 0) p.set(p.x - 0x1p-10, p.y + 0x1p-20);
        ASSERT_EQ(polygon.isInside(p, 0.0), inside) << form << ", seed " << seed;
        digest.add(inside);
      }
    }
    EXPECT_EQ(digest.value(), 17041833279007154501u) << form;
  });
}

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

// Regions of any points, filled, copied and assigned in every way, and mapped by any matrix; with
// too few points for the shape they are empty, unless a derived class fills them.
template <class Region>
void expect_points(unsigned least, std::vector<DblPt> points, Mtx2D& m) {
  const unsigned size = static_cast<unsigned>(points.size()), n = size < least ? 0 : size;
  std::vector<double> xs, ys;
  for (const DblPt& p : points) xs.push_back(p.x), ys.push_back(p.y);
  Region region(size, points.data()), by_axes(size, xs.data(), ys.data()), set(size), assigned(7u);
  const auto holds = [&](Region& got) {
    return got.end() - got.start() == n && (got.start() == nullptr) == (n == 0) &&
           (n == 0 || std::memcmp(got.start(), points.data(), n * sizeof(DblPt)) == 0);
  };
  ASSERT_TRUE(n == 0 || (set.start()->x == 0.0 && set.end()[-1].y == 0.0));
  for (unsigned i = 0; i < n; ++i) set.set(static_cast<int>(i), xs[i], ys[i]);
  Region &self = assigned = region, copy(assigned = self);
  for (Region* got : {&region, &by_axes, &set, &assigned, &copy}) ASSERT_TRUE(holds(*got));
  for (DblPt& p : points) m.XfmPt(p.x, p.y, &p.x, &p.y);
  const std::unique_ptr<CPickRegion> mapped(region.xfm(m));
  ASSERT_TRUE(n == 0 ? mapped == nullptr : holds(dynamic_cast<Region&>(*mapped)));
  struct Derived : Region {
    using Region::n_points, Region::points;
  } derived;
  ASSERT_TRUE(derived.start() == nullptr && derived.end() == nullptr);
  derived.n_points = size, derived.points = static_cast<DblPt*>(std::calloc(size, sizeof(DblPt)));
  ASSERT_EQ(derived.isInside(0.0, 0.0, 9.0), least == 2 && size >= 2);
  ASSERT_EQ(std::unique_ptr<CPickRegion>(derived.xfm(m)) == nullptr, size == 0);
}

TEST(PickRegions, MapPointByPoint) {
  for (int seed = 0; seed < 600 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    support::Random random(seed);
    Mtx2D m = random.matrix(seed % 6 - 1);
    std::vector<DblPt> points(2 + random.below(9));
    for (DblPt& p : points) p = {random.hard_double(), random.hard_double()};
    DblPt p = points[0], q = points[1], got[2];
    CPickRect rects[] = {{p, q}, {p.x, p.y, q.x, q.y}, {0, 0, 0, 0}, {0, 0, 0, 0}};
    rects[2].setPoints(p.x, p.y, q.x, q.y), rects[3] = rects[0];
    CAlignedRect box(p, q);
    m.XfmPt(box.left(), box.bottom(), &p.x, &p.y), m.XfmPt(box.right(), box.top(), &q.x, &q.y);
    box.set(p, q);
    for (CPickRect rect : rects) {
      const std::unique_ptr<CPickRegion> mapped(rect.xfm(m));
      dynamic_cast<CPickRect&>(*mapped).getPoints(&got[0], &got[1]);
      ASSERT_EQ(std::memcmp(got, &box, sizeof box), 0);
    }
    points.resize(random.below(points.size() + 1));
    expect_points<CPickPolyline>(2, points, m), expect_points<CPolygon>(3, points, m);
  }
}
