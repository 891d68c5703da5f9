#include <zelvan/geometry/clip_functions.h>
#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/clip_polygon_set_to_view.h>
#include <zelvan/geometry/clip_polyline_to_view.h>

// The casts remove const: the operations are exported without it, but only read their input.

void zelvan_clip_polygon_set(const drw_pset_t* source, drw_pset_t* target,
                             const real_rect_t* rect) {
  ClipPolygonSet(const_cast<drw_pset_t*>(source), target, const_cast<real_rect_t*>(rect));
}

void zelvan_clip_polygon_set_to_view(const drw_pset_t* source, drw_pset_t* target,
                                     const real_rect_t* rect) {
  ClipPolygonSetToView(const_cast<drw_pset_t*>(source), target, const_cast<real_rect_t*>(rect));
}

int zelvan_clip_polyline_to_view(const real_pt_t* points, int n_points, const real_rect_t* view,
                                 real_pt_t* out, int* begins, int* n_pieces) {
  return ClipPolylineToView(points, n_points, view, out, begins, n_pieces);
}
