/// Point classes, real and integer, in the caller's own units.
///
/// Plain values: they copy byte by byte and use no heap.
#pragma once

#include <zelvan/export.h>

#include <type_traits>

/// A point in real coordinates.
class DblPt {
 public:
  double x;  ///< any value, infinities and NaN included
  double y;  ///< likewise

  /// Makes the point (0.0, 0.0) or (x0, y0).
  ZELVAN_INLINE_API DblPt() : x(0.0), y(0.0) {}
  ZELVAN_INLINE_API DblPt(double x0, double y0) : x(x0), y(y0) {}

  /// Replaces both coordinates.
  ZELVAN_INLINE_API void set(double x0, double y0) {
    x = x0;
    y = y0;
  }

  /// Returns true if both coordinates differ by strictly less than `tol`: a square about the point,
  /// not a circle.
  ///
  /// With a tolerance of 0.0 or less, or a NaN or an infinity in either point, the result is false,
  /// even for a point and itself.
  ZELVAN_API bool isEqualTo(const DblPt& other, double tol) const;
};

/// A point in integer coordinates.
class IntPt {
 public:
  int x;  ///< any value of 32 bits
  int y;  ///< likewise

  /// Makes the point (0, 0) or (x0, y0).
  ZELVAN_INLINE_API IntPt() : x(0), y(0) {}
  ZELVAN_INLINE_API IntPt(int x0, int y0) : x(x0), y(y0) {}

  /// Replaces both coordinates.
  ZELVAN_INLINE_API void set(int x0, int y0) {
    x = x0;
    y = y0;
  }

  /// Returns true if both coordinates are equal.
  ZELVAN_INLINE_API bool operator==(const IntPt& other) const {
    return x == other.x && y == other.y;
  }
};

static_assert(sizeof(DblPt) == 16 && sizeof(IntPt) == 8, "layout is interface");
static_assert(std::is_trivially_copyable<DblPt>::value && std::is_standard_layout<DblPt>::value,
              "regions copy points as bytes");
static_assert(std::is_trivially_copyable<IntPt>::value && std::is_standard_layout<IntPt>::value,
              "layout is interface");
