#include <zelvan/geometry/conic.h>
#include <zelvan/geometry/extent.h>

#include "support/random.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace {

// At each tolerance and one step beyond it, on either side of zero.
TEST(ConicType, TellsTheKindsApart) {
  const double at = 1e-05, over = std::nextafter(at, 1), nan = std::nan(""), inf = INFINITY;
  const double kinds[][5] = {
      {1, 0, 1, 0, 0},          {1, at, 1, 0, 0},       {1, -at, 1 + 9e-6, 0, 0},  // circles
      {1, 0, 2, 0, 0},          {1, 1, 1, 0, 0},        {1, -over, 1, 0, 0},
      {1, 0, 1 + 1.1e-5, 0, 0}, {over, 0, 0.25, 1, 1},  // ellipses
      {1, 0, -1, 0, 0},         {1, 3, 1, 0, 0},        {0, 1, 0, 1, 1},
      {9, 9, over, 9, at},      {9, 9, at, 9, over},    {over, 9, 9, at, 9},
      {at, 9, 9, over, 9},      {-over, 0, 0.25, 1, 1},  // hyperbolas
      {1, 0, 0, 0, 1},          {0, 0, 1, 1, 0},        {1, 2, 1, 1, 1},
      {0.001, 0, 0.001, 0, 0},  {over, at, at, 9, 9},   {at, -over, at, 9, 9},
      {at, at, over, 9, 9},     {at, 0, 0.25, 1, 1},    {-at, 0, 0.25, 1, 1},  // parabolas
      {0, 0, 0, 1, 0},          {0, 1, 0, 0, 0},        {at, -at, at, 9, 9},
      {9, 9, at, 9, -at},       {at, 9, 9, -at, 9},  // lines
      {nan, 0, 1, 0, 0},        {inf, inf, 1, 0, 0}};
  const char* types = "CCCEEEEEHHHHHHHHPPPPPPPPPLLLLL??";
  for (const auto& k : kinds) {
    utl_conic_t conic = {k[0], k[1], k[2], k[3], k[4], -1, {}, {}, 0};
    EXPECT_EQ(utl_conic_type(&conic), types[&k - kinds]) << "row " << &k - kinds;
  }
}

// 4 (x - 1)^2 + y^2 = 4 from every 15 degrees on: a sweep runs the way it is asked to, and ends
// that coincide to within 0.0001 mean the whole turn.
TEST(StandardEllipse, SweepsTheWayItIsAsked) {
  utl_ellipse_t form;
  for (int i = 0; i < 24; ++i) {
    for (const double turn : {0.0, 0.00009, 0.00011, M_PI / 6, M_PI / 2, M_PI, 4.0, 6.0}) {
      const double way = i % 2 == 0 ? 1 : -1, sweep = turn < 0.0001 ? turn + 2 * M_PI : turn;
      const double first = i * M_PI / 12 + 0.001, last = first + way * turn;
      utl_conic_t conic = {4, 0, 1, -8, 0, 0, {}, {}, static_cast<short>(-(i % 2))};
      conic.start = {1 + std::cos(first), 2 * std::sin(first)};
      conic.end = {1 + std::cos(last), 2 * std::sin(last)};
      utl_standard_ellipse(&conic, &form);
      EXPECT_NEAR(form.sweep, way * sweep, 1e-9) << i << ", " << turn;
      EXPECT_NEAR(std::remainder(form.start - first, 2 * M_PI), 0, 1e-9) << i << ", " << turn;
    }
  }
  utl_conic_t to_centre = {1,  0,       1,      0, 0,
                           -1, {-1, 0}, {0, 0}, 0};  // at half a turn and at a quarter
  utl_standard_ellipse(&to_centre, &form);
  EXPECT_TRUE(form.start == M_PI && form.sweep == M_PI / 2 + 2 * M_PI - M_PI) << form.sweep;
}

// Each form about its tolerance, in steps of the last digit: an ellipse is flat up to axes of 1 to
// 100, and y is a function of x while both coefficients are above a part of the largest one.
TEST(StandardForms, KeepTheirTolerances) {
  for (int i = 1; i <= 2000; ++i) {
    const double c = 1e4 + (i % 20 - 10) * 0x1p-39, k = i;
    utl_conic_t conic = {1, 0, c, 0, 0, -k, {0, 1}, {-1, 0}, 0};
    utl_ellipse_t form;
    utl_standard_ellipse(&conic, &form);
    const bool is_flat = std::sqrt(k) * 0.01 >= std::sqrt(k / c);
    EXPECT_TRUE((form.sweep == 0) == is_flat && (form.start == 0) == is_flat) << i;
  }
  const double at = 1e-05 * 4, over = std::nextafter(at, 1);
  const double rows[][4] = {{4, 0, 0, 0}, {1, 4, 0, 0}, {1, 0, 4, 0},   // a, c, d, e, where e
                            {0, 0, 0, 4}, {0, 4, 0, 1}, {0, 0, 4, 1}};  // or a is at the bound
  for (const auto& [a, c, d, e] : rows) {
    for (const double v : {at, -at, over, -over}) {
      utl_conic_t conic = {a == 0 ? v : a, 0, c, d, e == 0 ? v : e, 0, {}, {}, 0};
      utl_parabola_t form;
      utl_standard_parabola(&conic, &form);
      EXPECT_EQ(form.y_of_x, std::fabs(v) > at) << a << c << d << e << ' ' << v;
    }
  }
}

// Ellipses, hyperbolas and parabolas, turned by any angle, through a random point and where a line
// through it meets the curve again: each form starts and ends there, a hyperbola if both are on one
// branch, and has its points on the curve. The sampled box lies within that of 100 000 points, and
// short of it by little.
TEST(StandardForms, RunFromEndToEndAlongTheCurve) {
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    support::Random random(seed);
    const auto number = [&] { return random.between(-3, 3); };
    const double a = number(), b = number(), c = seed % 3 == 0 ? b * b / (4 * a) : number();
    const double d = number(), e = number(), dx = number(), dy = number();
    const real_pt_t p = {number(), number()};
    const double slope = (2 * a * p.x + b * p.y + d) * dx + (b * p.x + 2 * c * p.y + e) * dy;
    const double s = -slope / (a * dx * dx + b * dx * dy + c * dy * dy);
    const real_pt_t q = {p.x + s * dx, p.y + s * dy};
    const auto f = [&](real_pt_t v) {
      return -(a * v.x + b * v.y + d) * v.x - (c * v.y + e) * v.y;
    };
    utl_conic_t conic = {a, b, c, d, e, f(p), p, q, static_cast<short>(seed % 2)};
    utl_ellipse_t ellipse;
    utl_hyperbola_t h;
    utl_parabola_t parabola;
    utl_standard_ellipse(&conic, &ellipse);
    utl_standard_hyperbola(&conic, &h);
    utl_standard_parabola(&conic, &parabola);
    const char type = utl_conic_type(&conic);
    const auto at = [&](double part) {
      real_pt_t out;
      if (type == 'E') utl_ellipse_point(&ellipse, part * ellipse.sweep, &out);
      if (type == 'H') utl_hyperbola_point(&h, part * (h.end - h.start), &out);
      if (type == 'P') utl_parabola_point(&parabola, part * (parabola.end - parabola.start), &out);
      return out;
    };
    const double u = q.y * h.sin_rot + q.x * h.cos_rot, v = q.y * h.cos_rot - q.x * h.sin_rot;
    const bool is_upper = h.y_branches ? v > h.cen_y : u > h.cen_x;
    real_pt_t max, min, high = at(0), low = high, end = at(1);
    ASSERT_NEAR(std::hypot(high.x - p.x, high.y - p.y), 0, 1e-6);
    ASSERT_NEAR(f(at(0.4)), conic.f, 1e-6);
    if (type != 'H' || is_upper == (h.branch > 0)) {
      ASSERT_NEAR(std::hypot(end.x - q.x, end.y - q.y), 0, 1e-6);
    }
    if (seed > 30 || std::hypot(end.x - q.x, end.y - q.y) > 1e-6) continue;
    utl_maxmin_conic(&conic, &max, &min);
    for (int i = 1; i <= 100000; ++i) {
      const auto [x, y] = at(i / 1e5);
      high = {std::max(high.x, x), std::max(high.y, y)};
      low = {std::min(low.x, x), std::min(low.y, y)};
    }
    const double gap = 0.01 * (1 + high.x - low.x + high.y - low.y);
    for (const double inward : {high.x - max.x, high.y - max.y, min.x - low.x, min.y - low.y}) {
      EXPECT_TRUE(inward >= -1e-7 && inward <= gap) << inward;
    }
  }
}

}  // namespace
