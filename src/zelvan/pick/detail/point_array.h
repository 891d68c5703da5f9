/// The arrays of points that polylines and polygons own: blocks of `malloc`, never shared.
///
/// A function that makes an array returns null and sets the count to 0 if there are no points or
/// the heap refuses.
#pragma once

#include <zelvan/detail/array_size.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/points.h>

#include <cstdlib>
#include <memory>

namespace zelvan {

inline DblPt* allocate_points(unsigned int* n) {
  if (!is_possible_array<DblPt>(*n)) *n = 0;
  if (*n == 0) return nullptr;
  auto* const points = static_cast<DblPt*>(std::malloc(*n * sizeof(DblPt)));
  if (points == nullptr) *n = 0;
  return points;
}

/// Allocates `n` points at the origin.
inline DblPt* make_points(unsigned int* n) {
  DblPt* const points = allocate_points(n);
  std::uninitialized_fill_n(points, *n, DblPt());
  return points;
}

/// Allocates the points (xs[i], ys[i]).
inline DblPt* make_points(unsigned int* n, const double* xs, const double* ys) {
  DblPt* const points = allocate_points(n);
  for (unsigned int i = 0; i < *n; ++i) std::construct_at(points + i, xs[i], ys[i]);
  return points;
}

/// Copies `n` points; if `from` is null, makes no points.
inline DblPt* copy_points(unsigned int* n, const DblPt* from) {
  if (from == nullptr) *n = 0;
  DblPt* const points = allocate_points(n);
  std::uninitialized_copy_n(from, *n, points);
  return points;
}

/// Replaces an array and its count by a copy of another.
inline void assign_points(unsigned int* n, DblPt** points, unsigned int other_n,
                          const DblPt* other) {
  DblPt* const copy = copy_points(&other_n, other);
  std::free(*points);
  *points = copy;
  *n = other_n;
}

/// Maps each point in place.
inline void map_points(Mtx2D& matrix, unsigned int n, DblPt* points) {
  for (unsigned int i = 0; i < n; ++i) {
    matrix.XfmPt(points[i].x, points[i].y, &points[i].x, &points[i].y);
  }
}

}  // namespace zelvan
