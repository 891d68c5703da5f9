/// The stages from a map to the device, clip and map, with counts of vertices and polygons.
#pragma once

#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "common/countries.h"
#include "common/view.h"

namespace example {

/// Counts of vertices or polygons: came_in - clipped_away + added - merged == drawn.
struct Count {
  long long came_in = 0;
  long long clipped_away = 0;  ///< outside the view
  long long added = 0;         ///< vertices on the frame; pieces of a polygon beyond its first
  long long merged = 0;  ///< vertices rounded onto their neighbour or dropped; polygons dropped
  long long drawn = 0;
};

struct Tally {
  Count polygons;
  Count vertices;
};

/// An operation of the library that clips a set: `ClipPolygonSetToView` or `ClipPolygonSet`.
using ClipSet = void (*)(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);

/// Clips the polygons to the view. The result is in map coordinates.
///
/// A polygon that the view shows again after a turn about the globe is returned again, moved by the
/// turn, and counts as added. Edges along the frame, the antimeridian and the poles are invisible,
/// since they are no coasts.
MapPolygons clip_to_view(const MapPolygons& polygons, const View& view, Tally& tally,
                         ClipSet clip = ClipPolygonSetToView);

/// Maps the polygons to device units. Neighbouring vertices that meet are merged. A polygon of
/// which a point or a single line segment remains is dropped.
DevicePolygons map_to_device(const MapPolygons& polygons, const View& view, Tally& tally);

}  // namespace example
