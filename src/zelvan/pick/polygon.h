/// The filled polygon as a pick region.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_region.h>

/// A closed ring, filled by the non-zero winding rule: it may cross itself and run either way.
///
/// The last vertex joins the first without being stored twice; a repeated first vertex at the end
/// changes nothing. Storage, copies and failures are those of `CPickPolyline`, except that a
/// constructor makes an empty region if `n` is less than 3.
class ZELVAN_API CPolygon : public CPickRegion {
 public:
  /// Makes `n` vertices at (0.0, 0.0), which `set` then replaces.
  explicit CPolygon(unsigned int n);

  /// Makes the vertices (xs[i], ys[i]), i from 0 to n - 1. Requires: `n` numbers in each array.
  CPolygon(unsigned int n, double* xs, double* ys);

  /// Copies the `n` vertices of `pts`.
  CPolygon(unsigned int n, DblPt* pts);

  /// Copies the vertices. An assignment frees the old vertices; to itself it changes nothing.
  ///
  /// If the heap refuses, the copy or the target is empty.
  CPolygon(const CPolygon&);
  CPolygon& operator=(const CPolygon&);
  ~CPolygon() override;

  /// Replaces vertex `i`. Requires: 0 <= i < number of vertices.
  void set(int i, double x, double y);

  /// Returns the first vertex; null for a region without an array.
  ///
  /// The region owns the array, which lives until its destruction or the next assignment.
  DblPt* start();

  /// Returns one past the last vertex; null for a region without an array.
  DblPt* end();

  /// Returns the first vertex of a const region. Inline, and exports no symbol.
  const DblPt* start() const { return points; }

  /// Returns one past the last vertex of a const region. Inline, and exports no symbol.
  const DblPt* end() const { return points + n_points; }

  /// Returns true if the ring winds about the point; false for an empty region. The tolerance is
  /// ignored.
  ///
  /// A point exactly on the boundary counts as if moved a little towards smaller x and then far
  /// less towards greater y. So the unit square contains its right side and its bottom, but neither
  /// its left side nor its top, and of two polygons that share an edge exactly one contains a point
  /// on it. With a NaN the result is false.
  ///
  /// Within rounding of a slanted edge the rounded cross product decides. It depends on the
  /// direction of the edge: of neighbours that run along their common edge in opposite directions,
  /// both or neither may hold a point that was rounded onto it.
  bool isInside(DblPt& p, double tol) override;
  bool isInside(double x, double y, double tol) override;

  /// Returns a polygon of the mapped vertices, which the caller deletes; null if it is empty or the
  /// heap refuses.
  CPickRegion* xfm(Mtx2D& matrix) override;

  // The overloads for const regions, which the overrides above would hide.
  using CPickRegion::isInside;
  using CPickRegion::xfm;

 protected:
  /// Makes an empty region, for derived classes that fill the fields.
  CPolygon();

  unsigned int n_points;  ///< 0 for an empty region
  DblPt* points;          ///< `n_points` vertices from `malloc`, freed by the destructor; or null
};

static_assert(sizeof(CPolygon) == 3 * sizeof(void*), "layout is interface");
