// Arcs from each quadrant to each, with their bounding boxes. Each side of a box touches the circle
// at its extreme point, if the arc contains that point. Otherwise it passes through an end of the
// arc.

#include "gallery/pages.h"

#include <cmath>
#include <numbers>

namespace gallery {

namespace {

constexpr double radius = 1.0;

real_pt_t on_circle(double degrees) {
  const double angle = degrees * std::numbers::pi / 180.0;
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

// Draws a side of a box, at the coordinate `where`: blue if it touches the circle, orange if it
// passes through an end of the arc.
void draw_side(Panel& panel, real_pt_t from, real_pt_t to, double where) {
  const bool is_on_circle = std::fabs(where) == radius;
  panel.stroke({from, to}, {is_on_circle ? blue : orange, 1.6});
}

void draw_arc(Canvas& canvas, const Grid& grid, int cell) {
  const int from_quadrant = cell / 4, to_quadrant = cell % 4;
  const double from = from_quadrant * 90.0 + 25.0;
  double to = to_quadrant * 90.0 + 65.0;
  if (to < from) to += 360.0;
  Points arc;
  for (double degrees = from; degrees <= to; degrees += 1.0) arc.push_back(on_circle(degrees));
  real_pt_t centre = {0.0, 0.0}, max, min;
  utl_maxmin_arc(&centre, static_cast<float>(radius), &arc.front(), &arc.back(), 0, &max, &min);

  Panel panel(canvas, grid.left(cell), grid.top(cell), grid.cell_width, grid.cell_height, centre,
              2.9, std::to_string(from_quadrant) + " to " + std::to_string(to_quadrant), "");
  panel.axes();
  Points circle;
  for (int degrees = 0; degrees < 360; ++degrees) circle.push_back(on_circle(degrees));
  panel.fill({{min, {max.x, min.y}, max, {min.x, max.y}}}, {0.90, 0.93, 0.97, 1.0});
  panel.stroke(circle, {hairline, 1.0}, true);
  draw_side(panel, {min.x, min.y}, {max.x, min.y}, min.y);
  draw_side(panel, {min.x, max.y}, {max.x, max.y}, max.y);
  draw_side(panel, {min.x, min.y}, {min.x, max.y}, min.x);
  draw_side(panel, {max.x, min.y}, {max.x, max.y}, max.x);
  panel.stroke(arc, {ink, 2.4});
  panel.dot(arc.front(), 3.2, ink, true);
  panel.dot(arc.back(), 3.2, ink);
}

void draw(Canvas& canvas) {
  const Grid grid = {4, 150.0, 162.0, 10.0, 12.0};
  for (int cell = 0; cell < 16; ++cell) draw_arc(canvas, grid, cell);
  const double y = canvas.height() - 14.0;
  canvas.dot({18.0, y - 4.0}, 3.2, ink, true);
  canvas.text({28.0, y}, "start", grey);
  canvas.dot({80.0, y - 4.0}, 3.2, ink);
  canvas.text({90.0, y}, "end, counter-clockwise", grey);
  canvas.stroke({{250.0, y - 4.0}, {272.0, y - 4.0}}, {blue, 1.6});
  canvas.text({280.0, y}, "side on the circle", grey);
  canvas.stroke({{410.0, y - 4.0}, {432.0, y - 4.0}}, {orange, 1.6});
  canvas.text({440.0, y}, "side through an end", grey);
}

}  // namespace

const Page arc_extents_page = {"arc_extents", 654, 724, draw};

}  // namespace gallery
