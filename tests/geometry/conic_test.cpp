#include <zelvan/geometry/conic.h>

#include "support/random.h"

#include <cmath>

#include <gtest/gtest.h>

TEST(ConicType, TellsTheKindsApart) {
  const double at = 1e-05, over = std::nextafter(at, 1);
  const double kinds[][5] = {{1, 0, 1, 0, 0},   {1, at, 1, 0, 0},       // circles
                             {1, 0, 2, 0, 0},   {1, over, 1, 0, 0},     // ellipses
                             {1, 0, -1, 0, 0},  {1, 3, 1, 0, 0},        // hyperbolas
                             {1, 2, 1, 1, 1},   {.001, 0, .001, 0, 0},  // parabolas
                             {0, 1, 0, 0, 0},   {at, at, at, 9, 9},     // lines
                             {NAN, 0, 1, 0, 0}, {INFINITY, INFINITY, 1, 0, 0}};
  for (int i = 0; i < 12; ++i) {
    const auto& [a, b, c, d, e] = kinds[i];
    utl_conic_t conic = {a, b, c, d, e, -1, {}, {}, 0};
    EXPECT_EQ(utl_conic_type(&conic), "CEHPL?"[i / 2]) << i;
  }
}

// Each form of a conic through a random point, turned by any angle, starts there, and has the
// curve's points on its way to the other end.
TEST(StandardForms, RunAlongTheCurve) {
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    support::Random random(seed);
    const auto number = [&] { return random.between(-3, 3); };
    const double a = number(), b = number(), c = seed % 3 == 0 ? b * b / (4 * a) : number();
    const double d = number(), e = number();
    const real_pt_t p = {number(), number()}, q = {number(), number()};
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
    EXPECT_EQ(h.sin_rot, std::sin(0.5 * std::atan2(b, a - c)));
    for (const double part : {0.0, 0.3, 1.0}) {
      real_pt_t at;
      const char type = utl_conic_type(&conic);
      if (type == 'E') utl_ellipse_point(&ellipse, part * ellipse.sweep, &at);
      if (type == 'H') utl_hyperbola_point(&h, part * (h.end - h.start), &at);
      if (type == 'P') utl_parabola_point(&parabola, part * (parabola.end - parabola.start), &at);
      EXPECT_NEAR(f(at), conic.f, 1e-6);
      EXPECT_TRUE(part > 0 || std::hypot(at.x - p.x, at.y - p.y) < 1e-6);
    }
  }
}
