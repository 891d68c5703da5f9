#include <zelvan/geometry/conic.h>

#include "support/random.h"

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

// 4 (x - 1)^2 + y^2 = 4 from every 30 degrees on: a sweep runs the way it is asked to, and ends
// that coincide to within 0.0001 mean the whole turn.
TEST(StandardEllipse, SweepsTheWayItIsAsked) {
  for (int i = 0; i < 24; ++i) {
    for (const double turn : {0.0, 0.00009, 0.00011, M_PI / 6, M_PI / 2, M_PI, 4.0, 6.0}) {
      SCOPED_TRACE(testing::Message() << i << ", " << turn);
      const bool clockwise = i % 2 != 0;
      const double first = i * M_PI / 12 + 0.001, last = clockwise ? first - turn : first + turn;
      utl_conic_t conic = {4, 0, 1, -8, 0, 0, {}, {}, clockwise};
      conic.start = {1 + std::cos(first), 2 * std::sin(first)};
      conic.end = {1 + std::cos(last), 2 * std::sin(last)};
      utl_ellipse_t form;
      utl_standard_ellipse(&conic, &form);
      const double sweep = turn < 0.0001 ? turn + 2 * M_PI : turn;
      EXPECT_NEAR(form.sweep, clockwise ? -sweep : sweep, 1e-9);
      EXPECT_NEAR(std::remainder(form.start - first, 2 * M_PI), 0, 1e-9);
    }
  }
  for (const double long_axis : {100.0, 99.999}) {  // to 1: the first is flat
    utl_conic_t conic = {1, 0, long_axis * long_axis, 0, 0, -1, {0.6, 0.8 / 99}, {-1, 0}, 0};
    utl_ellipse_t form;
    utl_standard_ellipse(&conic, &form);
    EXPECT_EQ(form.sweep > 0 && form.start > 0, long_axis < 100);
  }
}

// Ellipses, hyperbolas that open along either axis, on either branch, and both kinds of
// parabola, made as P u^2 + Q v^2 + R u + S v = T in a turned and moved frame: each form starts
// and ends at the arc's ends and has the middle of its free parameter on the curve.
TEST(StandardForms, RunFromEndToEndAlongTheCurve) {
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    support::Random random(seed);
    const int kind = static_cast<int>(seed % 5);
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", kind " << kind);
    const double turn = random.below(3) == 0 ? 0.0 : random.between(-4, 4);
    const double cos_r = std::cos(turn), sin_r = std::sin(turn);
    const double cu = random.between(-3, 3), cv = random.between(-3, 3);
    const double m = random.between(0.5, 4), n = random.between(0.5, 4);
    const double side = random.below(2) == 0 ? 1 : -1;
    const double t0 = random.between(-3, 3), t1 = t0 + side * random.between(0.1, 3);
    const auto at = [&](double t) -> real_pt_t {
      const double sq = side * m * t * t,
                   us[] = {m * std::cos(t), side * m * std::hypot(1, t / n), t, t, sq};
      const double vs[] = {n * std::sin(t), t, side * n * std::hypot(1, t / m), sq, t};
      const double u = us[kind] + cu, v = vs[kind] + cv;
      return {u * cos_r - v * sin_r, v * cos_r + u * sin_r};
    };
    const double mm = 1 / (m * m), nn = 1 / (n * n), k = m * side;
    const double ps[] = {mm, mm, -mm, k, 0}, qs[] = {nn, -nn, nn, 0, k}, p = ps[kind], q = qs[kind];
    const double r = kind == 4 ? -1 : 0, s = kind == 3 ? -1 : 0, t = kind <= 2 ? 1 : 0;
    const double lu = r - 2 * p * cu, lv = s - 2 * q * cv;
    const double xx = p * cos_r * cos_r + q * sin_r * sin_r, xy = 2 * cos_r * sin_r * (p - q);
    const double yy = p * sin_r * sin_r + q * cos_r * cos_r;
    const double x = cos_r * lu - sin_r * lv, y = sin_r * lu + cos_r * lv;
    const double constant = p * cu * cu + q * cv * cv - r * cu - s * cv - t;
    utl_conic_t conic = {xx, xy, yy, x, y, constant, at(t0), at(t1), side < 0};
    ASSERT_EQ(utl_conic_type(&conic), "EHHPP"[kind]);
    utl_ellipse_t ellipse;
    utl_hyperbola_t hyperbola;
    utl_parabola_t parabola;
    utl_standard_ellipse(&conic, &ellipse);
    utl_standard_hyperbola(&conic, &hyperbola);
    utl_standard_parabola(&conic, &parabola);
    const double lengths[] = {ellipse.sweep, hyperbola.end - hyperbola.start,
                              parabola.end - parabola.start};
    for (const double part : {0.0, 0.5, 1.0}) {
      real_pt_t got;
      if (kind == 0) utl_ellipse_point(&ellipse, part * lengths[0], &got);
      if (kind == 1 || kind == 2) utl_hyperbola_point(&hyperbola, part * lengths[1], &got);
      if (kind >= 3) utl_parabola_point(&parabola, part * lengths[2], &got);
      const real_pt_t expected = at(t0 + (t1 - t0) * part);
      ASSERT_NEAR(got.x, expected.x, 1e-6) << part;
      ASSERT_NEAR(got.y, expected.y, 1e-6) << part;
    }
  }
}

}  // namespace
