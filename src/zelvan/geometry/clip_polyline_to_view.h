/// Clipping of open polylines to a view, for drawings: right wherever the line lies.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Writes the parts of a polyline that are inside `view`, its *pieces*, to `out`; returns the
/// number of points written.
///
/// The polyline runs from `points[0]` to `points[n_points - 1]` and is not closed; to clip a ring,
/// repeat its first point at the end. The pieces come one after the other, in the order of the
/// line. `*n_pieces` receives their number. Piece k consists of the points from `out[begins[k]]` up
/// to but not including `out[begins[k + 1]]`, two points or more. `begins[*n_pieces]` is the number
/// of points written, so this holds for the last piece, too.
///
/// What is inside, and where an edge is cut, is decided as by `ClipPolygonSetToView`: exactly and
/// for all finite coordinates. Take a polygon of the same vertices, with all edges visible except
/// the closing one. The edges of the pieces are the visible edges that `ClipPolygonSetToView`
/// leaves of it. So an edge along a side is outside and ends a piece. A line that only touches a
/// side or a corner from outside produces nothing; one that touches it from inside stays in one
/// piece. A part that rounds to one point, or onto a side, produces nothing.
///
/// Each point written is an unchanged point of the line, or a point on the border where an edge was
/// cut. A line strictly inside is copied unchanged, duplicates included. A point repeated on the
/// border is written once.
///
/// `view` follows the rules of `ClipPolygonSetToView`: four corners in ring order, in either sense,
/// upright or turned. Corners that it rejects produce nothing. So do fewer than two points, and a
/// line with a coordinate that is not finite.
///
/// Room: 2 * (`n_points` - 1) points in `out`; `n_points` numbers, and at least one, in `begins`.
/// There are at most `n_points` - 1 pieces.
/// Requires: no null pointer, but `points` and `out` may be null for fewer than two points; no
/// overlap between the arrays; at most 2^30 points.
///
/// No heap is used and no state kept: calls may run on different threads.
ZELVAN_API int ClipPolylineToView(const real_pt_t* points, int n_points, const real_rect_t* view,
                                  real_pt_t* out, int* begins, int* n_pieces);
