/// The plain records of points, rectangles and polygon sets that geometric operations exchange.
///
/// Plain data without operations: their fields, order and widths are part of the binary
/// interface. Records and arrays belong to the caller; the library neither grows nor frees
/// them.
#pragma once

#include <cstddef>

/// A point in real coordinates.
struct real_pt_t {
  double x;  ///< in the caller's units
  double y;  ///< likewise
};

/// A point in device coordinates.
struct int_pt_t {
  int x;  ///< in whole device units
  int y;  ///< likewise
};

/// A point in device coordinates of 16 bits.
struct short_pt_t {
  short x;  ///< in whole device units
  short y;  ///< likewise
};

/// A rectangle as the closed ring of its four corners, so that a turned or sheared one fits.
///
/// What `Mtx2D::XfmRect` writes is always an axis-aligned box in the order (min x, min y),
/// (min x, max y), (max x, max y), (max x, min y).
struct real_rect_t {
  real_pt_t corners[4];  ///< in order around the rectangle, in either sense
};

/// A rectangle in device coordinates, as the closed ring of its four corners.
struct int_rect_t {
  int_pt_t corners[4];  ///< in order around the rectangle, in either sense
};

/// Values of `edge_flags`, for the edge that leaves a vertex: the edge-out flag of the polygon
/// set element of ISO 8632 (Computer Graphics Metafile). A closing vertex is the last of its
/// polygon, and its edge returns to the polygon's first.
enum drw_edge_flag {
  drw_edge_invisible = 0,        ///< to the next vertex; not drawn
  drw_edge_visible = 1,          ///< to the next vertex
  drw_edge_close_invisible = 2,  ///< back to the polygon's first vertex; not drawn
  drw_edge_close_visible = 3     ///< back to the polygon's first vertex
};

/// A polygon set: polygons laid end to end in one array of vertices.
///
/// A polygon is a run of vertices with the flags 0 or 1 that ends at a flag 2 or 3. Both
/// arrays hold `n_points` elements, over all polygons. Where a function fills a set, the
/// arrays must be large enough for its result, and `n_points` reports the number written.
struct drw_pset_t {
  int n_points;       ///< vertices of all polygons together
  real_pt_t* points;  ///< the vertices, `n_points` of them
  int* edge_flags;    ///< one `drw_edge_flag` for each vertex
};

/// A polygon set in device coordinates, laid out as `drw_pset_t` is.
struct drw_dpset_t {
  int n_points;      ///< vertices of all polygons together
  int_pt_t* points;  ///< the vertices, `n_points` of them
  int* edge_flags;   ///< one `drw_edge_flag` for each vertex
};

static_assert(sizeof(real_pt_t) == 16 && offsetof(real_pt_t, y) == 8, "layout is interface");
static_assert(sizeof(int_pt_t) == 8 && offsetof(int_pt_t, y) == 4, "layout is interface");
static_assert(sizeof(short_pt_t) == 4 && offsetof(short_pt_t, y) == 2, "layout is interface");
static_assert(sizeof(real_rect_t) == 64 && sizeof(int_rect_t) == 32, "layout is interface");
static_assert(offsetof(drw_pset_t, n_points) == 0 &&
                  offsetof(drw_pset_t, points) == sizeof(void*) &&
                  offsetof(drw_pset_t, edge_flags) == 2 * sizeof(void*) &&
                  sizeof(drw_pset_t) == 3 * sizeof(void*),
              "layout is interface");
static_assert(offsetof(drw_dpset_t, n_points) == 0 &&
                  offsetof(drw_dpset_t, points) == sizeof(void*) &&
                  offsetof(drw_dpset_t, edge_flags) == 2 * sizeof(void*) &&
                  sizeof(drw_dpset_t) == 3 * sizeof(void*),
              "layout is interface");
