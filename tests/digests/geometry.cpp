#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>
#include <zelvan/geometry/trig.h>
#include <zelvan/geometry/units.h>

#include "digests/group.h"
#include "support/random.h"

#include <climits>
#include <cmath>

namespace {

using support::Random;

/// By kind: small whole numbers with both zeros and a hair beside them, so that ends coincide and
/// directions are equal; plain numbers; hard ones; and the tolerances of conics, one step beyond,
/// and coefficients that lead there.
double number(Random& random, int kind) {
  static const double at = 1e-05, over = std::nextafter(at, 1), far = 4 * at;
  static const double whole[] = {-2, -1, -0.0, 0, 1, 2, -1e-17, 0.5};
  static const double close[] = {0, 1, 4, 0.25, at, -at, over, -over, far, std::nextafter(far, 1)};
  if (kind == 0) return whole[random.below(8)];
  if (kind == 3) return close[random.below(10)];
  return kind == 1 ? random.between(-9, 9) : random.hard_double();
}

real_pt_t point(Random& random, int kind) { return {number(random, kind), number(random, kind)}; }

const Group distances("geometry.distances", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 60'000; ++i) {
    const int kind = i % 4;
    real_pt_t p = point(random, kind), a = point(random, kind), b = point(random, kind);
    real_pt_t box[] = {a, b, point(random, kind), point(random, kind)};
    const double radius = number(random, kind);
    const auto clockwise = static_cast<short>(random.below(3) - 1);
    if (i % 5 == 0) b.y = a.y;
    if (i % 7 == 0) b.x = a.x;
    digest(utl_point_point(&p, &a), utl_point_line(&p, &a, &b), utl_point_box(&p, box),
           utl_point_circle(&p, &a, radius),
           utl_point_circarc(&p, &a, radius, &b, &box[2], clockwise));
  }
});

const Group extents("geometry.extents", [](Digest& digest) {
  Random random(2);
  for (int i = 0; i < 60'000; ++i) {
    const int kind = i % 4;
    const real_pt_t given = point(random, kind);
    real_pt_t center = given, a = point(random, kind), b = point(random, kind), max, min;
    const auto take_box = [&] { digest(max, min); };
    double c[9];
    for (double& v : c) v = number(random, kind);
    // A tenth as `float` is none as `double`.
    utl_maxmin_arc(&center, 0.1f * static_cast<float>(i % 9 - 4), &a, &b,
                   static_cast<short>(random.below(3) - 1), &max, &min);
    take_box();
    utl_maxmin_circle(&center, c[0], &max, &min);
    take_box();
    utl_maxmin_cubic(c, &max, &min);
    take_box();
    utl_rotate_point(&center, &a, c[0], c[1]);
    digest(a, utl_evaluate_cubic(c, c[4]));
    utl_maxmin_rotrect(&center, c, c[8]);
    digest(c);
  }
});

// The turn between two vectors stays at exactly half a turn, by the ten digits of pi that decide.
const Group angles("geometry.angles", [](Digest& digest) {
  Random random(3);
  for (int i = 0; i < 20'000; ++i) {
    const real_pt_t a = point(random, i % 3), b = point(random, i % 3);
    double sine, cosine;
    drw_get_trig(i < 1500 ? i - 750 : i % 2 == 0 ? INT_MIN + i : INT_MAX - i, &sine, &cosine);
    digest(utl_angle2d(a.x, a.y, b.x, b.y), sine, cosine);
    digest(utl_inches_to_units(a.x, i % 14 - 1), utl_units_to_inches(a.y, i % 15 - 2));
  }
});

/// Takes what there is of a conic: its type, its three standard forms, points on them, distances
/// and extents.
void take(Digest& digest, Random& random, utl_conic_t conic) {
  utl_ellipse_t e;
  utl_hyperbola_t h;
  utl_parabola_t p;
  real_pt_t at, max, min;
  utl_standard_ellipse(&conic, &e);
  utl_standard_hyperbola(&conic, &h);
  utl_standard_parabola(&conic, &p);
  digest(utl_conic_type(&conic), e.sin_rot, e.cos_rot, e.off_x, e.off_y, e.start, e.sweep, e.axis_x,
         e.axis_y, h.sin_rot, h.cos_rot, h.cen_x, h.cen_y, h.start, h.end, h.sq_x, h.sq_y, h.branch,
         h.y_branches, p.sin_rot, p.cos_rot, p.vtx_x, p.vtx_y, p.start, p.end, p.k, p.y_of_x);
  const double part = random.unit();
  utl_ellipse_point(&e, part * e.sweep, &at);
  digest(at);
  utl_hyperbola_point(&h, part * (h.end - h.start), &at);
  digest(at);
  utl_parabola_point(&p, part * (p.end - p.start), &at);
  digest(at, utl_point_conarc(&at, &conic));
  utl_maxmin_conic(&conic, &max, &min);
  digest(max, min);
}

const Group conics("geometry.conics", [](Digest& digest) {
  Random random(4);
  for (int i = 0; i < 12'000; ++i) {
    const int kind = i % 4;
    const auto v = [&] { return number(random, kind); };
    const auto clockwise = static_cast<short>(random.below(3) - 1);
    utl_conic_t conic = {v(), v(), v(), v(), v(), v(), {v(), v()}, {v(), v()}, clockwise};
    if (i % 3 == 0) conic.b = 0;            // level
    if (i % 5 == 0) conic.c = conic.a;      // a circle, or turned by 45 degrees
    if (i % 7 == 0) conic.b = 2 * conic.a;  // then two equal lines
    if (i % 11 == 0) conic.c = conic.b * conic.b / (4 * conic.a);
    if (i % 4 == 1) {  // through the first end, so that most are there
      const auto [x, y] = conic.start;
      conic.f = -(conic.a * x + conic.b * y + conic.d) * x - (conic.c * y + conic.e) * y;
    }
    take(digest, random, conic);
  }
});

// Arcs of the unit circle: of the least sweep that isn't taken for the whole, and of whole numbers
// of sampling steps.
const Group arcs("geometry.arcs", [](Digest& digest) {
  Random random(5);
  for (int i = 0; i < 4000; ++i) {
    const double from = random.between(-3, 3), steps = random.below(72);
    const double to = from + (steps < 3 ? 0.0001 : 0.087 * steps);
    utl_ellipse_t unit = {0, 1, 0, 0, from, to - from, 1, 1};
    utl_conic_t conic = {1, 0, 1, 0, 0, -1, {}, {}, static_cast<short>(i % 3 - 1)};
    utl_ellipse_point(&unit, 0, conic.clockwise ? &conic.end : &conic.start);
    utl_ellipse_point(&unit, unit.sweep, conic.clockwise ? &conic.start : &conic.end);
    take(digest, random, conic);
    // From north to west of an ellipse that is flat, or not, by the last digit of its thinner axis.
    conic = {1, 0, 1e4 + (i % 20 - 10) * 0x1p-39, 0, 0, -1.0 * i, {0, 1}, {-1, 0}, 0};
    if (i % 3 == 0) std::swap(conic.a, conic.c);
    take(digest, random, conic);
  }
});

// Forms of any numbers, which no conic need have.
const Group forms("geometry.forms", [](Digest& digest) {
  Random random(6);
  for (int i = 0; i < 20'000; ++i) {
    const auto v = [&] { return number(random, i % 4); };
    utl_ellipse_t e = {v(), v(), v(), v(), v(), 0, v(), v()};
    utl_hyperbola_t h = {v(), v(), v(), v(), v(), 0, v(), v(), v(), i % 3 == 0};
    utl_parabola_t p = {v(), v(), v(), v(), v(), 0, v(), i % 3 == 0};
    const double t = v();
    real_pt_t at[3];
    utl_ellipse_point(&e, t, &at[0]);
    utl_hyperbola_point(&h, t, &at[1]);
    utl_parabola_point(&p, t, &at[2]);
    digest(at);
  }
});

}  // namespace
