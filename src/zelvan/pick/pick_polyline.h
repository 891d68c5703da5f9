/// The open chain of segments as a pick region.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_region.h>

/// An open polyline: `n_points` - 1 segments, none from the last point to the first.
///
/// It owns its points, a block of `malloc`. An array constructor given fewer than 2 points
/// makes an empty region: no points, no array, nothing ever inside. So does a heap that
/// refuses in any constructor or in an assignment; no exception leaves either.
class ZELVAN_API CPickPolyline : public CPickRegion {
 public:
  /// `n` points at (0.0, 0.0), to be filled with `set`.
  explicit CPickPolyline(unsigned int n);

  /// Point i is (xs[i], ys[i]), i from 0 to n - 1. Requires: `n` numbers in each of the two.
  CPickPolyline(unsigned int n, double* xs, double* ys);

  /// Copies the `n` points of `pts`, an array that stays the caller's.
  CPickPolyline(unsigned int n, DblPt* pts);

  /// A copy has points of its own, and what an assignment replaces is freed. Where the heap
  /// refuses, the copy or the target is empty. Assigned to itself, a region stays as it is.
  CPickPolyline(const CPickPolyline&);
  CPickPolyline& operator=(const CPickPolyline&);
  ~CPickPolyline() override;

  /// Replaces point `i`. Requires: 0 <= i < number of points.
  void set(int i, double x, double y);

  /// The first point, and one past the last; both null for a region without an array. The
  /// array is the region's and lives until its destruction or the next assignment.
  DblPt* start();
  DblPt* end();

  /// The first point of a const region, and one past the last. Inline, and no symbols.
  const DblPt* start() const { return points; }
  const DblPt* end() const { return points + n_points; }

  /// True when the point lies in the axis-aligned box of any segment, inflated by `tol`, edges
  /// included. A slanted segment is thus hit anywhere in the rectangle that it spans, and a
  /// negative tolerance shrinks each box. A NaN in the point or the tolerance answers false, and so
  /// does an empty region.
  bool isInside(DblPt& p, double tol) override;

  /// Asks the form above, through virtual dispatch: overriding that one changes both.
  bool isInside(double x, double y, double tol) override;

  /// A polyline of the mapped points, which the caller deletes; null when empty or when the
  /// heap refuses.
  CPickRegion* xfm(Mtx2D& matrix) override;

  // The forms for const, see CPickRegion.
  using CPickRegion::isInside;
  using CPickRegion::xfm;

 protected:
  /// Empty, for derived classes that fill the fields.
  CPickPolyline();

  unsigned int n_points;  ///< 0 for an empty region
  DblPt* points;          ///< `n_points` points from `malloc`, freed by the destructor; or null
};

static_assert(sizeof(CPickPolyline) == 3 * sizeof(void*), "layout is interface");
