/// Clipping of polygon sets to a rectangle.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Appends to `target` what of each polygon of `source` lies inside `rect`.
///
/// The method is that of G. Greiner and K. Hormann, "Efficient clipping of arbitrary polygons",
/// ACM Transactions on Graphics 17 (1998), with one polygon and the rectangle at a time. Each
/// polygon gives zero, one or several closed rings, in set order; a hole is one more polygon.
/// Edges along the rectangle are invisible. Flags travel with their vertices: where a ring runs
/// on in the polygon's own direction, what remains of an edge keeps its visibility; where it runs
/// the other way, a vertex still has the flag of the edge that it had in the polygon.
/// A polygon wholly inside comes back unchanged, duplicates included; around one that holds
/// the whole rectangle come the four corners in record order, with the flags 0, 0, 0, 2.
///
/// `source` is read only. Polygons of one vertex, or of one point repeated, give nothing;
/// vertices behind the last closing flag are ignored.
///
/// `rect` is taken as the ring of its four corners in record order, in either sense. It need
/// not be axis-aligned: a turned view gives a turned rectangle.
///
/// `target->n_points` is where appending begins: set it to 0 before the first call. Requires:
/// arrays with room for what comes. A polygon of n vertices gives at most n + 4 + h, where h
/// is the number of its crossings with the rectangle: at most 2 n if no edge passes through a
/// corner, 4 n otherwise. So 5 n + 4 for each polygon always suffices. The arrays may not
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
