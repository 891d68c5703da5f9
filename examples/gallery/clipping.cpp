// A polygon set clipped to a turned view: what comes in, what comes out, which edges stay visible.

#include "gallery/pages.h"

#include <cmath>
#include <numbers>

namespace gallery {

namespace {

struct Set {
  Points points;
  std::vector<int> edge_flags;

  void add(const Points& ring) {
    points.insert(points.end(), ring.begin(), ring.end());
    edge_flags.resize(points.size(), drw_edge_visible);
    edge_flags.back() = drw_edge_close_visible;
  }

  drw_pset_t record() {
    return {static_cast<int>(points.size()), points.data(), edge_flags.data()};
  }
};

bool is_closing(int flag) {
  return flag == drw_edge_close_invisible || flag == drw_edge_close_visible;
}

std::vector<Points> rings_of(const Set& set) {
  std::vector<Points> rings(1);
  for (std::size_t i = 0; i < set.points.size(); ++i) {
    rings.back().push_back(set.points[i]);
    if (is_closing(set.edge_flags[i])) rings.emplace_back();
  }
  rings.pop_back();
  return rings;
}

void stroke_edges(Panel& panel, const Set& set) {
  for (std::size_t i = 0, first = 0; i < set.points.size(); ++i) {
    const bool closes = is_closing(set.edge_flags[i]);
    const bool is_visible = set.edge_flags[i] % 2 == 1;
    const real_pt_t to = set.points[closes ? first : i + 1];
    panel.stroke({set.points[i], to}, is_visible ? Stroke{ink, 2.0} : Stroke{orange, 1.4, true});
    if (closes) first = i + 1;
  }
}

Points star(real_pt_t centre, int spikes, double outer, double inner) {
  Points ring;
  for (int i = 0; i < 2 * spikes; ++i) {
    const double angle = i * std::numbers::pi / spikes + 0.25;
    const double r = i % 2 == 0 ? outer : inner;
    ring.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)});
  }
  return ring;
}

Set clipped(Set set, real_rect_t* view) {
  Set kept;
  kept.points.resize(10 * set.points.size());  // 5 n + 4 for each polygon suffices
  kept.edge_flags.resize(kept.points.size());
  drw_pset_t source = set.record();
  drw_pset_t target = {0, kept.points.data(), kept.edge_flags.data()};
  ClipPolygonSet(&source, &target, view);
  kept.points.resize(static_cast<std::size_t>(target.n_points));
  kept.edge_flags.resize(kept.points.size());
  return kept;
}

void draw(Canvas& canvas) {
  Set set;
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
    panel.fill(rings_of(set), pale_blue);
    panel.stroke(frame, {orange, 1.8}, true);
    stroke_edges(panel, set);
  }
  {
    Panel panel(canvas, grid.left(1), grid.top(1), grid.cell_width, grid.cell_height, {0.0, 0.0},
                10.5, "ClipPolygonSet", "edges along the view are invisible: dashed here");
    const Set kept = clipped(set, &view);
    panel.stroke(frame, {hairline, 1.0}, true);
    panel.fill(rings_of(kept), pale_blue);
    stroke_edges(panel, kept);
  }
}

}  // namespace

const Page clipping_page = {"clipping", 888, 374, draw};

}  // namespace gallery
