/// Checks of sets and rectangles before they are clipped and mapped: why polygons disappear.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Returns 1 if `set` and `rect` can be clipped and mapped, else 0 with a text in `reason` that
/// names the first fault.
///
/// The set is checked first, then the rectangle. Either pointer may be null and is then not
/// checked. Vertices and corners are counted from 0.
///
/// These are the texts for a set. First come the count and the two arrays, then the vertices in
/// order, each one's flag before its coordinates. The last two are reported only if no vertex has a
/// fault:
///
///     the count of vertices is -1       or any other number below 0
///     the set has no points             `points` is null although the count is above 0
///     the set has no edge flags         `edge_flags` is null although the count is above 0
///     vertex 17 has edge flag 7         not a `drw_edge_flag`
///     vertex 17 is not finite           an infinite coordinate or NaN
///     no closing flag                   so there is no polygon
///     no closing flag after vertex 3    so the vertices after it are ignored
///
/// An empty set has no fault. Nor has a polygon of a single vertex, though clipping drops it.
///
/// The rectangle may be turned, or be any other convex shape of four corners. These are the texts
/// for it, in the order of the checks:
///
///     corner 2 is not finite
///     corners 2 and 3 are the same
///     corners 1, 2 and 3 are in line
///     corners 1 and 2 cross             two sides cross; exchanging corners 1 and 2 mends it
///     corner 2 makes a dent             the shape is not convex there
///
/// Corners are judged exactly, without a tolerance.
///
/// `reason` receives one line, cut to `size` bytes with the terminating zero; it is empty if there
/// is no fault. Nothing is written if `reason` is null or `size` is 0 or less. No heap is used and
/// no state kept: calls may run on any thread.
ZELVAN_C_API int zelvan_check_polygon_set(const drw_pset_t* set, const real_rect_t* rect,
                                          char* reason, int size);
