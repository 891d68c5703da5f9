/// Distances from a point to drawing elements, in the caller's own coordinates.
///
/// With one exception they are octagonal estimates, made for picking the nearest element without
/// a square root: 0.96 times the larger plus 0.398 times the smaller of the differences in x and
/// y. That is within 4 % of the true distance in every direction: 4 % short along the axes and on
/// the diagonals, 3.9 % long at most, 22.5 degrees off the axes. The exception is the distance to
/// a circle line, which is true.
///
/// Requires, throughout: no null pointers. Infinities and NaN flow through the arithmetic. Nothing
/// is allocated, kept or changed, so every function may run on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/geometry/conic.h>
#include <zelvan/transforms/records.h>

/// Estimated distance of two points.
ZELVAN_C_API double utl_point_point(real_pt_t* p, real_pt_t* q);

/// Estimated distance from `p` to the nearest point of the segment from `a` to `b`. The ends may
/// come in either order and may coincide.
ZELVAN_C_API double utl_point_line(real_pt_t* p, real_pt_t* a, real_pt_t* b);

/// Estimated distance from `p` to a box of four corners, upright or turned; 0.0 inside and on its
/// sides.
///
///     box[2] ------- box[3]
///       |              |       A Z order and no ring: box[0] to box[1] and box[2] to box[3] are
///     box[0] ------- box[1]    opposite sides, run through in the same sense.
///
/// In ring order the result is no distance.
ZELVAN_C_API double utl_point_box(real_pt_t* p, real_pt_t* box);

/// True distance from `p` to the circle line, inside as well as outside; at the centre it is
/// `radius`.
ZELVAN_C_API double utl_point_circle(real_pt_t* p, real_pt_t* center, double radius);

/// Distance from `p` to the circular arc from `a` to `b`: counter-clockwise (where y runs up) if
/// `clockwise` is 0, else clockwise.
///
/// Within the arc's range of angles that is the true distance to the circle line, outside it the
/// estimate to the nearer end. Whether the ends lie on the circle is not asked.
ZELVAN_C_API double utl_point_circarc(real_pt_t* p, real_pt_t* center, double radius, real_pt_t* a,
                                      real_pt_t* b, short clockwise);

/// The smallest estimate from `p` to sample points of the conic arc: about every 5 degrees of the
/// parameter of an ellipse, 40 on any other curve. A conic of type 'L' is the segment between its
/// ends. 6.022e+23 means that no distance could be measured: an unknown conic, or no sample at a
/// comparable place.
ZELVAN_C_API double utl_point_conarc(real_pt_t* p, utl_conic_t* conic);
