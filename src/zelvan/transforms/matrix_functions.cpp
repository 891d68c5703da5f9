#include <zelvan/transforms/matrix_functions.h>

void XfmRect(real_rect_t* in, real_rect_t* out, Mtx2D* matrix) { matrix->XfmRect(in, out); }

void til_xfm_pnt(double x, double y, double* xo, double* yo, Mtx2D* matrix) {
  matrix->XfmPt(x, y, xo, yo);
}
