/// Distances from a point to drawing elements, in the caller's own coordinates.
///
/// Distances to a circle line are exact, up to rounding. All others are octagonal estimates, made
/// for picking the nearest element without a square root: 0.96 times the larger plus 0.398 times
/// the smaller of the differences in x and y. Between two points the estimate is within 4 % of the
/// true distance: 4 % short along the axes and on the diagonals, and at most 3.9 % long, 22.5
/// degrees off the axes.
///
/// Requires, throughout: no null pointers. With infinities and NaN the result is what the
/// arithmetic makes of them, which need not be a NaN. Nothing is allocated, kept or changed, so
/// every function may run on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/geometry/conic.h>
#include <zelvan/transforms/records.h>

/// Returns the estimated distance between two points.
ZELVAN_C_API double utl_point_point(real_pt_t* p, real_pt_t* q);

/// Returns the estimated distance from `p` to the nearest point of the segment from `a` to `b`.
///
/// The ends may come in either order and may coincide: the result is the same.
///
/// The nearest point is found by its x. On a steep segment, rounding therefore moves it by about
/// the slope times the last digit of x. From (1000003, 4) to the segment from (1000000, 0) to
/// (1000000.0000000001, 10) the result is 5.034, and 2.88 if both ends have the same x. So set
/// nearly equal x to the same value.
ZELVAN_C_API double utl_point_line(real_pt_t* p, real_pt_t* a, real_pt_t* b);

/// Returns the estimated distance from `p` to a box of four corners, upright or turned; 0.0 inside.
///
///     box[2] ------- box[3]
///       |              |       A Z order and no ring: box[0] to box[1] and box[2] to box[3] are
///     box[0] ------- box[1]    opposite sides, run through in the same sense.
///
/// On a side the result is 0.0 up to rounding, such as 8.9e-16 at coordinates up to 20. Off a
/// corner of a turned box it is up to 27 % short of the true distance, elsewhere within 4 %. If the
/// corners are passed in ring order, the result is meaningless.
ZELVAN_C_API double utl_point_box(real_pt_t* p, real_pt_t* box);

/// Returns the true distance from `p` to the circle line, inside as well as outside; at the centre
/// it is `radius`.
ZELVAN_C_API double utl_point_circle(real_pt_t* p, real_pt_t* center, double radius);

/// Returns the distance from `p` to the circular arc from `a` to `b`: counter-clockwise (where y
/// runs up) if `clockwise` is 0, else clockwise.
///
/// Within the arc's range of angles that is the true distance to the circle line, outside it the
/// estimate to the nearer end. The centre counts as due east of itself. Nothing tests whether the
/// ends lie on the circle. Equal ends are one point, not the whole circle as in `utl_maxmin_arc`;
/// for that, call `utl_point_circle`.
ZELVAN_C_API double utl_point_circarc(real_pt_t* p, real_pt_t* center, double radius, real_pt_t* a,
                                      real_pt_t* b, short clockwise);

/// Returns the smallest estimate from `p` to sample points of the conic arc, those of
/// `utl_maxmin_conic`.
///
/// On a flat ellipse all samples are one point, so the result is the distance to that point, not to
/// the arc. A conic of type 'L' is the segment between its ends. 6.022e+23 means that no distance
/// could be measured: the conic is unknown, or every sample is NaN or farther away than that.
ZELVAN_C_API double utl_point_conarc(real_pt_t* p, utl_conic_t* conic);
