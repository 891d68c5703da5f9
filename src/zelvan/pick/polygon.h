/// The filled polygon as a pick region.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_region.h>

/// A closed ring, filled by the non-zero winding rule: it may cross itself and run either way.
///
/// The last vertex joins the first without being stored twice; a repeated first vertex at the
/// end changes nothing. Storage, copies and failures are those of `CPickPolyline`, save that
/// an array constructor needs at least 3 vertices to make more than an empty region.
class ZELVAN_API CPolygon : public CPickRegion {
 public:
  /// `n` vertices at (0.0, 0.0), to be filled with `set`.
  explicit CPolygon(unsigned int n);

  /// Vertex i is (xs[i], ys[i]), i from 0 to n - 1. Requires: `n` numbers in each of the two.
  CPolygon(unsigned int n, double* xs, double* ys);

  /// Copies the `n` vertices of `pts`, an array that stays the caller's.
  CPolygon(unsigned int n, DblPt* pts);

  /// A copy has vertices of its own, and what an assignment replaces is freed. Where the heap
  /// refuses, the copy or the target is empty. Assigned to itself, a region stays as it is.
  CPolygon(const CPolygon&);
  CPolygon& operator=(const CPolygon&);
  ~CPolygon() override;

  /// Replaces vertex `i`. Requires: 0 <= i < number of vertices.
  void set(int i, double x, double y);

  /// The first vertex, and one past the last; both null for a region without an array. The
  /// array is the region's and lives until its destruction or the next assignment.
  DblPt* start();
  DblPt* end();

  /// The first vertex of a const region, and one past the last. Inline, and no symbols.
  const DblPt* start() const { return points; }
  const DblPt* end() const { return points + n_points; }

  /// True when the ring winds about the point; never for an empty region. The tolerance is ignored.
  ///
  /// A point exactly on the boundary counts as if moved a little towards smaller x and then
  /// far less towards greater y. So the unit square holds its right side and its bottom, but
  /// neither its left side nor its top, and of two polygons that share an edge exactly one
  /// holds a point on it. A NaN answers false.
  ///
  /// Within rounding of a slanted edge the rounded cross product decides. It depends on the
  /// direction of the edge: of neighbours that run along their common edge in opposite directions,
  /// both or neither may hold a point that was rounded onto it.
  bool isInside(DblPt& p, double tol) override;
  bool isInside(double x, double y, double tol) override;

  /// A polygon of the mapped vertices, which the caller deletes; null when empty or when the
  /// heap refuses.
  CPickRegion* xfm(Mtx2D& matrix) override;

  // The forms for const, see CPickRegion.
  using CPickRegion::isInside;
  using CPickRegion::xfm;

 protected:
  /// Empty, for derived classes that fill the fields.
  CPolygon();

  unsigned int n_points;  ///< 0 for an empty region
  DblPt* points;          ///< `n_points` vertices from `malloc`, freed by the destructor; or null
};

static_assert(sizeof(CPolygon) == 3 * sizeof(void*), "layout is interface");
