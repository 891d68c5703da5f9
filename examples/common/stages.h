/// The road from a map to the device: clip, then map. And the books of what became of it all.
#pragma once

#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "common/countries.h"
#include "common/view.h"

namespace example {

/// How many came in and what became of them:
/// came_in - clipped_away + added - merged == drawn.
struct Count {
  long long came_in = 0;
  long long clipped_away = 0;  ///< lie outside the view
  long long added = 0;         ///< vertices where outlines meet the frame; further pieces
  long long merged = 0;        ///< fall on their neighbour; polygons too small to be seen
  long long drawn = 0;
};

struct Tally {
  Count polygons;
  Count vertices;
};

/// One of the library's two operations for it.
using ClipSet = void (*)(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);

/// What of the polygons lies in the view, in map coordinates. What the view shows again after
/// a turn about the globe comes again, moved by the turn, and counts as added. Edges along the
/// frame, the antimeridian and the poles come out invisible: there is no coast.
MapPolygons clip_to_view(const MapPolygons& polygons, const View& view, Tally& tally,
                         ClipSet clip = ClipPolygonSetToView);

/// The polygons in device units. Vertices that fall together are merged, and polygons that become
/// points or lines are dropped.
DevicePolygons map_to_device(const MapPolygons& polygons, const View& view, Tally& tally);

}  // namespace example
