#include <zelvan/geometry/conic.h>
#include <zelvan/geometry/detail/conic_points.h>

#include <algorithm>
#include <cmath>

namespace {

// A coefficient or discriminant of at most this magnitude counts as zero.
constexpr double tolerance = 1e-05;

// Ends of an elliptical arc at most this far apart, in radians of the parameter, mean the whole
// ellipse.
constexpr double least_sweep = 0.0001;

// Two pi in full precision: an elliptical arc is completed with it, so that a whole ellipse ends
// where it began, as exactly as the parameter can be. Distances and extents of circular arcs use
// the short value.
constexpr double two_pi = 6.283185307179586;

bool is_zero(double v) { return std::fabs(v) <= tolerance; }  // false for NaN

// A conic in the frame that removes its cross term.
struct RotatedConic {
  double sine, cosine;
  double a, c, d, e, f;
  real_pt_t start, end;
  double scale;  // the largest of |a|, |c|, |d|, |e|
};

RotatedConic utl_conic_rotate(const utl_conic_t& conic) {
  const double angle = conic.b == 0.0 ? 0.0 : 0.5 * std::atan2(conic.b, conic.a - conic.c);
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  RotatedConic r;
  r.sine = s;
  r.cosine = c;
  r.a = c * conic.a * c + c * conic.b * s + s * conic.c * s;
  r.c = s * conic.a * s - c * conic.b * s + c * conic.c * c;
  r.d = s * conic.e + c * conic.d;
  r.e = c * conic.e - s * conic.d;
  r.f = conic.f;
  r.start = {s * conic.start.y + c * conic.start.x, c * conic.start.y - s * conic.start.x};
  r.end = {s * conic.end.y + c * conic.end.x, c * conic.end.y - s * conic.end.x};
  r.scale = std::max({std::fabs(r.a), std::fabs(r.c), std::fabs(r.d), std::fabs(r.e)});
  return r;
}

// Returns the right-hand side of the conic's equation after both squares are completed.
double completed_constant(const RotatedConic& r) {
  return r.e * r.e / (r.c * 4.0) + r.d * r.d / (r.a * 4.0) - r.f;
}

double parameter_angle(const utl_ellipse_t& form, const real_pt_t& end) {
  double x = (end.x + form.off_x) / form.axis_x;
  double y = (end.y + form.off_y) / form.axis_y;
  const double length = std::sqrt(x * x + y * y);
  if (length != 0.0) {
    x = x / length;
    y = y / length;
  }
  const double angle = std::acos(x);
  return y < 0.0 ? -angle : angle;
}

double signed_sweep(double start, double end, bool clockwise) {
  if (clockwise) {
    const double sweep = end - start;
    return sweep < -least_sweep ? sweep : sweep - two_pi;
  }
  if (start >= end) end += two_pi;
  const double sweep = end - start;
  return sweep > least_sweep ? sweep : sweep + two_pi;
}

}  // namespace

char utl_conic_type(utl_conic_t* conic) {
  const double a = conic->a;
  const double b = conic->b;
  const double c = conic->c;
  if (is_zero(a) && is_zero(b) && is_zero(c)) return utl_conic_line;
  if (is_zero(conic->e) && is_zero(c)) return utl_conic_line;
  if (is_zero(conic->d) && is_zero(a)) return utl_conic_line;
  const double discriminant = b * b - (a * 4.0) * c;
  if (is_zero(discriminant)) return utl_conic_parabola;
  if (discriminant > 0.0) return utl_conic_hyperbola;
  if (std::isnan(discriminant)) return utl_conic_unknown;
  return is_zero(b) && is_zero(a - c) ? utl_conic_circle : utl_conic_ellipse;
}

void utl_standard_ellipse(utl_conic_t* conic, utl_ellipse_t* out) {
  const RotatedConic r = utl_conic_rotate(*conic);
  out->sin_rot = r.sine;
  out->cos_rot = r.cosine;
  out->off_x = r.d / (r.a + r.a);
  out->off_y = r.e / (r.c + r.c);
  const double constant = completed_constant(r);
  out->axis_x = std::sqrt(std::fabs(constant / r.a));
  out->axis_y = std::sqrt(std::fabs(constant / r.c));
  const auto [smaller, larger] = std::minmax(out->axis_x, out->axis_y);
  if (larger * 0.01 >= smaller) {
    out->start = 0.0;
    out->sweep = 0.0;
    return;
  }
  out->start = parameter_angle(*out, r.start);
  out->sweep = signed_sweep(out->start, parameter_angle(*out, r.end), conic->clockwise != 0);
}

void utl_standard_hyperbola(utl_conic_t* conic, utl_hyperbola_t* out) {
  const RotatedConic r = utl_conic_rotate(*conic);
  out->sin_rot = r.sine;
  out->cos_rot = r.cosine;
  out->cen_x = -r.d / (r.a + r.a);
  out->cen_y = -r.e / (r.c + r.c);
  const double constant = completed_constant(r);
  out->sq_x = constant / r.a;
  out->sq_y = constant / r.c;
  out->y_branches = out->sq_x < 0.0;
  if (out->y_branches) {
    out->start = r.start.x - out->cen_x;
    out->end = r.end.x - out->cen_x;
    out->branch = r.start.y > out->cen_y ? 1.0 : -1.0;
  } else {
    out->start = r.start.y - out->cen_y;
    out->end = r.end.y - out->cen_y;
    out->branch = r.start.x > out->cen_x ? 1.0 : -1.0;
  }
}

void utl_standard_parabola(utl_conic_t* conic, utl_parabola_t* out) {
  const RotatedConic r = utl_conic_rotate(*conic);
  const double relative_tolerance = tolerance * r.scale;
  out->sin_rot = r.sine;
  out->cos_rot = r.cosine;
  if (std::fabs(r.a) > relative_tolerance && std::fabs(r.e) > relative_tolerance) {
    out->y_of_x = 1;
    out->vtx_x = -r.d / (r.a + r.a);
    out->vtx_y = (r.d * r.d / (r.a * 4.0) - r.f) / r.e;
    out->k = -r.a / r.e;
    out->start = r.start.x - out->vtx_x;
    out->end = r.end.x - out->vtx_x;
  } else {
    out->y_of_x = 0;
    out->vtx_y = -r.e / (r.c + r.c);
    out->vtx_x = (r.e * r.e / (r.c * 4.0) - r.f) / r.d;
    out->k = -r.c / r.d;
    out->start = r.start.y - out->vtx_y;
    out->end = r.end.y - out->vtx_y;
  }
}

void utl_ellipse_point(utl_ellipse_t* form, double t, real_pt_t* out) {
  *out = zelvan::point_at(*form, t);
}

void utl_hyperbola_point(utl_hyperbola_t* form, double t, real_pt_t* out) {
  *out = zelvan::point_at(*form, t);
}

void utl_parabola_point(utl_parabola_t* form, double t, real_pt_t* out) {
  *out = zelvan::point_at(*form, t);
}
