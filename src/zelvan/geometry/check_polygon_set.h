/// Checks of sets and rectangles before they are clipped and mapped: why polygons disappear.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Returns 1 if `set` and `rect` can be clipped and mapped, else 0 with the first fault in
/// `reason`.
///
/// Faults of a set. Vertices are checked in order, each one's flag before its coordinates. Closing
/// flags are checked last:
///
///     the count of vertices is -1       or any other below 0
///     the set has no points             the pointer is null, and the count is above 0
///     the set has no edge flags
///     vertex 17 has edge flag 7         not a `drw_edge_flag`
///     vertex 17 is not finite           an infinite coordinate or NaN
///     no closing flag                   so there is no polygon
///     no closing flag after vertex 3    so the vertices after it are ignored
///
/// Faults of a rectangle, which may be turned, or be any other convex shape of four corners. They
/// are checked in this order:
///
///     corner 2 is not finite
///     corners 2 and 3 are the same
///     corners 1, 2 and 3 are in line
///     corners 1 and 2 cross             two sides do: exchange the corners that are named
///     corner 2 makes a dent
///
/// Vertices and corners are counted from 0; the set is checked first. Either pointer may be null
/// and is then not checked. An empty set has no fault. Nor has a polygon of a single vertex, though
/// clipping drops it.
///
/// `reason` receives one line, cut to `size` bytes with the terminating zero; it is empty if there
/// is no fault. A null pointer or a `size` of 0 or less receives nothing. Corners are judged
/// exactly, without a tolerance. No heap is used and no state kept: calls may run on any thread.
ZELVAN_C_API int zelvan_check_polygon_set(const drw_pset_t* set, const real_rect_t* rect,
                                          char* reason, int size);
