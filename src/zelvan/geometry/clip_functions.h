/// The clipping operations as functions with C linkage.
///
/// Each function calls the operation that its comment names; the header of that operation has the
/// rules, the limits and the room for the result. Input is const, so C++ can pass const sets as
/// well.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Calls `ClipPolygonSet(source, target, rect)`: clips into separate rings; may be wrong outside
/// general position.
ZELVAN_C_API void zelvan_clip_polygon_set(const drw_pset_t* source, drw_pset_t* target,
                                          const real_rect_t* rect);

/// Calls `ClipPolygonSetToView(source, target, rect)`: for drawings; right in every position.
ZELVAN_C_API void zelvan_clip_polygon_set_to_view(const drw_pset_t* source, drw_pset_t* target,
                                                  const real_rect_t* rect);

/// Calls `ClipPolylineToView(points, n_points, view, out, begins, n_pieces)` and returns its
/// result, the number of points written.
ZELVAN_C_API int zelvan_clip_polyline_to_view(const real_pt_t* points, int n_points,
                                              const real_rect_t* view, real_pt_t* out, int* begins,
                                              int* n_pieces);
