// Two polygons that ClipPolygonSet loses and ClipPolygonSetToView keeps: one that surrounds the
// view, and one with a vertex exactly on a side of the view.

#include "gallery/pages.h"
#include "gallery/polygon_set.h"

#include <cstdio>

namespace gallery {

namespace {

std::string area_kept(const PolygonSet& set) {
  char text[80];
  std::snprintf(text, sizeof text, "area %.2f", set.area());
  return set.points.empty() ? "nothing is left" : text;
}

void draw_row(Canvas& canvas, const Grid& grid, int row, const Points& polygon, real_pt_t centre,
              double span, const std::string& title) {
  PolygonSet set;
  set.add(polygon);
  const real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const Points frame(view.corners, view.corners + 4);
  const struct {
    std::string title, caption;
    PolygonSet kept;
  } columns[] = {
      {title, "orange: the view", set},
      {"ClipPolygonSet", "", clipped(set, view, ClipPolygonSet)},
      {"ClipPolygonSetToView", "", clipped(set, view, ClipPolygonSetToView)},
  };
  for (int i = 0; i < 3; ++i) {
    const auto& column = columns[i];
    const int cell = 3 * row + i;
    Panel panel(canvas, grid.left(cell), grid.top(cell), grid.cell_width, grid.cell_height, centre,
                span, column.title, i == 0 ? column.caption : area_kept(column.kept));
    panel.fill(column.kept.rings(), pale_blue);
    panel.stroke(frame, i == 0 ? Stroke{orange, 1.8} : Stroke{hairline, 1.0}, true);
    stroke_edges(panel, column.kept);
  }
}

void draw(Canvas& canvas) {
  const Grid grid = {3, 280.0, 236.0, 12.0, 12.0};
  draw_row(canvas, grid, 0, {{-1, -1}, {30, -1}, {-1, 30}}, {14.5, 14.5}, 52.0,
           "A polygon around the view");
  draw_row(canvas, grid, 1, {{0, 5}, {11, 1}, {1, 9}}, {5.5, 5.0}, 18.0,
           "A vertex on the side of the view");
}

}  // namespace

const Page clipping_cases_page = {"clipping_cases", 888, 508, draw};

}  // namespace gallery
