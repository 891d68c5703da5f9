#include <zelvan/geometry/conic.h>

#include <cmath>

#include <gtest/gtest.h>

static real_pt_t point_of(utl_conic_t conic, char type, double part) {
  real_pt_t p{};
  if (type == utl_conic_parabola) {
    utl_parabola_t form;
    utl_standard_parabola(&conic, &form);
    utl_parabola_point(&form, part * (form.end - form.start), &p);
  } else if (type == utl_conic_hyperbola) {
    utl_hyperbola_t form;
    utl_standard_hyperbola(&conic, &form);
    utl_hyperbola_point(&form, part * (form.end - form.start), &p);
  } else {
    utl_ellipse_t form;
    utl_standard_ellipse(&conic, &form);
    EXPECT_EQ(form.sweep < 0, conic.clockwise == 1) << "the sign of the sweep";
    utl_ellipse_point(&form, part * form.sweep, &p);
  }
  return p;
}

TEST(Conics, RunFromEndToEndAlongTheCurve) {
  const double r = std::sqrt(2), w = std::sqrt(3);
  // The vertex is halfway on the arc: its ends are mirror images about an axis through it.
  const auto expect = [](char type, utl_conic_t conic, real_pt_t vertex, const char* why) {
    SCOPED_TRACE(why);
    EXPECT_EQ(utl_conic_type(&conic), type);
    const real_pt_t wanted[] = {conic.start, vertex, conic.end};
    for (const int i : {0, 1, 2}) {
      EXPECT_NEAR(point_of(conic, type, i / 2.0).x, wanted[i].x, 3e-4) << "at half " << i;
      EXPECT_NEAR(point_of(conic, type, i / 2.0).y, wanted[i].y, 3e-4) << "at half " << i;
    }
  };
  // Each conic has its coefficients a to f, its start and end, and whether it runs clockwise.
  expect('C', {1, 0, 1, 0, 0, -25, {-3, 4}, {-3, -4}, 1}, {5, 0}, "x^2 + y^2 = 25, clockwise");
  expect('C', {1, 0, 1, 0, 0, -25, {5, 0}, {5, -0.0004}, 1}, {-5, 0}, "nearly coincide: all of it");
  expect('E', {1, 0, 10000, 0, 0, -10000, {100, 0}, {100, 0}, 0}, {100, 0}, "flat: one point");
  expect('E', {1, 0, 9999, 0, 0, -10000, {100, 0}, {100, 4e-5}, 0}, {-100, 0}, "less flat: all");
  expect('E', {1, 0, 4, -6, 8, -3, {7, -1}, {-1, -1}, 0}, {3, 1}, "(x - 3)^2 + 4 (y + 1)^2 = 16");
  expect('E', {5, -6, 5, 0, 0, -32, {2 * r, 2 * r}, {-2 * r, -2 * r}, 0}, {-r, r}, "turned");
  expect('H', {1, 0, -1, -2, 2, -3, {-1, 0}, {-1, 2}, 0}, {1 - w, 1}, "(x - 1)^2 - (y - 1)^2 = 3");
  expect('H', {-1, 0, 1, 2, -2, -3, {2, 3}, {0, 3}, 0}, {1, 1 + w}, "(y - 1)^2 - (x - 1)^2 = 3");
  expect('P', {1, 0, 0, -2, -2, 3, {-1, 3}, {3, 3}, 0}, {1, 1}, "(x - 1)^2 = 2 (y - 1)");
  expect('P', {0, 0, 1, -2, -2, 3, {3, -1}, {3, 3}, 0}, {1, 1}, "(y - 1)^2 = 2 (x - 1)");
  expect('P', {1, 2, 1, -1, 1, 0, {3, -1}, {1, -3}, 0}, {0, 0}, "(x + y)^2 = x - y");
}

TEST(ConicType, CountsUpTo1e05AsZero) {
  const double at = 1e-05, over = std::nextafter(at, 1);
  const auto type = [](double a, double b, double c, double d, double e) {
    utl_conic_t conic = {a, b, c, d, e, -1, {}, {}, 0};
    return utl_conic_type(&conic);
  };
  EXPECT_EQ(type(1, at, 1, 0, 0), 'C');
  EXPECT_EQ(type(1, over, 1, 0, 0), 'E') << "a cross term";
  EXPECT_EQ(type(at, at, at, 9, 9), 'L') << "no squares";
  EXPECT_EQ(type(1, 0, at, 9, at), 'L') << "no y";
  EXPECT_EQ(type(at, 0, 1, at, 9), 'L') << "no x";
  EXPECT_EQ(type(1, 0, -at, 9, 9), 'H') << "discriminant 4e-05";
}
