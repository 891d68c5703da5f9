/// Extents of curves: the largest and smallest x and y that a curve reaches, in the caller's own
/// coordinates.
///
/// Boxes go to two points, `max` and `min`. Circles, arcs and cubics give their box, conics one
/// made of samples. The results are written after all input has been read, so they may stand in
/// records that were passed as input.
///
/// Requires, throughout: no null pointers. Nothing is allocated or kept; every function may run
/// on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/geometry/conic.h>
#include <zelvan/transforms/records.h>

/// The box of the circular arc from `a` to `b`: counter-clockwise (where y runs up) if
/// `clockwise` is 0, else clockwise. The same ends the other way give the rest of the circle.
///
///              1  |  0                 Quadrants by the angle of an end. An end exactly on an
///             ----o---- 0 degrees      axis belongs to the quadrant before it, only due east
///              2  |  3                 is in quadrant 0 and due south in 3.
///
/// What an end reaches is taken from its own coordinates, whether or not it lies on the circle.
/// Two equal ends give the whole circle, an end on the centre gives the centre alone. Where an
/// end or the centre is not a number, neither is the result. Mind the `float` radius.
ZELVAN_API void utl_maxmin_arc(real_pt_t* center, float radius, real_pt_t* a, real_pt_t* b,
                               short clockwise, real_pt_t* max, real_pt_t* min);

/// The box of a whole circle. A negative radius gives `max` below `min`.
ZELVAN_C_API void utl_maxmin_circle(real_pt_t* center, double radius, real_pt_t* max,
                                    real_pt_t* min);

/// The box of a conic arc's ends and of sample points along it: about every 5 degrees of the
/// parameter of an ellipse, 40 on any other curve. So it lies within the true box; on an ellipse
/// it falls short by at most 0.22 % of the distance from the centre to the side. Conics of the
/// types 'L' and '?' give the box of their ends.
ZELVAN_C_API void utl_maxmin_conic(utl_conic_t* conic, real_pt_t* max, real_pt_t* min);

/// The box of a parametric cubic over t from 0 to 1. `coefficients` are eight: four of x and
/// then four of y, the highest power first: a t^3 + b t^2 + c t + d.
ZELVAN_C_API void utl_maxmin_cubic(double* coefficients, real_pt_t* max, real_pt_t* min);

/// Turns the box of four numbers (x and y of one corner, x and y of the opposite one) by `angle`
/// radians about `center`, counter-clockwise if positive where y runs up, and replaces it by the
/// upright box of what comes out, smallest x and y first. Its corners may come in any order.
ZELVAN_C_API void utl_maxmin_rotrect(real_pt_t* center, double* box, double angle);

/// The value at `t` of one cubic of four coefficients, the highest power first.
ZELVAN_C_API double utl_evaluate_cubic(double* coefficients, double t);
