/// Polygons prepared for many picks.
///
/// An index answers as `CPolygon::isInside` does of each polygon, to the last bit of every
/// coordinate, but looks at few of the edges. It is made once and never changes, so any number of
/// threads may ask one. It owns a copy of the points; the polygons that it was made of may go.
///
/// Memory is at most 64 bytes a vertex and 512 more. Making n vertices and k polygons ready takes
/// time in proportion to n + k log k. Nothing is thrown.
///
/// Polygons are counted from 0. One of fewer than 3 vertices holds no point. Coordinates may be
/// anything. A ring is asked edge by edge, as `CPolygon` does, if it has fewer than 128 vertices,
/// or a coordinate that is neither 0 nor from 2^-300 to 2^300 in magnitude.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/polygon.h>
#include <zelvan/transforms/points.h>
#include <zelvan/transforms/records.h>

#include <cstddef>

namespace zelvan {
struct PickTable;
}

/// An index over the edges of one ring, or of all polygons of a set.
class ZELVAN_API CPickIndex {
 public:
  /// Makes an index of one polygon, a copy of `polygon`.
  explicit CPickIndex(const CPolygon& polygon);

  /// Makes an index of one polygon, the ring of the `n` vertices of `points`. If `n` is less than
  /// 3, nothing is read.
  CPickIndex(unsigned int n, const DblPt* points);

  /// Makes an index of the polygons of a set, as `zelvan::polygon_of` makes a region of each.
  explicit CPickIndex(const drw_pset_t& set);

  /// Takes over what `other` has, which is left without polygons. An index can't be copied.
  ///
  /// An assignment frees what it replaces. Requires: meanwhile no other thread asks either index.
  CPickIndex(CPickIndex&& other) noexcept;
  CPickIndex& operator=(CPickIndex&& other) noexcept;
  ~CPickIndex();

  /// Returns false if the heap refused, or if another index took over the polygons. Then there are
  /// none, and no point is inside.
  bool isReady() const;

  /// Returns the number of polygons, those of fewer than 3 vertices included.
  int countPolygons() const;

  /// Returns the bytes of memory that the index takes, the object itself left out.
  std::size_t countBytes() const;

  // ---- asking

  /// True if at least one polygon holds the point.
  bool isInside(const DblPt& p) const;
  bool isInside(double x, double y) const;

  /// Tests `n` points: writes 1 or 0 for each to `hits`, and returns the number of points that at
  /// least one polygon holds.
  ///
  /// `hits` has room for `n` bytes, or is null if only the number is wanted. A count of 0 or less
  /// reads and writes nothing.
  int countInside(int n, const DblPt* points, unsigned char* hits) const;

  /// Writes the numbers of the polygons that hold the point, ascending, and returns how many there
  /// are. At most `capacity` are written, the lowest. If `capacity` is 0 or less, `numbers` may be
  /// null.
  int findPolygons(double x, double y, int* numbers, int capacity) const;

  /// Returns how often polygon `k` winds about the point, counted positive for a ring that runs
  /// counterclockwise where y points up.
  ///
  /// The result is 0 exactly if the polygon's `isInside` is false, or if there is no such polygon.
  int windingNumber(int k, double x, double y) const;

  /// Returns the sum of the winding numbers of `count` polygons from `first` on.
  ///
  /// It is not 0 where a drawing fills these polygons together by the non-zero rule, and odd where
  /// it does by the even-odd rule. Numbers that no polygon has add nothing.
  int windingNumber(int first, int count, double x, double y) const;

 private:
  explicit CPickIndex(zelvan::PickTable* made);

  zelvan::PickTable* table;  ///< the index's own; null if it has no polygons
  const DblPt* short_ring;   ///< the only polygon, if it is asked edge by edge; or null
  unsigned int n_short;      ///< its vertices
};
