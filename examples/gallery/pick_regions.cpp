// Pick regions, with every point that hits them.

#include "gallery/pages.h"

#include <cmath>
#include <numbers>

namespace gallery {

namespace {

// Fills the points that hit the region, in runs along closely spaced lines.
void shade(Panel& panel, CPickRegion& region, double tolerance, Colour colour) {
  constexpr int lines = 480;
  const real_pt_t low = panel.low(), high = panel.high();
  const double step = (high.y - low.y) / lines;
  std::vector<Points> runs;
  for (int i = 0; i < lines; ++i) {
    const double bottom = low.y + step * i;
    const double y = bottom + step / 2.0;
    double start = 0.0;
    bool is_in_run = false;
    for (double x = low.x; x <= high.x; x += step) {
      const bool hits = region.isInside(x, y, tolerance);
      if (hits && !is_in_run) start = x;
      if (!hits && is_in_run) {
        runs.push_back({{start, bottom}, {x, bottom}, {x, bottom + step}, {start, bottom + step}});
      }
      is_in_run = hits;
    }
  }
  panel.fill(runs, colour);
}

void draw(Canvas& canvas) {
  const Grid grid = {3, 280.0, 290.0, 12.0, 12.0};
  const auto panel_of = [&](int cell, const char* title, const char* caption) {
    return Panel(canvas, grid.left(cell), grid.top(cell), grid.cell_width, grid.cell_height,
                 {0.0, 0.0}, 8.0, title, caption);
  };
  {
    Panel panel = panel_of(0, "CPickRect", "the tolerance inflates the box");
    CPickRect rect(-2.2, -1.4, 2.2, 1.4);
    shade(panel, rect, 0.6, pale_blue);
    shade(panel, rect, 0.0, {0.62, 0.76, 0.93});
    panel.box({-2.2, -1.4}, {2.2, 1.4}, {ink, 1.8});
  }
  {
    Panel panel = panel_of(1, "CPickPolyline", "the inflated box of each segment");
    Points line = {{-3.0, -1.6}, {-1.2, 1.9}, {0.9, -0.4}, {3.0, -0.4}};
    std::vector<DblPt> points;
    for (const real_pt_t& p : line) points.emplace_back(p.x, p.y);
    CPickPolyline polyline(static_cast<unsigned>(points.size()), points.data());
    shade(panel, polyline, 0.35, pale_blue);
    panel.stroke(line, {ink, 1.8});
  }
  {
    Panel panel = panel_of(2, "CPolygon", "wherever the ring winds, the centre included");
    Points star;
    std::vector<DblPt> points;
    for (int i = 0; i < 5; ++i) {
      const double angle = std::numbers::pi / 2.0 + i * 4.0 * std::numbers::pi / 5.0;
      star.push_back({2.7 * std::cos(angle), 2.7 * std::sin(angle) - 0.25});
      points.emplace_back(star.back().x, star.back().y);
    }
    CPolygon polygon(5u, points.data());
    shade(panel, polygon, 0.0, pale_blue);
    panel.stroke(star, {ink, 1.8}, true);
  }
}

}  // namespace

const Page pick_regions_page = {"pick_regions", 888, 314, draw};

}  // namespace gallery
