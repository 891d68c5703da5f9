/// Clipping of polygon sets to a view, for drawings: right wherever the polygons lie.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Appends to `target` the parts of the polygons of `source` inside `rect`, one ring for each.
///
/// Inside the rectangle the result covers the same area as the source, by the even-odd and by the
/// non-zero rule. Every place there keeps its winding number, except within rounding of an edge
/// that was cut.
///
/// Each polygon produces one ring, in the order of `source`, or none if it covers nothing of the
/// inside and has no edge there; a hole is one more polygon. Where the polygon is outside, its ring
/// follows the border, possibly the same stretch more than once. So fill the rings and stroke their
/// visible edges. `ClipPolygonSet` cuts polygons into separate rings instead, but only in general
/// position.
///
/// The remaining part of an edge keeps its visibility. An edge along the border is invisible, even
/// one that the source has there. Each vertex is an unchanged vertex of the polygon inside the
/// closed rectangle, or a point on the border. An edge and its reverse are cut at the same point. A
/// part inside that rounds to one point produces nothing. A polygon strictly inside is copied
/// unchanged, duplicates included. A polygon that holds the rectangle becomes its four corners,
/// once for each winding.
///
/// Everything but the coordinates of a crossing is decided exactly and without a tolerance. This
/// holds for all finite coordinates, including vertices on the border, edges through corners, rings
/// that cross themselves and coordinates near the limits of a double.
///
/// A crossing is rounded. The error of each coordinate is at most 64 units in the last place of the
/// rectangle's largest coordinate. It is at most 3 units if the rectangle's width and height are
/// less than 1/64 of that coordinate. This holds however long the edge is. It bounds the error
/// along the side, and across a turned side. Across an upright side there is no error: a crossing
/// has exactly the side's coordinate and does not leave the rectangle.
///
/// `rect->corners` run round the rectangle, clockwise or anticlockwise; it may be upright or
/// turned. Any other convex quadrilateral is allowed. Nothing is produced for three corners in
/// line, equal corners, corners that are not finite, enclose no area or cross over, and for a
/// polygon with a coordinate that is not finite.
///
/// `source` is read only. Polygons of one vertex produce nothing; vertices after the last closing
/// flag are ignored. `target->n_points` is where appending begins: set it to 0 before the first
/// call. Requires: no null pointer, and arrays with room for 4 n + 4 more vertices for each polygon
/// of n, which may not overlap those of `source`. Elements after the result can be overwritten.
///
/// No heap is used and no state kept: calls on different records may run on different threads.
ZELVAN_API void ClipPolygonSetToView(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);
