// Conic arcs: the whole curve, the arc, its samples, and the box of these samples.

#include "gallery/contour.h"
#include "gallery/pages.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

// Computes, up to rounding, the sample points from which the library takes distances and extents.
template <class Form>
Points points_at(Form* form, void (*point_at)(Form*, double, real_pt_t*), int count,
                 double length) {
  Points points(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    point_at(form, length * i / (count - 1), &points[static_cast<std::size_t>(i)]);
  }
  return points;
}

Points samples_of(utl_conic_t conic) {
  switch (utl_conic_type(&conic)) {
    case utl_conic_circle:
    case utl_conic_ellipse: {
      utl_ellipse_t form;
      utl_standard_ellipse(&conic, &form);
      const int count = std::max(3, 1 + static_cast<int>(std::fabs(form.sweep) / 0.087));
      return points_at(&form, utl_ellipse_point, count, form.sweep);
    }
    case utl_conic_hyperbola: {
      utl_hyperbola_t form;
      utl_standard_hyperbola(&conic, &form);
      return points_at(&form, utl_hyperbola_point, 40, form.end - form.start);
    }
    case utl_conic_parabola: {
      utl_parabola_t form;
      utl_standard_parabola(&conic, &form);
      return points_at(&form, utl_parabola_point, 40, form.end - form.start);
    }
    default:
      return {conic.start, conic.end};
  }
}

void draw_conic(Canvas& canvas, const Grid& grid, int cell, const char* title, utl_conic_t conic) {
  const Points samples = samples_of(conic);
  Panel panel(canvas, grid.left(cell), grid.top(cell), grid.cell_width, grid.cell_height,
              {0.0, 0.0}, 9.0, title,
              std::string("type ") + utl_conic_type(&conic) + ", " +
                  std::to_string(samples.size()) + " samples");
  panel.axes();
  const auto equation = [&](real_pt_t p) {
    return conic.a * p.x * p.x + conic.b * p.x * p.y + conic.c * p.y * p.y + conic.d * p.x +
           conic.e * p.y + conic.f;
  };
  const auto curve = contour(equation, 0.0, panel.low(), panel.high(), 300);
  panel.stroke_all(curve, {{0.68, 0.72, 0.77}, 1.2});
  real_pt_t max, min;
  utl_maxmin_conic(&conic, &max, &min);
  panel.box(min, max, {orange, 1.4, true});
  panel.stroke(samples, {blue, 1.6});
  for (const real_pt_t& sample : samples) panel.dot(sample, 1.9, blue);
  panel.dot(conic.start, 4.6, ink, true);
  panel.dot(conic.end, 2.8, ink);
}

void draw(Canvas& canvas) {
  const Grid grid = {3, 280.0, 270.0, 12.0, 12.0};
  // (u / 3.4)^2 + (v / 1.7)^2 = 1 in axes turned by 30 degrees
  const double p = 1.0 / (3.4 * 3.4), q = 1.0 / (1.7 * 1.7);
  const double c = std::sqrt(0.75), s = 0.5;
  const auto turned = [&](double u, double v) -> real_pt_t {
    return {u * c - v * s, v * c + u * s};
  };
  const auto on_ellipse = [&](double t) { return turned(3.4 * std::cos(t), 1.7 * std::sin(t)); };
  utl_conic_t ellipse = {p * c * c + q * s * s,
                         2.0 * c * s * (p - q),
                         p * s * s + q * c * c,
                         0.0,
                         0.0,
                         -1.0,
                         on_ellipse(-0.4),
                         on_ellipse(2.2),
                         0};
  draw_conic(canvas, grid, 0, "Ellipse, counter-clockwise", ellipse);
  ellipse.clockwise = 1;
  draw_conic(canvas, grid, 1, "The same ends, clockwise", ellipse);
  ellipse.end = ellipse.start;
  draw_conic(canvas, grid, 2, "Ends that coincide", ellipse);

  const auto on_hyperbola = [](double y) -> real_pt_t { return {std::sqrt(1.0 + y * y / 1.5), y}; };
  utl_conic_t hyperbola = {
      1.0, 0.0, -1.0 / 1.5, 0.0, 0.0, -1.0, on_hyperbola(-1.2), on_hyperbola(3.0), 0};
  draw_conic(canvas, grid, 3, "Hyperbola, its branches along x", hyperbola);

  // u^2 / 2 - v^2 / 1.2 = -1, turned by 30 degrees
  const double hp = 0.5, hq = -1.0 / 1.2;
  const auto on_turned = [&](double u) { return turned(u, -std::sqrt((1.0 + u * u * hp) * 1.2)); };
  utl_conic_t turned_hyperbola = {hp * c * c + hq * s * s,
                                  2.0 * c * s * (hp - hq),
                                  hp * s * s + hq * c * c,
                                  0.0,
                                  0.0,
                                  1.0,
                                  on_turned(-1.8),
                                  on_turned(2.4),
                                  0};
  draw_conic(canvas, grid, 4, "Hyperbola, turned", turned_hyperbola);

  // v = u^2 / 2 - 2, turned by 30 degrees
  const auto on_parabola = [&](double u) { return turned(u, u * u / 2.0 - 2.0); };
  utl_conic_t parabola = {0.5 * c * c,      c * s, 0.5 * s * s, s, -c, -2.0, on_parabola(-2.2),
                          on_parabola(2.6), 0};
  draw_conic(canvas, grid, 5, "Parabola, turned", parabola);

  const double y = canvas.height() - 14.0;
  canvas.dot({18.0, y - 4.0}, 4.6, ink, true);
  canvas.text({30.0, y}, "start", grey);
  canvas.dot({82.0, y - 4.0}, 2.8, ink);
  canvas.text({94.0, y}, "end", grey);
  canvas.stroke({{140.0, y - 4.0}, {166.0, y - 4.0}}, {blue, 1.6});
  canvas.dot({146.0, y - 4.0}, 1.9, blue);
  canvas.dot({160.0, y - 4.0}, 1.9, blue);
  canvas.text({174.0, y}, "the arc and its samples", grey);
  canvas.stroke({{340.0, y - 4.0}, {366.0, y - 4.0}}, {orange, 1.4, true});
  canvas.text({374.0, y}, "its extent, utl_maxmin_conic", grey);
}

}  // namespace

const Page conics_page = {"conics", 888, 596, draw};

}  // namespace gallery
