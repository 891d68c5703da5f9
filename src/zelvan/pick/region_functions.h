/// Pick regions as functions with C linkage.
///
/// The caller owns each region that a function here returns, and releases it with
/// `zelvan_delete_region`. A region has its own copy of the points. The result is null if there are
/// too few points, if there is no such polygon, or if the heap refuses; nothing is thrown.
///
/// Any number of threads may test points against one region. Requires: no null pointer, except
/// where a comment allows one.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_region.h>
#include <zelvan/transforms/records.h>

// ---- making

/// Makes a `CPickRect` of two opposite corners, in any order.
ZELVAN_C_API CPickRegion* zelvan_new_rect_region(double x1, double y1, double x2, double y2);

/// Makes a `CPickPolyline` of `n` points, at least 2. With fewer, returns null and reads nothing.
ZELVAN_C_API CPickRegion* zelvan_new_polyline_region(int n, const real_pt_t* points);

/// Makes a `CPolygon` of `n` vertices, at least 3. With fewer, returns null and reads nothing.
ZELVAN_C_API CPickRegion* zelvan_new_polygon_region(int n, const real_pt_t* points);

/// Makes a `CPolygon` of polygon `k` of a set, as `zelvan::polygon_of` does.
///
/// Polygons are counted from 0. Returns null if the set has no such polygon, or if it has fewer
/// than 3 vertices. Each call walks the set from its start.
ZELVAN_C_API CPickRegion* zelvan_new_region_of_polygon(const drw_pset_t* set, int k);

/// Returns the number of polygons of a set, as `zelvan::count_polygons` does.
ZELVAN_C_API int zelvan_count_polygons(const drw_pset_t* set);

/// Makes a new region: `region` mapped through `matrix`, as its `xfm` does.
ZELVAN_C_API CPickRegion* zelvan_map_region(const CPickRegion* region, const Mtx2D* matrix);

/// Releases a region and its points. Null does nothing.
ZELVAN_C_API void zelvan_delete_region(CPickRegion* region);

// ---- queries

/// Returns 1 if the point hits the region, else 0, as its `isInside` decides.
ZELVAN_C_API int zelvan_hit_region(const CPickRegion* region, double x, double y, double tolerance);

/// Tests `n` points: writes 1 or 0 for each to `hits`, and returns the number of hits.
///
/// `hits` has room for `n` bytes, or is null if only the number is wanted. A count of 0 or less
/// reads and writes nothing.
ZELVAN_C_API int zelvan_hit_region_with_points(const CPickRegion* region, int n,
                                               const real_pt_t* points, double tolerance,
                                               unsigned char* hits);
