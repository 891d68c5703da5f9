// Computes the type, standard form, points and box of a conic arc, and the distance of a point from
// it; then a circular arc with the same ends, and a cubic. Required: the boxes of the conic arc and
// the cubic are in order, the first contains the ends of the arc, no distance is negative, and
// every call returns.

#include <zelvan/geometry/conic.h>
#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>

#include "bytes.h"

#include <cmath>

namespace {

using fuzz::require;

bool is_outside(double v, double low, double high) { return v < low || v > high; }

/// Returns false for a NaN: if an end is a NaN, the box may be NaN as well.
bool is_outside(const real_pt_t& p, const real_pt_t& min, const real_pt_t& max) {
  return is_outside(p.x, min.x, max.x) || is_outside(p.y, min.y, max.y);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  utl_conic_t conic;
  for (double* v : {&conic.a, &conic.b, &conic.c, &conic.d, &conic.e, &conic.f, &conic.start.x,
                    &conic.start.y, &conic.end.x, &conic.end.y}) {
    *v = bytes.number();
  }
  conic.clockwise = static_cast<short>(bytes.below(3) - 1);
  real_pt_t p = {bytes.number(), bytes.number()}, max, min, on;

  const char type = utl_conic_type(&conic);
  require(std::strchr("LPHEC?", type) != nullptr);
  const double t = bytes.number();
  utl_ellipse_t ellipse;
  utl_hyperbola_t hyperbola;
  utl_parabola_t parabola;
  utl_standard_ellipse(&conic, &ellipse);
  utl_ellipse_point(&ellipse, t, &on);
  utl_standard_hyperbola(&conic, &hyperbola);
  utl_hyperbola_point(&hyperbola, t, &on);
  utl_standard_parabola(&conic, &parabola);
  utl_parabola_point(&parabola, t, &on);
  if (type == 'E' || type == 'C') {
    require(!is_outside(ellipse.start, -3.15, 3.15) && !is_outside(ellipse.sweep, -6.3, 6.3));
  }

  utl_maxmin_conic(&conic, &max, &min);
  require(!(max.x < min.x) && !(max.y < min.y));
  require(!is_outside(conic.start, min, max) && !is_outside(conic.end, min, max));
  require(!(utl_point_conarc(&p, &conic) < 0.0));

  real_pt_t center = {bytes.number(), bytes.number()};
  const double radius = bytes.number();
  utl_maxmin_arc(&center, static_cast<float>(radius), &conic.start, &conic.end, conic.clockwise,
                 &max, &min);
  const double reach =
      utl_point_circarc(&p, &center, radius, &conic.start, &conic.end, conic.clockwise);
  require(!(reach < 0.0));
  require(!(utl_point_circle(&p, &center, radius) < 0.0));
  require(!(utl_point_line(&p, &conic.start, &conic.end) < 0.0));
  utl_maxmin_circle(&center, radius, &max, &min);

  double cubic[8];
  for (double& v : cubic) v = bytes.number();
  utl_maxmin_cubic(cubic, &max, &min);
  require(!(max.x < min.x) && !(max.y < min.y));
  double box[] = {conic.start.x, conic.start.y, conic.end.x, conic.end.y};
  utl_maxmin_rotrect(&center, box, t);
  require(!(box[2] < box[0]) && !(box[3] < box[1]));
  return 0;
}
