/// Rotation of points, and angles. Positive is counter-clockwise where y runs up.
///
/// Requires, throughout: no null pointers. Nothing is kept; every function may run on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Turns `point` in place about `center`, by the angle with the given sine and cosine. The sine
/// comes before the cosine, as in `drw_get_trig`.
ZELVAN_C_API void utl_rotate_point(real_pt_t* center, real_pt_t* point, double sine, double cosine);

/// Returns the signed turn from the vector (x1, y1) to (x2, y2) in radians, from -pi to pi:
/// positive counter-clockwise.
///
/// Pi is 3.141592654 here, so a turn across the negative x axis is off by up to 8.3e-10. A vector
/// of (0.0, 0.0) counts as one along x. With a NaN the result is a NaN.
ZELVAN_C_API double utl_angle2d(double x1, double y1, double x2, double y2);

/// Stores the sine and cosine of a whole number of degrees, of any size and sign.
///
/// Pi is 3.141592654 here. Multiples of 360 are exact: 0.0 and 1.0. At the other multiples of 90
/// what should be 0.0 is off by up to 6.2e-10; where that matters, use `Mtx2D::Rotate`.
ZELVAN_C_API void drw_get_trig(int degrees, double* sine, double* cosine);
