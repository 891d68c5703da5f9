#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>
#include <zelvan/geometry/trig.h>

#include "support/bits.h"
#include "support/random.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <gtest/gtest.h>

namespace {

using support::bits;
using support::Random;

// By kind: small whole numbers with both zeros and a hair beside them, so that ends coincide and
// directions are equal; plain numbers; hard ones; and the tolerances of conics, one step beyond,
// and coefficients that lead there.
double number(Random& random, int kind) {
  static const double at = 1e-05, over = std::nextafter(at, 1), far = 4 * at;
  static const double whole[] = {-2, -1, -0.0, 0, 1, 2, -1e-17, 0.5};
  static const double close[] = {0, 1, 4, 0.25, at, -at, over, -over, far, std::nextafter(far, 1)};
  if (kind == 0) return whole[random.below(8)];
  if (kind == 3) return close[random.below(10)];
  return kind == 1 ? random.between(-9, 9) : random.hard_double();
}

utl_conic_t random_conic(Random& random, int kind) {
  const auto v = [&] { return number(random, kind); };
  const auto clockwise = static_cast<short>(random.below(3) - 1);
  return {v(), v(), v(), v(), v(), v(), {v(), v()}, {v(), v()}, clockwise};
}

// The last bit of each formula is interface: one digest holds on every compiler at every
// optimisation level. No sine or arc comes in whose last bit is the C library's: conics are level
// or turned by 45 degrees, where that is no question, and no ellipse is sampled.
TEST(Geometry, GivesTheSameBitsEverywhere) {
  Random random(1);
  support::FnvDigest digest;
  const auto add = [&](auto... values) { (digest.add(bits(values)), ...); };
  for (int i = 0; i < 40'000; ++i) {
    utl_conic_t conic = random_conic(random, i % 4);
    double c[10];
    real_pt_t p[5], max, min;
    const auto add_box = [&] { digest.add(max), digest.add(min); };
    for (double& v : c) v = number(random, i % 4);
    for (real_pt_t& q : p) q = {number(random, i % 4), number(random, i % 4)};
    if (i % 5 == 0) p[2].y = p[1].y;  // a level segment
    add(utl_point_point(&p[0], &p[1]), utl_point_line(&p[0], &p[1], &p[2]));
    add(utl_point_box(&p[0], p + 1), utl_point_circle(&p[0], &p[1], c[0]));
    add(utl_point_circarc(&p[0], &p[1], c[0], &p[2], &p[3], conic.clockwise));
    utl_maxmin_arc(&p[0], 0.1f * (i % 9 - 4), &p[1], &p[2], conic.clockwise, &max, &min), add_box();
    utl_maxmin_circle(&p[0], c[0], &max, &min), add_box();
    utl_maxmin_cubic(c, &max, &min), add_box();
    utl_rotate_point(&p[0], &p[1], c[0], c[1]), digest.add(p[1]);
    add(utl_evaluate_cubic(c, c[4]), utl_conic_type(&conic));

    utl_ellipse_t e;
    utl_hyperbola_t h;
    utl_parabola_t a;
    i % 8 < 4 ? conic.b = 0 : conic.c = conic.a;
    utl_standard_ellipse(&conic, &e), add(e.sin_rot, e.off_x, e.off_y, e.axis_x, e.axis_y);
    utl_standard_hyperbola(&conic, &h), add(h.sin_rot, h.cos_rot, h.cen_x, h.cen_y, h.start);
    add(h.end, h.sq_x, h.sq_y, h.branch, h.y_branches, e.cos_rot);
    utl_standard_parabola(&conic, &a), add(a.sin_rot, a.cos_rot, a.vtx_x, a.vtx_y);
    add(a.start, a.end, a.k, a.y_of_x);
    if (const char type = utl_conic_type(&conic); type != 'C' && type != 'E')
      add(utl_point_conarc(&p[4], &conic)), utl_maxmin_conic(&conic, &max, &min), add_box();
    conic.c = conic.a, conic.b = 2 * conic.a, add(utl_conic_type(&conic));  // a double line
    // An arc from north to west, or flat: by the last digit of the thinner axis.
    conic = {1, 0, 1e4 + (i % 20 - 10) * 0x1p-39, 0, 0, -1.0 * i, {0, 1}, {-1, 0}, 0};
    if (i % 3 == 0) std::swap(conic.a, conic.c);
    utl_standard_ellipse(&conic, &e), add(e.axis_x, e.axis_y, e.start, e.sweep);

    e = {c[0], c[1], c[2], c[3], 0x1p-30, 0, c[4], c[5]};  // an angle that is its own sine
    h = {c[0], c[1], c[2], c[3], c[4], 0, c[5], c[6], c[7], i % 3 == 0};
    a = {c[0], c[1], c[2], c[3], c[4], 0, c[5], i % 3 == 0};
    utl_ellipse_point(&e, 0, &max), utl_hyperbola_point(&h, c[8], &min), add_box();
    utl_parabola_point(&a, c[8], &max), digest.add(max);
    utl_maxmin_rotrect(&p[0], c, i % 8 < 4 ? 0 : -M_PI / 4), add(c[0], c[1], c[2], c[3]);
  }
  EXPECT_EQ(digest.value(), 2641048362533565039u);
}

// An ellipse's parameters, points and samples are those of the plain formula with the C library's
// sines and arcs, to the last bit. Arcs of the least sweep and of a whole number of sampling steps
// are among them.
TEST(Ellipses, RestOnTheFunctionsOfTheCLibrary) {
  Random random(1);
  for (int i = 0; i < 20'000; ++i) {
    SCOPED_TRACE(i);
    const auto expect = [](double got, double expected) { EXPECT_EQ(bits(got), bits(expected)); };
    utl_conic_t conic = random_conic(random, i % 4);
    conic.b = 0, conic.c = i % 3 == 0 ? conic.a : conic.c;
    if (i % 8 == 1) {
      const double from = random.between(-3, 3), steps = random.below(72);
      const double to = from + (steps < 3 ? 0.0001 : 0.087 * steps);
      conic = {1, 0, 1, 0, 0, -1, {std::cos(from), std::sin(from)}, {}, conic.clockwise};
      conic.end = {std::cos(to), std::sin(to)};
      if (conic.clockwise) std::swap(conic.start, conic.end);
    }
    utl_ellipse_t e;
    utl_standard_ellipse(&conic, &e);
    const auto parameter = [&](real_pt_t end) {  // in a level frame, where infinities give NaN
      double x = (end.x + 0 * end.y + e.off_x) / e.axis_x;
      double y = (end.y - 0 * end.x + e.off_y) / e.axis_y;
      const double length = std::sqrt(x * x + y * y);
      if (length != 0) x /= length, y /= length;
      return y < 0 ? -std::acos(x) : std::acos(x);
    };
    const double start = parameter(conic.start), end = parameter(conic.end), turn = 2 * M_PI;
    double sweep = conic.clockwise || start < end ? end - start : end + turn - start;
    if (!((conic.clockwise ? -sweep : sweep) > 0.0001)) sweep += conic.clockwise ? -turn : turn;
    if (e.sweep != 0) expect(e.start, start), expect(e.sweep, sweep);
    utl_ellipse_t unit = {0, 1, 0, 0, start, 0, 1, 1};
    real_pt_t at, p = {random.between(-3, 3), random.between(-3, 3)};
    utl_ellipse_point(&unit, sweep, &at);
    expect(at.x, std::cos(sweep + start)), expect(at.y, std::sin(sweep + start));
    const char type = utl_conic_type(&conic);
    if (type != 'C' && type != 'E') continue;
    const double steps = std::fabs(e.sweep) / 0.087;
    const int gaps = steps >= 3 ? static_cast<int>(steps) : 2;
    double nearest = 6.022e+23, t = 0;
    for (int k = 0; k <= gaps; ++k, t += e.sweep / gaps)
      utl_ellipse_point(&e, t, &at), nearest = std::min(nearest, utl_point_point(&p, &at));
    expect(utl_point_conarc(&p, &conic), nearest);
  }
}

}  // namespace
