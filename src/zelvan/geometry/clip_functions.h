/// The clipping operations for callers that reach the library by flat names.
///
/// Each function is the operation that its comment names, with that one's rules, limits and demands
/// for room. Input is const, so C++ calls them with const sets as well.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// As `ClipPolygonSet(source, target, rect)`: cut into rings, right in general position.
ZELVAN_C_API void zelvan_clip_polygon_set(const drw_pset_t* source, drw_pset_t* target,
                                          const real_rect_t* rect);

/// As `ClipPolygonSetToView(source, target, rect)`: for drawings, right in every position.
ZELVAN_C_API void zelvan_clip_polygon_set_to_view(const drw_pset_t* source, drw_pset_t* target,
                                                  const real_rect_t* rect);

/// As `ClipPolylineToView(points, n_points, view, out, begins, n_pieces)`: returns the points
/// written.
ZELVAN_C_API int zelvan_clip_polyline_to_view(const real_pt_t* points, int n_points,
                                              const real_rect_t* view, real_pt_t* out, int* begins,
                                              int* n_pieces);
