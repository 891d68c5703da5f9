/// An axis-aligned box and the test whether a point lies in it.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/points.h>

/// An axis-aligned rectangle, held as its smallest and largest coordinate on each axis.
///
/// All constructors and setters sort: on each axis the smaller coordinate becomes left or bottom,
/// the larger right or top. Bottom is the smaller y, whichever way y runs on a device. A plain
/// value without heap; the arguments are never changed.
///
/// With p the first coordinate and q the second, the minimum is `p < q ? p : q` and the maximum
/// `q > p ? q : p`, which settles equal zeros of opposite sign (one of each is kept) and NaN.
class CAlignedRect {
 public:
  /// Makes the box of two opposite corners, in any order.
  ZELVAN_API CAlignedRect(DblPt& p, DblPt& q);
  ZELVAN_API CAlignedRect(double x1, double y1, double x2, double y2);

  /// Replaces the box by that of two opposite corners, in any order.
  ZELVAN_API void set(DblPt& p, DblPt& q);
  ZELVAN_API void set(double x1, double y1, double x2, double y2);

  /// Returns one side: the smallest x, smallest y, largest x or largest y.
  ZELVAN_INLINE_API double left() { return left_; }
  ZELVAN_INLINE_API double bottom() { return bottom_; }
  ZELVAN_INLINE_API double right() { return right_; }
  ZELVAN_INLINE_API double top() { return top_; }

  /// Returns true if the point lies in the box inflated by `tol` on all four sides, edges included.
  ///
  /// A negative tolerance deflates. With a NaN anywhere the result is false.
  ZELVAN_API bool isInside(DblPt& p, double tol);
  ZELVAN_API bool isInside(double x, double y, double tol);

 private:
  friend class CPickRect;  // its protected constructor calls the one below

  ZELVAN_INLINE_API CAlignedRect() : left_(0.0), bottom_(0.0), right_(0.0), top_(0.0) {}

  double left_;
  double bottom_;
  double right_;
  double top_;
};

static_assert(sizeof(CAlignedRect) == 32 && std::is_trivially_copyable<CAlignedRect>::value &&
                  std::is_standard_layout<CAlignedRect>::value,
              "layout is interface");
