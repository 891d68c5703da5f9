/// `Mtx2D` for callers that reach the library by flat names: each function is the operation
/// of the same purpose on `*matrix`, with its rules and limits.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/records.h>

/// As `matrix->XfmRect(in, out)` on real records: `out` may be the same record as `in`.
ZELVAN_C_API void XfmRect(real_rect_t* in, real_rect_t* out, Mtx2D* matrix);

/// As `matrix->XfmPt(x, y, xo, yo)`.
ZELVAN_C_API void til_xfm_pnt(double x, double y, double* xo, double* yo, Mtx2D* matrix);
