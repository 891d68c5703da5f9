/// The two-dimensional affine transform and the mapping of coordinates through it.
///
/// Points are row vectors, so a product A * B acts with A first and with B after it:
///
///     x' = m11 x + m21 y + tx
///     y' = m12 x + m22 y + ty
///
/// From the identity, a positive angle turns the positive x axis towards the positive y axis:
/// counter-clockwise where y runs up. Angles passed to this class are in degrees; an angle that
/// it returns is in the unit that the operation names.
///
/// No operation reports an error or refuses an argument: infinities and NaN flow through the
/// arithmetic. Nothing is allocated. Any number of threads may map through one matrix while
/// none changes it.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

#include <cstddef>
#include <type_traits>

/// Values of `Mtx2D::type`: which elements are zero. Mapping operations skip the terms of these
/// elements, whatever the elements hold.
enum Mtx2DType : int {
  Mtx2DTypeDiagonal = 0,  ///< m12 and m21 are zero
  Mtx2DTypeQuadrant = 1,  ///< m11 and m22 are zero: turns by 90 and 270 degrees, mirrored or not
  Mtx2DTypeGeneral = 2,   ///< no promise
  Mtx2DTypeIdentity = 3   ///< was exactly the identity when tagged; mapped like the general type
};

/// The eight axis-aligned orientations. Turns are counter-clockwise where y runs up; of two
/// steps in one name the first acts first.
enum Mtx2DOrient : int {
  Mtx2DOrientNone = 0,           ///< as it is
  Mtx2DOrientRot90 = 1,          ///< a quarter turn
  Mtx2DOrientRot180 = 2,         ///< a half turn
  Mtx2DOrientRot270 = 3,         ///< three quarters of a turn
  Mtx2DOrientReflectX = 4,       ///< y changes sign
  Mtx2DOrientReflectY = 5,       ///< x changes sign
  Mtx2DOrientRot90ReflectY = 6,  ///< a quarter turn, then x changes sign
  Mtx2DOrientRot90ReflectX = 7   ///< a quarter turn, then y changes sign
};

/// The side on which `Mtx2D::Rotate` composes. Every value but 1 acts like `Mtx2DRotateLast`.
enum Mtx2DRotateMode : int {
  Mtx2DRotateFirst = 1,  ///< before what the matrix does
  Mtx2DRotateLast = 2    ///< after what the matrix does
};

/// A 2 by 2 linear part, a translation, a record of reflections and a type tag.
///
/// The fields are public because the flat functions pass the matrix as a record. Code that
/// writes the elements itself calls `SetType` afterwards: a stale tag 0 or 1 makes the mapping
/// drop terms.
class Mtx2D {
 public:
  double m11;  ///< factor of x in x'
  double m12;  ///< factor of x in y'
  double m21;  ///< factor of y in x'
  double m22;  ///< factor of y in y'
  double tx;   ///< added to x'
  double ty;   ///< added to y'
  int mirror;  ///< bit 0 toggles with each reflection in x, bit 1 in y; no mapping reads it
  int type;    ///< a `Mtx2DType`

  // ---- construction and state

  /// Makes an identity of type diagonal; only `SetIdentity` sets the type `Mtx2DTypeIdentity`.
  ZELVAN_INLINE_API Mtx2D() { Identity(); }

  /// Makes the matrix that `SetXfm` builds.
  ZELVAN_API Mtx2D(double x0, double y0, Mtx2DOrient orient, double sx, double sy, double dx,
                   double dy);

  /// Copies all eight fields as they are.
  Mtx2D(const Mtx2D&) = default;
  Mtx2D& operator=(const Mtx2D&) = default;
  Mtx2D& operator=(Mtx2D&&) = default;

  /// Replaces the matrix by the transform that carries the reference point (x0, y0) to
  /// (dx, dy), with the given orientation and then the scales sx, sy about it.
  ///
  /// `mirror` records the orientation only, not a negative scale.
  ZELVAN_API void SetXfm(double x0, double y0, Mtx2DOrient orient, double sx, double sy, double dx,
                         double dy);

  /// Makes this the state of a new matrix: identity elements, no reflection, type diagonal.
  ZELVAN_INLINE_API void Identity() {
    m11 = 1.0;
    m12 = 0.0;
    m21 = 0.0;
    m22 = 1.0;
    tx = 0.0;
    ty = 0.0;
    mirror = 0;
    type = Mtx2DTypeDiagonal;
  }

  /// Calls `Identity`.
  ZELVAN_INLINE_API void Initialize() { Identity(); }

  /// Sets the type `Mtx2DTypeIdentity` if the six elements are exactly the identity's; otherwise
  /// does nothing. It never changes an element.
  ZELVAN_API void SetIdentity();

  /// Derives the type from the elements by exact comparison with zero; never `Mtx2DTypeIdentity`.
  ZELVAN_API void SetType();

  /// Returns 1 if the type is `Mtx2DTypeIdentity`, else 0.
  ///
  /// The elements are not read: the type stays after a `Translate` or `Scale`, until an operation
  /// derives it anew.
  ZELVAN_INLINE_API unsigned short IsIdentity() { return type == Mtx2DTypeIdentity; }

  /// Returns 1 if any of the six elements differs, else 0; `mirror` and `type` are not compared.
  /// A matrix that holds a NaN differs from itself.
  ZELVAN_API unsigned short operator!=(const Mtx2D& other) const;

  // ---- composition in place: the new step acts after what the matrix already does

  /// Adds to the translation.
  ZELVAN_API void Translate(double dx, double dy);

  /// Scales x' by sx and y' by sy, the translation included. `mirror` does not record a negative
  /// factor.
  ZELVAN_API void Scale(double sx, double sy);

  /// Turns by `angle` degrees, before or after what the matrix does: `mode` is a
  /// `Mtx2DRotateMode`.
  ///
  /// Exactly 0, 90, 180 and 270 use exact sines and cosines and so keep exact zeros; every other
  /// angle, 360 and -90 among them, goes through `sin` and `cos` with 3.141592654 for pi. With
  /// `Mtx2DRotateFirst` the translation does not change.
  ZELVAN_API void Rotate(double angle, int mode);

  /// Composes one of the eight orientations, which acts after what the matrix does. Each reflection
  /// toggles its bit of `mirror`. Any other value changes no element. In every case the type is
  /// derived anew.
  ZELVAN_API void Orient(Mtx2DOrient orient);

  /// Mirrors in the x axis: y' changes sign, a zero too, and bit 0 of `mirror` toggles.
  ZELVAN_API void ReflectInX();

  /// Mirrors in the y axis: x' changes sign, a zero too, and bit 1 of `mirror` toggles.
  ZELVAN_API void ReflectInY();

  /// Sets m21, the factor of y in x', to `shear`. This is an assignment: an earlier shear is
  /// replaced. Derives the type.
  ZELVAN_API void ShearInX(double shear);

  /// Flips y for a device of that height: m22 changes sign, and ty becomes `height`.
  ///
  /// Meant for a matrix that maps y to y' = m22 y. Afterwards y' = height - m22 y, with m22 as it
  /// was before. An old ty is lost, and m12 doesn't change sign. `mirror` does not record the flip.
  ZELVAN_API void InvertYAxis(double height);

  // ---- products and measures

  /// Returns the product that acts with this matrix first and with `other` after it.
  ZELVAN_API Mtx2D operator*(const Mtx2D& other);

  /// Writes `*first * *second` to `*result`. Requires: no null pointer, and `result` is neither of
  /// the two operands.
  ZELVAN_API static void Multiply(Mtx2D* first, Mtx2D* second, Mtx2D* result);

  /// Returns the inverse. A singular matrix is not detected: the result then holds infinities and
  /// NaN. Check `GetDeterminant` first.
  ZELVAN_API Mtx2D Invert();

  /// Returns the determinant, m22 m11 - m21 m12. Its magnitude is the factor by which areas grow.
  ///
  /// It is below 0.0 if the matrix reverses the sense of rings, and 0.0 if it is singular.
  ZELVAN_API double GetDeterminant();

  /// Returns 1 if the determinant is strictly below 0.0, so that a ring's sense is reversed, else
  /// 0.
  ZELVAN_API unsigned short ReversesOrientation();

  // ---- decomposition
  //
  // The operations that read an angle are not interchangeable. They differ in unit, in range, in
  // whether a reflection counts, and in whether it acts before the turn or after it. A positive
  // angle is one by which `Rotate` turns with a positive angle.
  //
  // Quadrant codes 0, 1, 2, 3 count quarter turns; -1 means that the first row is zero. They are
  // right only for a matrix of quadrant turns, and do not round others: m12 is tested first, so a
  // turn of 30 degrees has code 1 and one of 200 degrees code 3.
  //
  // "Mirrored" is 1 when the determinant is strictly below 0.0, else 0, whatever `mirror` says.
  // Requires, throughout: no null pointers.

  /// Copies the six elements to the variables of their names.
  ZELVAN_API void GetElements(double* m11, double* m12, double* m21, double* m22, double* tx,
                              double* ty);

  /// Returns the length of the first row, (m11, m12): the factor by which the matrix stretches
  /// segments parallel to the x axis.
  ZELVAN_API double GetScale();

  /// Returns the unsigned turn of the x axis in radians, 0 to pi; NaN if the first row is zero.
  ///
  /// A turn by -30 degrees results in the radians of 30 degrees.
  ZELVAN_API double GetRotation();

  /// Stores the turn in radians, -pi to pi, and the matrix's `mirror`.
  ///
  /// Each reflection that `mirror` records is first taken out by a change of sign: of m11 for bit
  /// 0, of m12 for bit 1. So a single reflection in either axis results in pi. Only a uniform scale
  /// is divided out.
  ZELVAN_API void GetOrientation(double* angle, int* mirror);

  /// Reads the matrix as a turn first and a reflection in the x axis after it.
  ZELVAN_API void GetOrientationAndXMirror(unsigned short* mirrored, int* orientation);

  /// Reads the matrix as a reflection in the x axis first and a turn after it. Equal to
  /// `GetOrientationAndXMirror` where nothing is mirrored.
  ZELVAN_API void GetXMirrorAndOrientation(unsigned short* mirrored, int* orientation);

  /// Reads the matrix as a reflection in the x axis first and a turn after it, in degrees.
  ///
  /// The turn is 0 to 360, and snaps to quadrant turns: strictly between 89.9 and 90.1 it becomes
  /// 90.0, likewise about 180 and 270. Strictly between 0 and 0.1, or between 359.9 and 360, it
  /// becomes 0.0. Exactly 360.0 stays; it results from an m12 that is just below zero. The turn is
  /// NaN if the first row is zero.
  ZELVAN_API void GetXMirrorAndRotation(unsigned short* mirrored, double* angle);

  // ---- mapping of points and rectangles
  //
  // Reals become integers by adding 0.5 with the sign of the value and truncating: halves go
  // away from zero. Nothing is clamped: what does not fit 32 signed bits, and NaN, becomes
  // -2147483648. One point maps to the same bits through every operation below; only the payload
  // of a NaN can differ where two NaN meet in a sum.
  //
  // Requires, throughout: no null pointers; `out` holds as many elements as `in` and does not
  // overlap it. A count of 0 or less reads and writes nothing.

  /// Maps (x, y) to (*xo, *yo).
  ZELVAN_API void XfmPt(double x, double y, double* xo, double* yo);

  /// Maps one point and rounds it.
  ZELVAN_API void XfmPt(real_pt_t* in, int_pt_t* out);

  /// Maps one point in reals.
  ZELVAN_API void RealXfmPt(real_pt_t* in, real_pt_t* out);

  /// Maps an integer point by this matrix. Nothing is inverted here: to go back from device
  /// coordinates, call this on the matrix that `Invert` returns.
  ZELVAN_API void InvXfmPt(int_pt_t* in, real_pt_t* out);

  /// Maps `n` points in reals.
  ZELVAN_API void RealXfmPts(int n, real_pt_t* in, real_pt_t* out);

  /// Maps `n` points and rounds them.
  ZELVAN_API void XfmPts(int n, real_pt_t* in, int_pt_t* out);

  /// Maps `n` points, rounds them to whole units and then multiplies by 8 in 32 bits, high
  /// bits being lost: 29.3 fixed point whose fraction is always zero.
  ZELVAN_API void XfmFPts(int n, real_pt_t* in, int_pt_t* out);

  /// Maps `n` points, rounds them and keeps the low 16 bits: coordinates wrap modulo 65536.
  ZELVAN_API void XfmSPts(int n, real_pt_t* in, short_pt_t* out);

  /// Writes the axis-aligned box of the four mapped corners, in the corner order of `real_rect_t`.
  ///
  /// The input may be any four points. Here `out` may be the same record as `in`.
  ZELVAN_API void XfmRect(real_rect_t* in, real_rect_t* out);

  /// Writes the box of the four mapped corners: takes the box in reals, then rounds it.
  ZELVAN_API void XfmRect(real_rect_t* in, int_rect_t* out);

  /// Maps the corners of an integer rectangle and writes their box, in reals.
  ZELVAN_API void XfmRect(int_rect_t* in, real_rect_t* out);

  // ---- mapping of polygons
  //
  // Repeated points collapse: a vertex that lands on the previous output vertex is dropped. In a
  // set, its edge flag replaces that of the vertex it repeats, so that a closing flag survives. If
  // exactly three vertices remain and the third equals the first, the count becomes 2; the third
  // vertex and its flag remain in the arrays, after the count.
  //
  // A set is walked straight through: where the last vertex of one polygon and the first of
  // the next land on the same point they collapse too, and the two polygons run together. Drawings
  // are mapped by `XfmPolygons` instead.
  //
  // Requires: output arrays with room for as many vertices as the input has, overlapping
  // nothing of the input. A count of 0 or less makes a count of 0 and touches no array.

  /// Maps and rounds a polygon of `n` vertices; `*n_out` is the number kept.
  ZELVAN_API void XfmPolyPts(int n, int* n_out, real_pt_t* in, int_pt_t* out);

  /// Maps and rounds a polygon set, edge flags included. Of `out`, the pointers are read and
  /// `n_points` is written.
  ZELVAN_API void XfmPolySetPts(drw_pset_t* in, drw_dpset_t* out);

  /// Maps a polygon set in reals, as `XfmPolySetPts` does, but compares the unrounded coordinates
  /// to find consecutive vertices that land on the same point.
  ZELVAN_API void RealXfmPolyPtSet(drw_pset_t* in, drw_pset_t* out);

  // ---- mapping of drawings
  //
  // Each polygon of a set is mapped by itself: polygon k of `in` becomes polygon k of `*out`.
  // Of consecutive vertices of a polygon that land on the same point the last one stays, with its
  // flag. So a polygon keeps its closing flag, and at least one vertex. Its first vertex is
  // compared neither with its last one nor with the polygon before it.
  //
  // Vertices after the last closing flag are dropped. A count of 0 or less makes an empty set and
  // touches no array.
  //
  // Requires: arrays of `*out` with room for as many vertices as `in` has, overlapping nothing of
  // `in`. Their pointers are read and `n_points` is written. Elements after the result may be
  // overwritten.

  /// Maps and rounds the polygons of a set, each by itself.
  ZELVAN_API void XfmPolygons(const drw_pset_t& in, drw_dpset_t* out) const;

  /// Maps the polygons of a set in reals, each by itself; 0.0 and -0.0 are the same coordinate.
  ZELVAN_API void RealXfmPolygons(const drw_pset_t& in, drw_pset_t* out) const;

  // ---- the operations that only read, for const matrices and const input
  //
  // Each calls the exported overload without const, which changes neither the matrix nor its input.
  // These overloads are inline and export no symbols.

  /// Calls the overload without const, which changes nothing.
  unsigned short IsIdentity() const { return writable().IsIdentity(); }
  Mtx2D operator*(const Mtx2D& other) const { return writable() * other; }
  Mtx2D Invert() const { return writable().Invert(); }
  double GetDeterminant() const { return writable().GetDeterminant(); }
  unsigned short ReversesOrientation() const { return writable().ReversesOrientation(); }
  void GetElements(double* e11, double* e12, double* e21, double* e22, double* ex,
                   double* ey) const {
    writable().GetElements(e11, e12, e21, e22, ex, ey);
  }
  double GetScale() const { return writable().GetScale(); }
  double GetRotation() const { return writable().GetRotation(); }
  void GetOrientation(double* angle, int* mirrors) const {
    writable().GetOrientation(angle, mirrors);
  }
  void GetOrientationAndXMirror(unsigned short* mirrored, int* orientation) const {
    writable().GetOrientationAndXMirror(mirrored, orientation);
  }
  void GetXMirrorAndOrientation(unsigned short* mirrored, int* orientation) const {
    writable().GetXMirrorAndOrientation(mirrored, orientation);
  }
  void GetXMirrorAndRotation(unsigned short* mirrored, double* angle) const {
    writable().GetXMirrorAndRotation(mirrored, angle);
  }
  void XfmPt(double x, double y, double* xo, double* yo) const { writable().XfmPt(x, y, xo, yo); }
  void XfmPt(const real_pt_t* in, int_pt_t* out) const { writable().XfmPt(writable(in), out); }
  void RealXfmPt(const real_pt_t* in, real_pt_t* out) const {
    writable().RealXfmPt(writable(in), out);
  }
  void InvXfmPt(const int_pt_t* in, real_pt_t* out) const {
    writable().InvXfmPt(writable(in), out);
  }
  void RealXfmPts(int n, const real_pt_t* in, real_pt_t* out) const {
    writable().RealXfmPts(n, writable(in), out);
  }
  void XfmPts(int n, const real_pt_t* in, int_pt_t* out) const {
    writable().XfmPts(n, writable(in), out);
  }
  void XfmFPts(int n, const real_pt_t* in, int_pt_t* out) const {
    writable().XfmFPts(n, writable(in), out);
  }
  void XfmSPts(int n, const real_pt_t* in, short_pt_t* out) const {
    writable().XfmSPts(n, writable(in), out);
  }
  void XfmRect(const real_rect_t* in, real_rect_t* out) const {
    writable().XfmRect(writable(in), out);
  }
  void XfmRect(const real_rect_t* in, int_rect_t* out) const {
    writable().XfmRect(writable(in), out);
  }
  void XfmRect(const int_rect_t* in, real_rect_t* out) const {
    writable().XfmRect(writable(in), out);
  }
  void XfmPolyPts(int n, int* n_out, const real_pt_t* in, int_pt_t* out) const {
    writable().XfmPolyPts(n, n_out, writable(in), out);
  }
  void XfmPolySetPts(const drw_pset_t* in, drw_dpset_t* out) const {
    writable().XfmPolySetPts(writable(in), out);
  }
  void RealXfmPolyPtSet(const drw_pset_t* in, drw_pset_t* out) const {
    writable().RealXfmPolyPtSet(writable(in), out);
  }

 private:
  // For operations that are exported without const and change nothing.
  Mtx2D& writable() const { return const_cast<Mtx2D&>(*this); }
  template <class Input>
  static Input* writable(const Input* in) {
    return const_cast<Input*>(in);
  }
};

static_assert(sizeof(Mtx2D) == 56 && std::is_standard_layout<Mtx2D>::value &&
                  std::is_trivially_copyable<Mtx2D>::value,
              "layout is interface");
static_assert(offsetof(Mtx2D, m11) == 0 && offsetof(Mtx2D, m12) == 8 &&
                  offsetof(Mtx2D, m21) == 16 && offsetof(Mtx2D, m22) == 24 &&
                  offsetof(Mtx2D, tx) == 32 && offsetof(Mtx2D, ty) == 40 &&
                  offsetof(Mtx2D, mirror) == 48 && offsetof(Mtx2D, type) == 52,
              "layout is interface");
