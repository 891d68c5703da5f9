/// Polygons prepared for many picks.
///
/// For each of its polygons an index has exactly the results of `CPolygon::isInside`, but it tests
/// only few of the edges. It never changes after construction, so any number of threads may query
/// it. It owns a copy of the points, so the source may change or be destroyed.
///
/// An index takes at most 64 bytes per vertex and 512 more. Building one of n vertices and k
/// polygons takes time in proportion to n + k log k. Nothing is thrown.
///
/// Polygons are counted from 0. A polygon of fewer than 3 vertices contains no point. Any
/// coordinates are allowed. A ring is tested edge by edge, as `CPolygon` does, if it has fewer than
/// 128 vertices, or a coordinate that is neither 0 nor from 2^-300 to 2^300 in magnitude, or if
/// most of its edges lie in runs of 16 that span more than half of its width and height.
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

  /// Makes an index of all polygons of a set; polygon k is the one that `zelvan::polygon_of`
  /// returns.
  explicit CPickIndex(const drw_pset_t& set);

  /// Takes over the polygons of `other`, which has none afterwards. An index can't be copied.
  ///
  /// An assignment frees what it replaces. Requires: no other thread uses either index meanwhile.
  CPickIndex(CPickIndex&& other) noexcept;
  CPickIndex& operator=(CPickIndex&& other) noexcept;
  ~CPickIndex();

  /// Returns false if the heap refused, or if another index took over the polygons. The index then
  /// has no polygons, and no point is inside.
  bool isReady() const;

  /// Returns the number of polygons, those of fewer than 3 vertices included.
  int countPolygons() const;

  /// Returns the bytes of memory that the index takes, the object itself left out.
  std::size_t countBytes() const;

  // ---- queries

  /// Returns true if at least one polygon contains the point.
  bool isInside(const DblPt& p) const;
  bool isInside(double x, double y) const;

  /// Tests `n` points: writes 1 or 0 for each to `hits`, and returns the number of points inside at
  /// least one polygon.
  ///
  /// `hits` has room for `n` bytes, or is null if only the number is wanted. A count of 0 or less
  /// reads and writes nothing.
  int countInside(int n, const DblPt* points, unsigned char* hits) const;

  /// Writes the numbers of the polygons that contain the point, ascending, and returns how many
  /// there are. Writes at most `capacity` of them, the lowest. If `capacity` is 0 or less,
  /// `numbers` may be null.
  int findPolygons(double x, double y, int* numbers, int capacity) const;

  /// Returns how often polygon `k` winds about the point: positive counter-clockwise, where y runs
  /// up.
  ///
  /// Any result but 0 means that the polygon contains the point. Returns 0 if there is no such
  /// polygon.
  int windingNumber(int k, double x, double y) const;

  /// Returns the sum of the winding numbers of `count` polygons from `first` on.
  ///
  /// The sum is not 0 where these polygons, drawn as one path, are filled by the non-zero rule. It
  /// is odd where they are filled by the even-odd rule. Numbers without a polygon are skipped.
  int windingNumber(int first, int count, double x, double y) const;

 private:
  explicit CPickIndex(zelvan::PickTable* made);

  zelvan::PickTable* table;  ///< owned; null if the heap refused it, or another index took it over
  const DblPt* short_ring;   ///< the only polygon, if it is tested edge by edge; or null
  unsigned int n_short;      ///< its vertices
};
