/// The operations of `Mtx2D` as functions with C linkage. Each calls the operation that its comment
/// names, whose rules and limits hold.
///
/// The matrix is the last parameter, except in `rotate_matrix`, `invert_matrix` and
/// `xfm_get_orientation`. Angles that are passed in are in degrees.
///
/// Requires, throughout: no null pointers. A caller that fills the elements of the record
/// itself calls `set_matrix_type` before it maps anything through it.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/records.h>

// ---- state

/// Calls `matrix->Initialize()`.
ZELVAN_C_API void initialize_matrix(Mtx2D* matrix);

/// Calls `matrix->SetType()`.
ZELVAN_C_API void set_matrix_type(Mtx2D* matrix);

/// Calls `matrix->SetXfm(x0, y0, orient, sx, sy, dx, dy)`.
ZELVAN_C_API void set_xfm(double x0, double y0, Mtx2DOrient orient, double sx, double sy, double dx,
                          double dy, Mtx2D* matrix);

// ---- composition in place

/// Calls `matrix->Translate(dx, dy)`.
ZELVAN_C_API void translate_matrix(double dx, double dy, Mtx2D* matrix);

/// Calls `matrix->Scale(sx, sy)`.
ZELVAN_C_API void scale_matrix(double sx, double sy, Mtx2D* matrix);

/// Calls `matrix->Rotate(angle, mode)`, in degrees. The matrix stands between angle and mode.
ZELVAN_C_API void rotate_matrix(double angle, Mtx2D* matrix, int mode);

/// Calls `matrix->Orient(orient)`.
ZELVAN_C_API void orient_matrix(Mtx2DOrient orient, Mtx2D* matrix);

/// Calls `matrix->ReflectInX()`.
ZELVAN_C_API void reflect_matrix_x(Mtx2D* matrix);

/// Calls `matrix->ReflectInY()`.
ZELVAN_C_API void reflect_matrix_y(Mtx2D* matrix);

// ---- products and decomposition

/// Writes `*first * *second` to `*result`. Unlike with `Mtx2D::Multiply`, `result` may be either
/// operand.
ZELVAN_C_API void multiply_matrices(Mtx2D* first, Mtx2D* second, Mtx2D* result);

/// Writes `matrix->Invert()` to `*result`; `result` may be `matrix`.
ZELVAN_C_API void invert_matrix(Mtx2D* matrix, Mtx2D* result);

/// Calls `matrix->GetOrientation(angle, mirror)`, in radians.
ZELVAN_C_API void xfm_get_orientation(Mtx2D* matrix, double* angle, int* mirror);

// ---- mapping

/// Calls `matrix->XfmRect(in, out)` on real records: `out` may be the same record as `in`.
ZELVAN_C_API void XfmRect(real_rect_t* in, real_rect_t* out, Mtx2D* matrix);

/// Calls `matrix->XfmPt(x, y, xo, yo)`.
ZELVAN_C_API void til_xfm_pnt(double x, double y, double* xo, double* yo, Mtx2D* matrix);

// ---- mapping of arrays and drawings
//
// Requires: room in the output for as many elements as the input has, overlapping nothing of it. A
// count of 0 or less touches no array, and makes an empty set.

/// Calls `matrix->RealXfmPts(n, in, out)`: maps `n` points in reals.
ZELVAN_C_API void zelvan_map_points(int n, const real_pt_t* in, real_pt_t* out,
                                    const Mtx2D* matrix);

/// Calls `matrix->XfmPts(n, in, out)`: maps `n` points and rounds them.
ZELVAN_C_API void zelvan_map_points_to_device(int n, const real_pt_t* in, int_pt_t* out,
                                              const Mtx2D* matrix);

/// Maps `n` integer points in reals, each as `matrix->InvXfmPt(in, out)` does.
///
/// Nothing is inverted here: to go back from the device, pass a matrix from `invert_matrix`.
ZELVAN_C_API void zelvan_map_points_from_device(int n, const int_pt_t* in, real_pt_t* out,
                                                const Mtx2D* matrix);

/// Calls `matrix->RealXfmPolygons(*in, out)`: maps the polygons of a set in reals.
ZELVAN_C_API void zelvan_map_polygons(const drw_pset_t* in, drw_pset_t* out, const Mtx2D* matrix);

/// Calls `matrix->XfmPolygons(*in, out)`: maps the polygons of a set and rounds them.
ZELVAN_C_API void zelvan_map_polygons_to_device(const drw_pset_t* in, drw_dpset_t* out,
                                                const Mtx2D* matrix);

/// Maps the vertices of a set as `zelvan_map_points_from_device` does, and copies its flags.
///
/// All vertices are kept, repeats included. The pointers of `*out` are read, and its `n_points` is
/// written.
ZELVAN_C_API void zelvan_map_polygons_from_device(const drw_dpset_t* in, drw_pset_t* out,
                                                  const Mtx2D* matrix);
