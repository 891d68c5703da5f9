/// Clipping of polygon sets to a rectangle.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Appends to `target` the parts of the polygons of `source` inside `rect`, cut into closed rings.
///
/// The result is right in *general position*: no vertex lies on a side of the rectangle and no
/// corner on an edge of the polygon, neither exactly nor within rounding. For drawings, use
/// `ClipPolygonSetToView`, which is right in every position.
///
/// The method is that of G. Greiner and K. Hormann, "Efficient clipping of arbitrary polygons", ACM
/// Transactions on Graphics 17 (1998), with one polygon and the rectangle at a time. It finds the
/// crossings of the two outlines and marks them, along each outline, alternately as entering and
/// leaving. Then it traces the result rings from crossing to crossing, on the outline that runs
/// inside the other.
///
/// Each polygon produces zero, one or several rings, in the order of `source`; a hole is one more
/// polygon. Parts of the rectangle's outline in a ring are invisible edges. A polygon wholly inside
/// an upright rectangle is copied unchanged, duplicates included. Flags are those of
/// `drw_edge_flag` (records.h).
///
/// Limits:
/// - Out of general position the method can mistake entering for leaving. The result is then any
///   part of the polygon, or nothing, and its vertices need not lie inside the rectangle. Example:
///   of the triangle (0, 5), (11, 1), (1, 9), the view (0, 0) to (10, 10) shows an area of 23.78.
///   The result holds none of that area: it is a sliver of 0.22 outside the view. Drawings on a
///   grid often meet this with a view on the same grid. If a corner is computed to lie on an edge,
///   or a vertex on a turned side, about half of the results are wrong.
/// - A polygon around the whole rectangle should produce the four `rect->corners` in their order,
///   with the flags 0, 0, 0, 2: all edges invisible. It does so only if it passes this test. Take
///   each edge of the polygon with each side of the rectangle, and note the first of these that is
///   true: all of the edge has smaller x than all of the side; larger x; smaller y; larger y. The
///   polygon passes if both smaller and larger x were noted, or both smaller and larger y.
///   Otherwise it produces nothing: the triangle (-1, -1), (30, -1), (-1, 30) disappears from the
///   view (0, 0) to (10, 10), because only smaller x and smaller y are noted.
/// - A polygon wholly inside a turned rectangle must pass that test, too, or it produces nothing:
///   in the diamond (0, -10), (10, 0), (0, 10), (-10, 0) the triangle (-1, -1), (1, -1), (0, 1)
///   disappears.
/// - A ring that crosses itself is clipped by the even-odd rule, unless it winds about the
///   rectangle's first corner an even number of times other than 0. Then the result follows neither
///   fill rule if the outlines cross, and the non-zero rule if they don't.
/// - Each vertex keeps its flag, which tells whether the edge after it is visible. That is right
///   only if the ring visits the polygon's vertices in their order. If it visits them in reverse,
///   an edge of the ring has the flag of the polygon's edge after it. In general position all rings
///   are in reverse, except the first ring of a polygon whose first vertex is inside. So rely on
///   the flags only if all edges of the polygon are visible, or none is.
///
/// `source` is read only. Polygons of one vertex, or of one point repeated, produce nothing;
/// vertices after the last closing flag (2 or 3) are ignored.
///
/// `rect->corners` run round the rectangle, clockwise or anticlockwise. It need not be
/// axis-aligned: a turned view is a turned rectangle.
///
/// `target->n_points` is where appending begins: set it to 0 before the first call. Requires: no
/// null pointer, and arrays with room for the result. A polygon of n vertices produces at most
/// n + 4 + h, where h is the number of its crossings with the rectangle: at most 2 n if no edge
/// passes through a corner, 4 n otherwise. So 5 n + 4 for each polygon always suffices. The arrays
/// may not overlap those of `source`.
///
/// In general position a vertex of the result lies outside the rectangle by rounding at most. A
/// vertex exactly on a side makes two crossings: one at the end of the edge to it, and one a small
/// step along the next edge, 1.2e-07 of its length. So a result can hold near-duplicate vertices,
/// and a polygon that only touches the rectangle can leave a sliver. An edge exactly through a
/// corner crosses two sides there. If tracing a ring then leads to a crossing that is already used,
/// the ring is closed there. Every call ends, even with NaN and infinities.
///
/// If the heap refuses, the current polygon produces nothing, everything allocated for it is
/// released, and the next one is tried; the caller is not told. No state is kept: calls with
/// different targets may run on different threads, also with the same source and rectangle.
ZELVAN_API void ClipPolygonSet(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);
