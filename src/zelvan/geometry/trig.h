/// Turning points and measuring angles. Positive is counter-clockwise where y runs up.
///
/// Requires, throughout: no null pointers. Nothing is kept; every function may run on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Turns `point` in place about `center`, by the angle with that sine and cosine. (Sine before
/// cosine, as `drw_get_trig` gives them.)
ZELVAN_C_API void utl_rotate_point(real_pt_t* center, real_pt_t* point, double sine, double cosine);

/// The signed turn from the vector (x1, y1) to (x2, y2) in radians, from -pi to pi, with
/// 3.141592654 for pi: positive counter-clockwise. A vector of (0.0, 0.0) counts as one along x;
/// with a NaN the result is a NaN.
ZELVAN_C_API double utl_angle2d(double x1, double y1, double x2, double y2);

/// Sine and cosine of a whole number of degrees, of any size and sign, with 3.141592654 for pi.
/// Multiples of 360 are exact: 0 and 1. Other multiples of 90 come out within 1e-9 of 0, 1 or -1
/// and not exactly so; where that matters, use `Mtx2D::Rotate`.
ZELVAN_C_API void drw_get_trig(int degrees, double* sine, double* cosine);
