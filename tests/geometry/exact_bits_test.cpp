#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>
#include <zelvan/geometry/trig.h>

#include "support/bits.h"
#include "support/random.h"

#include <cmath>

#include <gtest/gtest.h>

// The last bit of each formula is interface: one digest over plain and hard numbers holds on
// every compiler at every optimisation level, where no sine or arc comes in whose last bit is
// the C library's: conics are level here or turned by 45 degrees, where that is no question.
TEST(Geometry, GivesTheSameBitsEverywhere) {
  support::Digest digest;
  const auto add = [&](auto... values) { (digest.add(support::bits(values)), ...); };
  for (unsigned seed = 1; seed <= 4000; ++seed) {
    support::Random random(seed);
    double c[8];
    real_pt_t p[4], max, min;
    for (double& v : c) v = seed % 4 == 0 ? random.hard_double() : random.between(-9, 9);
    for (real_pt_t& q : p) q = {c[random.below(8)], random.between(-9, 9)};
    add(utl_point_line(&p[0], &p[1], &p[2]), utl_point_box(&p[0], p));
    add(utl_point_circle(&p[0], &p[1], c[0]), utl_evaluate_cubic(c, c[4]));
    utl_maxmin_cubic(c, &max, &min);
    digest.add(max), digest.add(min);
    utl_rotate_point(&p[0], &p[1], c[0], c[1]);
    digest.add(p[1]);
    utl_conic_t conic = {c[0], 0, c[2], c[3], c[4], c[5], p[0], p[1], 0};
    utl_ellipse_t ellipse;
    utl_standard_ellipse(&conic, &ellipse);
    add(ellipse.off_x, ellipse.off_y, ellipse.axis_x, ellipse.axis_y);
    utl_hyperbola_t hyperbola;
    utl_standard_hyperbola(&conic, &hyperbola);
    utl_hyperbola_point(&hyperbola, c[6], &max);
    utl_parabola_t parabola;
    if (seed % 3 != 0) (seed % 3 == 1 ? conic.a : conic.c) = 0;
    utl_standard_parabola(&conic, &parabola);
    utl_parabola_point(&parabola, c[6], &min);
    digest.add(max), digest.add(min);
    if (utl_conic_type(&conic) == 'E' || utl_conic_type(&conic) == 'C') conic.c = -conic.c;
    add(utl_point_conarc(&p[2], &conic));
    utl_maxmin_conic(&conic, &max, &min);
    digest.add(max), digest.add(min);
    conic = {c[0], c[1], c[0], c[3], c[4], c[5], p[0], p[1], 0};  // turned by 45 degrees
    utl_standard_hyperbola(&conic, &hyperbola);
    add(hyperbola.cen_x, hyperbola.cen_y, hyperbola.sq_x, hyperbola.sq_y, hyperbola.end);
    utl_maxmin_rotrect(&p[0], c, M_PI / 4);
    add(c[0], c[1], c[2], c[3]);
  }
  EXPECT_EQ(digest.value(), 6469026943223404412u);
}
