/// Prepared polygons as functions with C linkage.
///
/// The caller owns an index that a function here returns, and releases it with
/// `zelvan_delete_pick_index`. An index has its own copy of the points. The result is null if the
/// heap refuses; nothing is thrown. Any number of threads may query one index. Requires: no null
/// pointer, except where a comment allows one.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_index.h>
#include <zelvan/transforms/records.h>

// ---- making

/// Makes a `CPickIndex` of all polygons of a set.
ZELVAN_C_API CPickIndex* zelvan_new_pick_index(const drw_pset_t* set);

/// Makes a `CPickIndex` of one ring of `n` vertices, at least 3. With fewer, returns null and reads
/// nothing.
ZELVAN_C_API CPickIndex* zelvan_new_pick_index_of_ring(int n, const real_pt_t* points);

/// Releases an index and its points. Null does nothing.
ZELVAN_C_API void zelvan_delete_pick_index(CPickIndex* index);

// ---- queries

/// Returns 1 if at least one polygon contains the point, else 0, as `CPickIndex::isInside` does.
ZELVAN_C_API int zelvan_hit_pick_index(const CPickIndex* index, double x, double y);

/// Tests `n` points: writes 1 or 0 for each to `hits`, and returns the number of points inside at
/// least one polygon.
///
/// `hits` has room for `n` bytes, or is null if only the number is wanted. A count of 0 or less
/// reads and writes nothing.
ZELVAN_C_API int zelvan_hit_pick_index_with_points(const CPickIndex* index, int n,
                                                   const real_pt_t* points, unsigned char* hits);

/// Writes the numbers of the polygons that contain the point, as `CPickIndex::findPolygons` does.
///
/// They are counted from 0 and ascend. Returns how many there are; at most `capacity` are written.
/// If `capacity` is 0 or less, `numbers` may be null.
ZELVAN_C_API int zelvan_find_polygons(const CPickIndex* index, double x, double y, int* numbers,
                                      int capacity);

/// Returns the sum of the winding numbers of `count` polygons from `first` on about the point, as
/// `CPickIndex::windingNumber` does.
ZELVAN_C_API int zelvan_winding_number(const CPickIndex* index, int first, int count, double x,
                                       double y);
