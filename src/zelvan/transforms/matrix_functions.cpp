#include <zelvan/transforms/matrix_functions.h>

#include <algorithm>

void initialize_matrix(Mtx2D* matrix) { matrix->Initialize(); }

void set_matrix_type(Mtx2D* matrix) { matrix->SetType(); }

void set_xfm(double x0, double y0, Mtx2DOrient orient, double sx, double sy, double dx, double dy,
             Mtx2D* matrix) {
  matrix->SetXfm(x0, y0, orient, sx, sy, dx, dy);
}

void translate_matrix(double dx, double dy, Mtx2D* matrix) { matrix->Translate(dx, dy); }

void scale_matrix(double sx, double sy, Mtx2D* matrix) { matrix->Scale(sx, sy); }

void rotate_matrix(double angle, Mtx2D* matrix, int mode) { matrix->Rotate(angle, mode); }

void orient_matrix(Mtx2DOrient orient, Mtx2D* matrix) { matrix->Orient(orient); }

void reflect_matrix_x(Mtx2D* matrix) { matrix->ReflectInX(); }

void reflect_matrix_y(Mtx2D* matrix) { matrix->ReflectInY(); }

void multiply_matrices(Mtx2D* first, Mtx2D* second, Mtx2D* result) { *result = *first * *second; }

void invert_matrix(Mtx2D* matrix, Mtx2D* result) { *result = matrix->Invert(); }

void xfm_get_orientation(Mtx2D* matrix, double* angle, int* mirror) {
  matrix->GetOrientation(angle, mirror);
}

void XfmRect(real_rect_t* in, real_rect_t* out, Mtx2D* matrix) { matrix->XfmRect(in, out); }

void til_xfm_pnt(double x, double y, double* xo, double* yo, Mtx2D* matrix) {
  matrix->XfmPt(x, y, xo, yo);
}

void zelvan_map_points(int n, const real_pt_t* in, real_pt_t* out, const Mtx2D* matrix) {
  matrix->RealXfmPts(n, in, out);
}

void zelvan_map_points_to_device(int n, const real_pt_t* in, int_pt_t* out, const Mtx2D* matrix) {
  matrix->XfmPts(n, in, out);
}

void zelvan_map_points_from_device(int n, const int_pt_t* in, real_pt_t* out, const Mtx2D* matrix) {
  for (int i = 0; i < n; ++i) matrix->InvXfmPt(in + i, out + i);
}

void zelvan_map_polygons(const drw_pset_t* in, drw_pset_t* out, const Mtx2D* matrix) {
  matrix->RealXfmPolygons(*in, out);
}

void zelvan_map_polygons_to_device(const drw_pset_t* in, drw_dpset_t* out, const Mtx2D* matrix) {
  matrix->XfmPolygons(*in, out);
}

void zelvan_map_polygons_from_device(const drw_dpset_t* in, drw_pset_t* out, const Mtx2D* matrix) {
  const int n = std::max(in->n_points, 0);
  zelvan_map_points_from_device(n, in->points, out->points, matrix);
  std::copy_n(in->edge_flags, n, out->edge_flags);
  out->n_points = n;
}
