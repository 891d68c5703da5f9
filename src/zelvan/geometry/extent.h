/// Extents of curves: the largest and smallest x and y that a curve reaches, in the caller's own
/// coordinates.
///
/// Boxes are stored in two points, `max` and `min`. Boxes of circles, circular arcs and cubics are
/// computed from the curve, those of conic arcs from samples. Results are written after all input
/// is read, so they may overwrite the input.
///
/// Requires, throughout: no null pointers. Nothing is allocated or kept; every function may run
/// on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/geometry/conic.h>
#include <zelvan/transforms/records.h>

/// Stores the box of the circular arc from `a` to `b`. It runs counter-clockwise (where y runs up)
/// if `clockwise` is 0, else clockwise: for the same ends that is the rest of the circle. `radius`
/// is a `float`, unlike that of `utl_maxmin_circle`, and so has only 24 significant bits.
///
/// Each extreme is the coordinate of an end; or, where the arc passes due east, north, west or
/// south of the centre, that of the whole circle. The choice depends on the quadrants of the two
/// ends:
///
///              1  |  0                 The quadrant depends on the angle of the end. An end
///             ----o---- 0 degrees      due east (0 degrees) or due north is in quadrant 0, due
///              2  |  3                 west in 1, due south in 3.
///
/// The coordinates of the ends are used as they are, whether or not they lie on the circle. If both
/// ends lie in the same direction from the centre, the arc is the whole circle; so also if they are
/// equal. (For `utl_point_circarc` such an arc is one point.) If an end lies on the centre, the box
/// is the centre alone. Otherwise, if an end or the centre holds a NaN, all results are NaN.
ZELVAN_API void utl_maxmin_arc(real_pt_t* center, float radius, real_pt_t* a, real_pt_t* b,
                               short clockwise, real_pt_t* max, real_pt_t* min);

/// Stores the box of a whole circle. With a negative radius, `max` lies below `min`.
ZELVAN_C_API void utl_maxmin_circle(real_pt_t* center, double radius, real_pt_t* max,
                                    real_pt_t* min);

/// Stores the box of a conic arc's ends and of sample points along it.
///
/// An ellipse has at least 3 samples, 5 to 7.5 degrees of the parameter apart, or less on arcs
/// shorter than 10 degrees. A hyperbola or parabola has 40. The steps of the parameter are equal.
///
/// If the ends lie on the curve, the box lies within the true one, up to rounding. On an ellipse it
/// falls short by at most 0.22 % of the distance from the centre to the side. On a hyperbola or
/// parabola there is no such bound.
///
/// None of this holds for a flat ellipse, one 100 times as long as wide or more. All its samples
/// are the one point at p = 0 (see `utl_ellipse_t`), whether on the arc or not. So most of the
/// ellipse can be missing, and the box can reach beyond the arc. Conics of the types 'L' and '?'
/// have no samples: the result is the box of their ends.
ZELVAN_C_API void utl_maxmin_conic(utl_conic_t* conic, real_pt_t* max, real_pt_t* min);

/// Stores the box of a parametric cubic over t from 0 to 1. `coefficients` has eight: four of x,
/// then four of y, the highest power first: a t^3 + b t^2 + c t + d.
///
/// A parabola or line needs an `a` of exactly 0.0. If rounding leaves a tiny one instead, as it
/// does for a quadratic Bezier curve written as a cubic, a turning point is lost: 1e-17 t^3 - 4 t^2
/// + 4 t gets the box of its ends, 0 to 0, although it rises to 1. So set `a` to 0.0 where |a| is
/// below 1e-12 times the larger of |b| and |c|; that moves no point by more than |a|.
ZELVAN_C_API void utl_maxmin_cubic(double* coefficients, real_pt_t* max, real_pt_t* min);

/// Turns a box about `center` and replaces it by the upright box of the result, smallest x and y
/// first.
///
/// `box` has four numbers: x and y of one corner, x and y of the opposite one; the corners may come
/// in any order. `angle` is in radians, counter-clockwise if positive where y runs up.
ZELVAN_C_API void utl_maxmin_rotrect(real_pt_t* center, double* box, double angle);

/// Returns the value at `t` of one cubic of four coefficients, the highest power first.
ZELVAN_C_API double utl_evaluate_cubic(double* coefficients, double t);
