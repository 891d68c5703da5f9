#include "digests/group.h"

#include <climits>

namespace {

/// By kind: small whole numbers and a hair beside them, so that ends coincide and directions are
/// equal; plain numbers; or hard ones.
double number(Random& random, int kind) {
  static constexpr double whole[] = {-2.0, -1.0, -0.0, 0.0, 1.0, 2.0, -1e-17, 0.5};
  if (kind == 0) return whole[random.below(8)];
  return kind == 1 ? random.between(-9, 9) : random.hard_double();
}

real_pt_t point(Random& random, int kind) { return {number(random, kind), number(random, kind)}; }

const Group distances("geometry.distances", [](Log& log) {
  Random random(1);
  for (int i = 0; i < 15'000; ++i) {
    real_pt_t p = point(random, i % 3);
    real_pt_t corners[4];
    for (real_pt_t& corner : corners) corner = point(random, i % 3);
    const double radius = number(random, i % 3);
    log("utl_point_point", inputs(p, corners[0]), utl_point_point(&p, &corners[0]));
    log("utl_point_line", inputs(p, corners), utl_point_line(&p, &corners[0], &corners[1]));
    log("utl_point_box", inputs(p, corners), utl_point_box(&p, corners));
    log("utl_point_circle", inputs(p, corners[0], radius),
        utl_point_circle(&p, &corners[0], radius));
  }
});

const Group arcs("geometry.arcs", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 15'000; ++i) {
    real_pt_t p = point(random, i % 3);
    real_pt_t center = point(random, i % 3);
    real_pt_t ends[] = {point(random, i % 3), point(random, i % 3)};
    const double radius = 0.1 * (i % 9 - 4);  // another number as a `float`
    const auto clockwise = static_cast<short>(random.below(2));
    log("utl_point_circarc", inputs(p, center, radius, ends, clockwise),
        utl_point_circarc(&p, &center, radius, &ends[0], &ends[1], clockwise));
    real_pt_t max;
    real_pt_t min;
    utl_maxmin_arc(&center, radius, &ends[0], &ends[1], clockwise, &max, &min);
    log("utl_maxmin_arc", inputs(center, radius, ends, clockwise), max, min);
  }
});

const Group cubics("geometry.cubics", [](Log& log) {
  Random random(3);
  for (int i = 0; i < 15'000; ++i) {
    double coefficients[8];
    for (double& c : coefficients) c = number(random, i % 3);
    log("utl_evaluate_cubic", inputs(coefficients), utl_evaluate_cubic(coefficients, 0.3));
    real_pt_t max;
    real_pt_t min;
    utl_maxmin_cubic(coefficients, &max, &min);
    log("utl_maxmin_cubic", inputs(coefficients), max, min);
  }
});

const Group turns("geometry.turns", [](Log& log) {
  Random random(4);
  for (int i = 0; i < 15'000; ++i) {
    real_pt_t center = point(random, i % 3);
    const real_pt_t p = point(random, i % 3);
    const real_pt_t q = point(random, i % 3);
    const double angle = number(random, i % 3);
    real_pt_t turned = p;
    utl_rotate_point(&center, &turned, q.x, q.y);
    log("utl_rotate_point", inputs(center, p, q), turned);
    log("utl_angle2d", inputs(p, q), utl_angle2d(p.x, p.y, q.x, q.y));
    double box[8] = {p.x, p.y, q.x, q.y, 1.0, p.y, q.x, 0.5};
    utl_maxmin_rotrect(&center, box, angle);
    log("utl_maxmin_rotrect", inputs(center, p, q, angle), box);
    const int degrees = i < 1500 ? i - 750 : INT_MAX - i;
    double sine;
    double cosine;
    drw_get_trig(degrees, &sine, &cosine);
    log("drw_get_trig", inputs(degrees), sine, cosine);
  }
});

const Group units("geometry.units", [](Log& log) {
  Random random(5);
  for (int i = 0; i < 6000; ++i) {
    const double length = random.hard_double();
    const int unit = i % 15 - 2;
    log("utl_inches_to_units", inputs(length, unit), utl_inches_to_units(length, unit));
    log("utl_units_to_inches", inputs(length, unit), utl_units_to_inches(length, unit));
  }
});

}  // namespace
