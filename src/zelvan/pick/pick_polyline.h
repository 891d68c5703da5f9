/// The open chain of segments as a pick region.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_region.h>

/// An open polyline: `n_points` - 1 segments, none from the last point to the first.
///
/// It owns its points, a block of `malloc`. With an `n` of less than 2, a constructor makes an
/// empty region: no points, no array, nothing inside. If the heap refuses, every constructor and
/// the assignment make an empty region; none throws.
class ZELVAN_API CPickPolyline : public CPickRegion {
 public:
  /// Makes `n` points at (0.0, 0.0), which `set` then replaces.
  explicit CPickPolyline(unsigned int n);

  /// Makes the points (xs[i], ys[i]), i from 0 to n - 1. Requires: `n` numbers in each array.
  CPickPolyline(unsigned int n, double* xs, double* ys);

  /// Copies the `n` points of `pts`.
  CPickPolyline(unsigned int n, DblPt* pts);

  /// Copies the points. An assignment frees the old points; to itself it changes nothing.
  ///
  /// If the heap refuses, the copy or the target is empty.
  CPickPolyline(const CPickPolyline&);
  CPickPolyline& operator=(const CPickPolyline&);
  ~CPickPolyline() override;

  /// Replaces point `i`. Requires: 0 <= i < number of points.
  void set(int i, double x, double y);

  /// Returns the first point; null for a region without an array.
  ///
  /// The region owns the array, which lives until its destruction or the next assignment.
  DblPt* start();

  /// Returns one past the last point; null for a region without an array.
  DblPt* end();

  /// Returns the first point of a const region. Inline, and exports no symbol.
  const DblPt* start() const { return points; }

  /// Returns one past the last point of a const region. Inline, and exports no symbol.
  const DblPt* end() const { return points + n_points; }

  /// Returns true if the point lies in the axis-aligned box of any segment, inflated by `tol`,
  /// edges included.
  ///
  /// So a slanted segment is hit anywhere in the rectangle that it spans. A negative tolerance
  /// shrinks each box. With a NaN in the point or the tolerance, or an empty region, the result is
  /// false.
  bool isInside(DblPt& p, double tol) override;

  /// Calls the form above through virtual dispatch: overriding that one changes both.
  bool isInside(double x, double y, double tol) override;

  /// Returns a polyline of the mapped points, which the caller deletes; null if it is empty or the
  /// heap refuses.
  CPickRegion* xfm(Mtx2D& matrix) override;

  // The overloads for const regions, which the overrides above would hide.
  using CPickRegion::isInside;
  using CPickRegion::xfm;

 protected:
  /// Makes an empty region, for derived classes that fill the fields.
  CPickPolyline();

  unsigned int n_points;  ///< 0 for an empty region
  DblPt* points;          ///< `n_points` points from `malloc`, freed by the destructor; or null
};

static_assert(sizeof(CPickPolyline) == 3 * sizeof(void*), "layout is interface");
