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

namespace {

// A polyline is hit in the box of any segment. In halves that is the rectangle's answer; in tenths
// a polyline adds the tolerance to the box and a rectangle to the point, and the last digit tells.
TEST(PickRegions, AreHitWithinTheTolerance) {
  support::Random random(1);
  support::Digest digest;
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

// Rings of four vertices on a small grid, asked at every half of it; then rings of 3 to 70 on a
// wider grid, on its tenths, where the cross product is rounded, and on any numbers. A point on a
// boundary answers as if moved a little to smaller x and far less to greater y, and the tolerance
// says nothing.
TEST(CPolygon, FollowsItsBoundaryRuleInEveryForm) {
  support::for_each_form([](const char* form) {
    support::Digest digest;
    for (int code = 0; code < 6561 + 68 * 45; ++code) {
      support::Random random(code);
      const bool is_small = code < 6561, is_hard = !is_small && code % 3 == 0;
      const double unit = is_small || code % 3 == 1 ? 1.0 : 0.1;
      std::vector<DblPt> ring(is_small ? 4 : 3 + code % 68), questions(49);
      const auto place = [&] { return is_hard ? random.hard_double() : random.below(9) * unit; };
      for (int rest = code; DblPt & p : ring) {
        p = is_small ? DblPt(rest % 3, rest / 3 % 3) : DblPt{place(), place()}, rest /= 9;
      }
      CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
      for (int i = 0; DblPt & p : questions) {
        p = is_small ? DblPt(i % 7 * 0.5 - 0.5, i / 7 * 0.5 - 0.5) : DblPt{place(), place()}, ++i;
        const bool inside = polygon.isInside(p, -1e9);
        ASSERT_EQ(polygon.isInside(p.x, p.y, 1e9), inside);
        if (unit == 1.0) p.set(p.x - 0x1p-10, p.y + 0x1p-20);
        ASSERT_EQ(polygon.isInside(p, 0.0), inside) << form << ", ring " << code;
        digest.add(inside);
      }
    }
    EXPECT_EQ(digest.value(), 3636130439479071013u) << form;
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
// too few points for the shape they are empty.
template <class Region>
void expect_points(std::size_t least, std::vector<DblPt> points, Mtx2D& m) {
  const unsigned size = static_cast<unsigned>(points.size()), n = size < least ? 0 : size;
  std::vector<double> xs, ys, zeros(2 * n);
  for (const DblPt& p : points) xs.push_back(p.x), ys.push_back(p.y);
  Region region(size, points.data()), by_axes(size, xs.data(), ys.data()), set(size), assigned(7u);
  const auto holds = [n](Region& got, const void* expected) {
    return got.end() - got.start() == n && (got.start() == nullptr) == (n == 0) &&
           (n == 0 || std::memcmp(got.start(), expected, n * sizeof(DblPt)) == 0);
  };
  ASSERT_TRUE(holds(set, zeros.data()));
  for (unsigned i = 0; i < n; ++i) set.set(static_cast<int>(i), xs[i], ys[i]);
  Region &self = assigned = region, copy(assigned = self);
  for (Region* got : {&region, &by_axes, &set, &assigned, &self, &copy}) {
    ASSERT_TRUE(holds(*got, points.data()));
  }
  for (DblPt& p : points) m.XfmPt(p.x, p.y, &p.x, &p.y);
  const std::unique_ptr<CPickRegion> mapped(region.xfm(m));
  ASSERT_EQ(mapped == nullptr, n == 0);
  ASSERT_TRUE(mapped == nullptr || holds(dynamic_cast<Region&>(*mapped), points.data()));
}

TEST(PickRegions, MapPointByPoint) {
  struct OnePoint : CPolygon {
    OnePoint() { n_points = 1, points = static_cast<DblPt*>(std::calloc(1, sizeof(DblPt))); }
  } one;
  for (int seed = 0; seed < 600 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    support::Random random(seed);
    Mtx2D m = random.matrix(seed % 6 - 1);
    std::vector<DblPt> points(2 + random.below(9));
    for (DblPt& p : points) p = {random.hard_double(), random.hard_double()};
    CPickRect rect(points[0], points[1]);
    DblPt low, high;
    rect.getPoints(&low, &high);
    m.XfmPt(low.x, low.y, &low.x, &low.y), m.XfmPt(high.x, high.y, &high.x, &high.y);
    CPickRect expected(low, high);
    const std::unique_ptr<CPickRegion> mapped(rect.xfm(m)), mapped_one(one.xfm(m));
    ASSERT_EQ(std::memcmp(&dynamic_cast<CPickRect&>(*mapped), &expected, sizeof expected), 0);
    ASSERT_FALSE(one.isInside(0.0, 0.0, 9.0) || mapped_one == nullptr);
    points.resize(random.below(points.size() + 1));
    expect_points<CPickPolyline>(2, points, m), expect_points<CPolygon>(3, points, m);
  }
}

}  // namespace
