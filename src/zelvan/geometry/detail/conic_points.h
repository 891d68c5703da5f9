/// Points of the standard forms, inline for loops along a whole arc.
#pragma once

#include <zelvan/geometry/conic.h>

#include <cmath>

namespace zelvan {

/// Converts a point from the turned frame to drawing coordinates.
template <class Form>
real_pt_t in_drawing(const Form& form, double u, double v) {
  return {u * form.cos_rot - v * form.sin_rot, v * form.cos_rot + u * form.sin_rot};
}

inline real_pt_t point_at(const utl_ellipse_t& form, double t) {
  const double p = t + form.start;
  const double u = std::cos(p) * form.axis_x - form.off_x;
  const double v = std::sin(p) * form.axis_y - form.off_y;
  return in_drawing(form, u, v);
}

inline real_pt_t point_at(const utl_hyperbola_t& form, double t) {
  const double p = t + form.start;
  if (form.y_branches) {
    const double u = p + form.cen_x;
    const double v = form.branch * std::sqrt((1.0 - p * p / form.sq_x) * form.sq_y) + form.cen_y;
    return in_drawing(form, u, v);
  }
  const double v = p + form.cen_y;
  const double u = form.branch * std::sqrt((1.0 - p * p / form.sq_y) * form.sq_x) + form.cen_x;
  return in_drawing(form, u, v);
}

inline real_pt_t point_at(const utl_parabola_t& form, double t) {
  const double p = t + form.start;
  const double across = form.k * p * p;
  if (form.y_of_x) return in_drawing(form, p + form.vtx_x, across + form.vtx_y);
  return in_drawing(form, across + form.vtx_x, p + form.vtx_y);
}

}  // namespace zelvan
