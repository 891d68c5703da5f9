/// Conic arcs: the kind of curve, its standard form, and points on it.
///
/// A conic arc is the part of the curve A x^2 + B x y + C y^2 + D x + E y + F = 0 between two end
/// points. A caller asks for the type, fills the standard form of that type, and computes points
/// by a parameter that is 0 at the arc's start.
///
/// A standard form lives in a frame turned by an angle r about the origin. A point (u, v) of
/// that frame is, in the drawing, at
///
///     x = u cos r - v sin r            y         v
///     y = v cos r + u sin r            ^    .    ^  u
///                                      |     \  |  .   r is positive counter-clockwise,
///                                      |      \ | /    in radians like every angle here
///                                      +--> x   o
///
/// Only `utl_conic_type` tests the kind of curve. A form built of a conic of another type can hold
/// infinities, NaN and meaningless numbers, and so can its points. Requires, throughout: no null
/// pointers. Nothing is allocated or kept; every function may run on any thread.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

#include <cstddef>

/// A conic arc. Nothing tests whether the ends lie on the curve.
struct utl_conic_t {
  double a;         ///< the coefficient A, of x squared
  double b;         ///< the coefficient B, of x y
  double c;         ///< the coefficient C, of y squared
  double d;         ///< the coefficient D, of x
  double e;         ///< the coefficient E, of y
  double f;         ///< the constant term F
  real_pt_t start;  ///< one end of the arc
  real_pt_t end;    ///< the other
  short clockwise;  ///< ellipses only: non-zero clockwise from start to end, 0 counter-clockwise
};

/// The arc of an ellipse or circle, filled by `utl_standard_ellipse`.
///
///     u = axis_x cos p - off_x              v
///     v = axis_y sin p - off_y         . ---|--- .   sweep > 0: counter-clockwise
///     p = start + t                  end    |     \                               .
///     t from 0 to sweep                     o------start  (p = 0 is along u)
struct utl_ellipse_t {
  double sin_rot;  ///< sine of the frame's turn
  double cos_rot;  ///< cosine of the frame's turn
  double off_x;    ///< minus the u of the centre, in the turned frame
  double off_y;    ///< minus the centre's v
  double start;    ///< parameter angle of the arc's first end in radians, -pi to pi
  double sweep;    ///< signed, in radians, to the other end: positive counter-clockwise
  double axis_x;   ///< the semi-axis along u
  double axis_y;   ///< the semi-axis along v
};

/// The arc of a hyperbola, on one of its branches, filled by `utl_standard_hyperbola`. The free
/// parameter runs along the axis that the branches do not open along, and counts from the centre.
struct utl_hyperbola_t {
  double sin_rot;    ///< sine of the frame's turn
  double cos_rot;    ///< cosine of the frame's turn
  double cen_x;      ///< the centre's u, in the turned frame
  double cen_y;      ///< the centre's v
  double start;      ///< the free parameter at the arc's first end
  double end;        ///< and at its other end
  double sq_x;       ///< the squared semi-axis along u, with a sign: of the two one is negative
  double sq_y;       ///< the squared semi-axis along v, likewise
  double branch;     ///< 1.0 or -1.0, the side of the centre on which the arc lies
  short y_branches;  ///< 1: branches open along v, the free parameter runs along u; 0: v and u
                     ///< exchanged
};

/// The arc of a parabola, filled by `utl_standard_parabola`. The free parameter runs across the
/// axis and counts from the vertex.
struct utl_parabola_t {
  double sin_rot;  ///< sine of the frame's turn
  double cos_rot;  ///< cosine of the frame's turn
  double vtx_x;    ///< the vertex's u, in the turned frame
  double vtx_y;    ///< the vertex's v
  double start;    ///< the free parameter at the arc's first end
  double end;      ///< and at its other end
  double k;        ///< the offset along the axis is k times the free parameter squared
  short y_of_x;    ///< 1: the free parameter runs along u; 0: along v
};

static_assert(offsetof(utl_conic_t, a) == 0 && offsetof(utl_conic_t, f) == 40 &&
                  offsetof(utl_conic_t, start) == 48 && offsetof(utl_conic_t, end) == 64 &&
                  offsetof(utl_conic_t, clockwise) == 80 &&
                  sizeof(utl_conic_t) == 80 + alignof(double),
              "layout is interface");
static_assert(offsetof(utl_ellipse_t, cos_rot) == 8 && offsetof(utl_ellipse_t, off_x) == 16 &&
                  offsetof(utl_ellipse_t, start) == 32 && offsetof(utl_ellipse_t, sweep) == 40 &&
                  offsetof(utl_ellipse_t, axis_x) == 48 && sizeof(utl_ellipse_t) == 64,
              "layout is interface");
static_assert(offsetof(utl_hyperbola_t, cos_rot) == 8 && offsetof(utl_hyperbola_t, cen_x) == 16 &&
                  offsetof(utl_hyperbola_t, start) == 32 && offsetof(utl_hyperbola_t, end) == 40 &&
                  offsetof(utl_hyperbola_t, sq_x) == 48 &&
                  offsetof(utl_hyperbola_t, branch) == 64 &&
                  offsetof(utl_hyperbola_t, y_branches) == 72 &&
                  sizeof(utl_hyperbola_t) == 72 + alignof(double),
              "layout is interface");
static_assert(offsetof(utl_parabola_t, cos_rot) == 8 && offsetof(utl_parabola_t, vtx_x) == 16 &&
                  offsetof(utl_parabola_t, start) == 32 && offsetof(utl_parabola_t, end) == 40 &&
                  offsetof(utl_parabola_t, k) == 48 && offsetof(utl_parabola_t, y_of_x) == 56 &&
                  sizeof(utl_parabola_t) == 56 + alignof(double),
              "layout is interface");

/// The results of `utl_conic_type`.
enum utl_conic_code : char {
  utl_conic_line = 'L',       ///< no standard form: the segment between the ends stands for it
  utl_conic_parabola = 'P',   ///< for `utl_standard_parabola`
  utl_conic_hyperbola = 'H',  ///< for `utl_standard_hyperbola`
  utl_conic_ellipse = 'E',    ///< for `utl_standard_ellipse`
  utl_conic_circle = 'C',     ///< for `utl_standard_ellipse` as well
  utl_conic_unknown = '?'     ///< none of these, and no standard form
};

/// Returns the kind of curve, a `utl_conic_code`, from the coefficients alone.
///
/// A value of up to 1e-05 counts as zero, and the coefficients are not scaled first. With all of
/// its coefficients divided by 1000, the unit circle is called a parabola.
///
/// So scale the whole equation until the largest of |a|, |b| and |c| is about 1, however large d, e
/// and f become. Don't scale by the largest of all six: a circle about the origin of radius 317 is
/// called a line if its f is scaled to -1.
///
/// A conic with neither an x nor an x^2 term, or with neither a y nor a y^2 term, is called a line:
/// x y = 1 and x y + x = 1 are. Degenerate curves are not told apart: two lines that cross are
/// called a hyperbola, two slanted parallel lines a parabola, and a single point or a curve without
/// points an ellipse or circle. Returns '?' if the discriminant is not a number.
ZELVAN_C_API char utl_conic_type(utl_conic_t* conic);

/// Fills the standard form of type 'E' or 'C'.
///
/// Ends that coincide make the whole ellipse, and so do ends up to 0.0001 apart in the parameter:
/// the sweep is then a whole turn, plus or minus their distance. One case differs: clockwise from a
/// parameter just above -pi to one just below pi, the sweep is the short way between them.
///
/// An ellipse whose smaller axis is at most a hundredth of the larger counts as flat: start and
/// sweep are 0.0, whatever its ends. The axes of a single point are 0.0 or what rounding leaves. A
/// curve without points gets the axes of one with points: x^2 + y^2 + 1 = 0 those of x^2 + y^2 = 1.
ZELVAN_C_API void utl_standard_ellipse(utl_conic_t* conic, utl_ellipse_t* out);

/// Fills the standard form of type 'H'. The first end decides the branch.
///
/// For two lines that cross, `sq_x` and `sq_y` are 0.0 or what rounding leaves instead.
ZELVAN_C_API void utl_standard_hyperbola(utl_conic_t* conic, utl_hyperbola_t* out);

/// Fills the standard form of type 'P'. For two parallel lines it holds infinities,
/// NaN or meaningless numbers.
ZELVAN_C_API void utl_standard_parabola(utl_conic_t* conic, utl_parabola_t* out);

/// Stores the point at `t` in drawing coordinates: 0.0 is the arc's start, `sweep` its other end.
/// Other values are on the curve as well. `t` is an angle in radians, measured before the circle is
/// stretched into the ellipse.
ZELVAN_C_API void utl_ellipse_point(utl_ellipse_t* form, double t, real_pt_t* out);

/// Stores the point whose parameter is `start + t`: 0.0 is the arc's start, `end - start` its other
/// end. The parameter is measured across the axis in drawing units; `t` is not the length of the
/// arc. Every `t` has a point, on the branch of the first end. For two lines that cross,
/// coordinates can be NaN.
ZELVAN_C_API void utl_hyperbola_point(utl_hyperbola_t* form, double t, real_pt_t* out);

/// Stores the point whose parameter is `start + t`: 0.0 is the arc's start, `end - start` its other
/// end. The parameter is measured across the axis in drawing units; `t` is not the length of the
/// arc.
ZELVAN_C_API void utl_parabola_point(utl_parabola_t* form, double t, real_pt_t* out);
