/// Clipping of polygon sets to a rectangle.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Appends to `target` what of each polygon of `source` lies inside `rect`, cut into rings, in
/// general position. For drawings, take `ClipPolygonSetToView`, which is right in every position.
///
/// The method is that of G. Greiner and K. Hormann, "Efficient clipping of arbitrary polygons",
/// ACM Transactions on Graphics 17 (1998), with one polygon and the rectangle at a time. Each
/// polygon gives zero, one or several closed rings, in set order; a hole is one more polygon.
/// Edges along the rectangle are invisible. A polygon wholly inside comes back unchanged,
/// duplicates included; in a turned rectangle, see below.
///
/// Where the method ends:
/// - A polygon around the whole rectangle gives its four corners in record order, with the flags
///   0, 0, 0, 2, if some of its edges lie wholly to the left of a side and others wholly to the
///   right of one, or some below and others above. Else it gives nothing: the triangle (-1, -1),
///   (30, -1), (-1, 30) disappears from the view (0, 0) to (10, 10).
///   The same is asked of a polygon inside a turned rectangle, lest it be lost: of the diamond
///   (0, -10), (10, 0), (0, 10), (-10, 0) the triangle (-1, -1), (1, -1), (0, 1) disappears.
/// - A vertex exactly on a side can upset the turns of going in and coming out, and the result is
///   then another part of the polygon: of (0, 5), (11, 1), (1, 9), in that view, an area of 0.22
///   is kept out of 23.78. Drawings on a grid and a view on the same grid meet this all the time.
/// - Rings that cross themselves follow neither fill rule if the rectangle's first corner is
///   wound about more than once.
/// - Flags travel with their vertices. Where a ring runs against the sense of its polygon, which
///   in general position is each but the first of a polygon that begins inside, what is left of
///   an edge has the visibility of its neighbour.
///
/// `source` is read only. Polygons of one vertex, or of one point repeated, give nothing;
/// vertices behind the last closing flag are ignored.
///
/// `rect` is taken as the ring of its four corners in record order, in either sense. It need
/// not be axis-aligned: a turned view gives a turned rectangle.
///
/// `target->n_points` is where appending begins: set it to 0 before the first call. Requires: no
/// null pointer, and arrays with room for what comes. A polygon of n vertices gives at most n + 4 +
/// h, where h is the number of its crossings with the rectangle: at most 2 n if no edge passes
/// through a corner, 4 n otherwise. So 5 n + 4 for each polygon always suffices. The arrays may not
/// overlap those of `source`.
///
/// A vertex exactly on a side of the rectangle counts as a crossing a very small step along
/// its edge, so a result can hold near-duplicate vertices, and a polygon that only touches
/// the rectangle can leave a sliver. An edge exactly through a corner crosses twice; where
/// that leaves the walk at a crossing already used, the ring is closed there. Every input
/// ends, NaN and infinities included.
///
/// When the heap refuses, the polygon in hand gives nothing, everything taken for it is
/// released, and the next one is tried. No state is kept: calls on different records may run
/// on different threads.
ZELVAN_API void ClipPolygonSet(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);
