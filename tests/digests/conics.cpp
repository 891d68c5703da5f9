#include "digests/group.h"

#include <cmath>

namespace {

/// By kind: small whole numbers; plain ones; hard ones; or the tolerance of conics and one step
/// beyond it.
double coefficient(Random& random, int kind) {
  static const double close[] = {0.0, 1.0, 1e-05, -1e-05, std::nextafter(1e-05, 1.0), 4e-05};
  if (kind == 0) return random.below(5) - 2.0;
  if (kind == 1) return random.between(-9, 9);
  return kind == 2 ? random.hard_double() : close[random.below(6)];
}

/// Coefficients of every type now and then; the curve often runs through its arc's first end.
utl_conic_t some_conic(Random& random, int i) {
  const auto v = [&] { return coefficient(random, i % 4); };
  const auto clockwise = static_cast<short>(random.below(2));
  utl_conic_t conic = {v(), v(), v(), v(), v(), v(), {v(), v()}, {v(), v()}, clockwise};
  auto& [a, b, c, d, e, f, start, end, sense] = conic;
  if (i % 3 == 0) b = 0.0;
  if (i % 5 == 0) c = a;
  if (i % 7 == 0) b = 2.0 * a;
  if (i % 11 == 0) c = b * b / (4.0 * a);
  if (i % 2 == 1) f = -(a * start.x + b * start.y + d) * start.x - (c * start.y + e) * start.y;
  return conic;
}

template <class Use>
void for_each_conic(int count, Use use) {
  Random random(1);
  for (int i = 0; i < count; ++i) use(some_conic(random, i), random);
}

const Group forms("geometry.conic_forms", [](Log& log) {
  for_each_conic(10'000, [&](utl_conic_t conic, Random& random) {
    log("utl_conic_type", inputs(conic), utl_conic_type(&conic));
    const double part = random.unit();
    real_pt_t at;
    utl_ellipse_t ellipse;
    utl_standard_ellipse(&conic, &ellipse);
    log("utl_standard_ellipse", inputs(conic), ellipse);
    utl_ellipse_point(&ellipse, part * ellipse.sweep, &at);
    log("utl_ellipse_point", inputs(ellipse, part), at);
    utl_hyperbola_t hyperbola;
    utl_standard_hyperbola(&conic, &hyperbola);
    log("utl_standard_hyperbola", inputs(conic), hyperbola);
    utl_hyperbola_point(&hyperbola, part * (hyperbola.end - hyperbola.start), &at);
    log("utl_hyperbola_point", inputs(hyperbola, part), at);
    utl_parabola_t parabola;
    utl_standard_parabola(&conic, &parabola);
    log("utl_standard_parabola", inputs(conic), parabola);
    utl_parabola_point(&parabola, part * (parabola.end - parabola.start), &at);
    log("utl_parabola_point", inputs(parabola, part), at);
  });
});

// Both walk along samples of the arc.
const Group samples("geometry.conic_samples", [](Log& log) {
  for_each_conic(6000, [&](utl_conic_t conic, Random& random) {
    real_pt_t max;
    real_pt_t min;
    utl_maxmin_conic(&conic, &max, &min);
    log("utl_maxmin_conic", inputs(conic), max, min);
    real_pt_t p = {random.between(-3.0, 3.0), random.between(-3.0, 3.0)};
    log("utl_point_conarc", inputs(p, conic), utl_point_conarc(&p, &conic));
  });
});

}  // namespace
