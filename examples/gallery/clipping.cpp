// A polygon set before and after it is clipped to a turned view, with its visible and invisible
// edges.

#include "gallery/pages.h"
#include "gallery/polygon_set.h"

#include <cmath>
#include <numbers>

namespace gallery {

namespace {

Points star(real_pt_t centre, int spikes, double outer, double inner) {
  Points ring;
  for (int i = 0; i < 2 * spikes; ++i) {
    const double angle = i * std::numbers::pi / spikes + 0.25;
    const double r = i % 2 == 0 ? outer : inner;
    ring.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)});
  }
  return ring;
}

void draw(Canvas& canvas) {
  PolygonSet set;
  set.add(star({-0.9, 0.5}, 7, 3.0, 1.7));
  set.add(star({-0.9, 0.5}, 7, 1.1, 0.7));  // a hole is one more polygon
  set.add({{1.9, -3.0}, {4.2, -2.2}, {2.6, 2.6}, {2.3, -0.9}});
  const double c = std::cos(0.3), s = std::sin(0.3);
  const auto corner = [&](double u, double v) -> real_pt_t {
    return {u * c - v * s, u * s + v * c};
  };
  real_rect_t view = {{corner(-2.4, -1.9), corner(-2.4, 1.9), corner(2.6, 1.9), corner(2.6, -1.9)}};
  const Points frame(view.corners, view.corners + 4);

  const Grid grid = {2, 426.0, 350.0, 12.0, 12.0};
  {
    Panel panel(canvas, grid.left(0), grid.top(0), grid.cell_width, grid.cell_height, {0.0, 0.0},
                10.5, "A polygon set and a turned view", "three polygons, one of them a hole");
    panel.fill(set.rings(), pale_blue);
    panel.stroke(frame, {orange, 1.8}, true);
    stroke_edges(panel, set);
  }
  {
    Panel panel(canvas, grid.left(1), grid.top(1), grid.cell_width, grid.cell_height, {0.0, 0.0},
                10.5, "ClipPolygonSet", "edges along the view are invisible: dashed here");
    const PolygonSet kept = clipped(set, view, ClipPolygonSet);
    panel.stroke(frame, {hairline, 1.0}, true);
    panel.fill(kept.rings(), pale_blue);
    stroke_edges(panel, kept);
  }
}

}  // namespace

const Page clipping_page = {"clipping", 888, 374, draw};

}  // namespace gallery
