/// The polygons of a set as pick regions.
///
/// A region owns a copy of its points, so the set may change or be destroyed. Polygons are counted
/// from 0 in set order, by their closing flags. Each call walks the flags from the start of the
/// set, so the time to reach a polygon grows with the vertices before it. Nothing is thrown and no
/// state kept: calls may run on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/polygon.h>
#include <zelvan/transforms/records.h>

namespace zelvan {

/// Returns the number of polygons of a set: of its closing flags. Vertices after the last one
/// belong to no polygon.
ZELVAN_API int count_polygons(const drw_pset_t& set);

/// Returns polygon `k` of a set as a filled region.
///
/// It is empty if the set has no such polygon, if the polygon has fewer than 3 vertices, or if the
/// heap refuses.
ZELVAN_API CPolygon polygon_of(const drw_pset_t& set, int k);

/// Returns the outline of polygon `k` of a set as a chain of segments, the closing one included.
///
/// The first vertex is repeated at the end. Invisible edges are segments, too. The region is empty
/// if the set has no such polygon, or if the heap refuses.
ZELVAN_API CPickPolyline polyline_of(const drw_pset_t& set, int k);

}  // namespace zelvan
