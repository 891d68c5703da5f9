/// Points along a conic arc, at equal steps of its parameter.
#pragma once

#include <zelvan/geometry/conic.h>
#include <zelvan/geometry/detail/conic_points.h>

#include <cmath>

namespace zelvan {

/// The step by which elliptical arcs are sampled, in radians of the parameter. An arc is cut into
/// as many whole steps as it holds, but at least two, which are then scaled to fill it exactly. A
/// whole ellipse has 72 steps of 5 degrees, and no step exceeds 7.5 degrees.
constexpr double sampling_angle = 0.087;

/// The number of samples on a hyperbola or parabola, whatever the length of the arc.
constexpr int open_curve_samples = 40;

/// Returns the number of samples for a sweep, at least 3, so that a flat ellipse with its sweep of
/// 0.0 is sampled too. A NaN sweep has 3 as well: all but perhaps the first are NaN, which every
/// comparison rejects.
inline int ellipse_samples(double sweep) {
  const double steps = std::fabs(sweep) / sampling_angle;
  return steps >= 3.0 ? 1 + static_cast<int>(steps) : 3;
}

/// Calls `visit` with `count` points of `form`, starting at its start. The parameter is a running
/// sum of steps, not a product: distances and boxes depend on it to the last bit.
template <class Form, class Visit>
void visit_samples(const Form& form, int count, double step, Visit& visit) {
  double t = 0.0;
  for (int i = 0; i < count; ++i) {
    visit(point_at(form, t));
    t += step;
  }
}

/// Samples a conic: calls `visit(const real_pt_t&)` with points from the arc's start to its other
/// end. Returns the type. A line and an unknown conic have no samples.
template <class Visit>
char visit_conic_samples(utl_conic_t* conic, Visit visit) {
  const char type = utl_conic_type(conic);
  if (type == utl_conic_circle || type == utl_conic_ellipse) {
    utl_ellipse_t form;
    utl_standard_ellipse(conic, &form);
    const int count = ellipse_samples(form.sweep);
    visit_samples(form, count, form.sweep / (count - 1), visit);
  } else if (type == utl_conic_hyperbola) {
    utl_hyperbola_t form;
    utl_standard_hyperbola(conic, &form);
    const double step = (form.end - form.start) / (open_curve_samples - 1);
    visit_samples(form, open_curve_samples, step, visit);
  } else if (type == utl_conic_parabola) {
    utl_parabola_t form;
    utl_standard_parabola(conic, &form);
    const double step = (form.end - form.start) / (open_curve_samples - 1);
    visit_samples(form, open_curve_samples, step, visit);
  }
  return type;
}

}  // namespace zelvan
