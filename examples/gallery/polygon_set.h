/// Polygon sets on a page, with their edges as visible as they say.
#pragma once

#include "gallery/canvas.h"

#include <vector>

namespace gallery {

struct PolygonSet {
  Points points;
  std::vector<int> edge_flags;

  /// Appends a polygon, all of its edges visible.
  void add(const Points& ring);

  std::vector<Points> rings() const;

  /// The areas of all polygons, each taken as positive.
  double area() const;
};

/// One of the library's two operations for it.
using ClipSet = void (*)(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);

PolygonSet clipped(PolygonSet set, real_rect_t view, ClipSet clip);

/// Visible edges as lines, invisible ones as dashes.
void stroke_edges(Panel& panel, const PolygonSet& set);

}  // namespace gallery
