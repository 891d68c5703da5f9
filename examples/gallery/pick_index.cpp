// The pick index: which edges of a ring a pick reads, and which polygons of a set.

#include "gallery/pages.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace gallery {

namespace {

struct Box {
  real_pt_t min, max;
  bool holds(const real_pt_t& p) const {
    return p.x >= min.x && p.x <= max.x && p.y >= min.y && p.y < max.y;
  }
};

Box box_of(const Points& points, std::size_t first, std::size_t count) {
  Box box = {points[first % points.size()], points[first % points.size()]};
  for (std::size_t i = first; i < first + count; ++i) {
    const real_pt_t& p = points[i % points.size()];
    box.min = {std::min(box.min.x, p.x), std::min(box.min.y, p.y)};
    box.max = {std::max(box.max.x, p.x), std::max(box.max.y, p.y)};
  }
  return box;
}

Points corners(const Box& box) {
  return {box.min, {box.max.x, box.min.y}, box.max, {box.min.x, box.max.y}};
}

// Makes a ring around `centre` that looks like a coast.
Points coast(real_pt_t centre, double radius, int n, double turn) {
  Points ring;
  for (int i = 0; i < n; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / n;
    const double r =
        radius * (1.0 + 0.16 * std::sin(3.0 * angle + turn) +
                  0.10 * std::sin(7.0 * angle + 2.0 * turn) + 0.04 * std::sin(29.0 * angle));
    ring.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)});
  }
  return ring;
}

// Draws the boxes of runs of edges in the colours of what the index does with each of them: skips
// it (grey), looks only at the ends of the run (blue), or looks at each edge (orange).
void draw_tree(Panel& panel) {
  constexpr std::size_t edges_in_run = 16;
  const Points ring = coast({0.0, -0.1}, 2.6, 192, 0.4);
  const real_pt_t pointer = {-2.45, 0.8};
  panel.stroke({pointer, {4.0, pointer.y}}, {grey, 1.0, true});
  for (std::size_t first = 0; first < ring.size(); first += edges_in_run) {
    const Box box = box_of(ring, first, edges_in_run + 1);
    const bool is_entered = box.holds(pointer);
    const bool is_met = pointer.y >= box.min.y && pointer.y < box.max.y && box.max.x >= pointer.x;
    if (is_met) panel.fill({corners(box)}, is_entered ? pale_orange : pale_blue);
    panel.box(box.min, box.max, {is_entered ? orange : is_met ? blue : hairline, 1.2});
  }
  panel.stroke(ring, {ink, 1.6}, true);
  panel.dot(pointer, 3.5, orange);
}

// Draws the polygons whose boxes reach into the cell of the pointer.
void draw_grid(Panel& panel) {
  constexpr int side = 6;
  constexpr double cell = 1.2;
  const real_pt_t pointer = {1.1, 0.3};
  const double low = -side * cell / 2.0;
  const real_pt_t corner = {low + cell * std::floor((pointer.x - low) / cell),
                            low + cell * std::floor((pointer.y - low) / cell)};
  const Box around = {corner, {corner.x + cell, corner.y + cell}};
  panel.fill({corners(around)}, pale_orange);
  for (int i = 0; i < 25; ++i) {
    const real_pt_t centre = {(i % 5 - 2) * 1.35 + 0.2 * std::sin(5.0 * i),
                              (i / 5 - 2) * 1.35 + 0.2 * std::cos(3.0 * i)};
    const Points ring = coast(centre, 0.48 + 0.12 * std::sin(2.0 * i), 60, i);
    const Box box = box_of(ring, 0, ring.size());
    const bool is_listed = box.min.x <= around.max.x && box.max.x >= around.min.x &&
                           box.min.y <= around.max.y && box.max.y >= around.min.y;
    if (is_listed) {
      panel.fill({ring}, pale_blue);
      panel.box(box.min, box.max, {box.holds(pointer) ? orange : blue, 1.2});
    }
    panel.stroke(ring, {is_listed ? ink : grey, 1.2}, true);
  }
  std::vector<Points> lines;
  for (int i = 0; i <= side; ++i) {
    const double at = low + cell * i;
    lines.push_back({{at, low}, {at, -low}});
    lines.push_back({{low, at}, {-low, at}});
  }
  panel.stroke_all(lines, {hairline, 1.0});
  panel.dot(pointer, 3.5, orange);
}

void draw(Canvas& canvas) {
  const Grid grid = {2, 426.0, 430.0, 12.0, 12.0};
  const auto panel_of = [&](int cell, const char* title, const char* caption) {
    return Panel(canvas, grid.left(cell), grid.top(cell), grid.cell_width, grid.cell_height,
                 {0.0, 0.0}, 8.0, title, caption);
  };
  {
    Panel panel = panel_of(0, "In a ring: boxes over runs of edges",
                           "grey: skipped; blue: counted by its ends; orange: edge by edge");
    draw_tree(panel);
  }
  {
    Panel panel = panel_of(1, "In a set: a grid over the polygons",
                           "blue: in the cell of the point; orange: the only ring to read");
    draw_grid(panel);
  }
}

}  // namespace

const Page pick_index_page = {"pick_index", 888, 454, draw};

}  // namespace gallery
