/// Polygon sets for the pages, drawn with their visible and invisible edges.
#pragma once

#include "gallery/canvas.h"

#include <vector>

namespace gallery {

/// The arrays of a `drw_pset_t`.
struct PolygonSet {
  Points points;
  std::vector<int> edge_flags;

  /// Appends a polygon whose edges are all visible.
  void add(const Points& ring);

  /// Returns the polygons one by one.
  std::vector<Points> rings() const;

  /// Returns the sum of the areas of all polygons, each counted as positive.
  double area() const;
};

/// An operation of the library that clips a set: `ClipPolygonSetToView` or `ClipPolygonSet`.
using ClipSet = void (*)(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);

/// Returns what `clip` keeps of the set inside the view.
PolygonSet clipped(PolygonSet set, real_rect_t view, ClipSet clip);

/// Draws visible edges as lines and invisible ones as dashes.
void stroke_edges(Panel& panel, const PolygonSet& set);

}  // namespace gallery
