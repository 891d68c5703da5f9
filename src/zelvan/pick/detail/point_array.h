/// The arrays of points that polylines and polygons own: blocks of `malloc`, never shared.
///
/// Every function returns null, and takes nothing, when there is no point or the heap refuses.
#pragma once

#include <zelvan/detail/array_size.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/points.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace zelvan {

inline DblPt* allocate_points(std::size_t n) {
  if (n == 0 || !is_possible_array<DblPt>(n)) return nullptr;
  return static_cast<DblPt*>(std::malloc(n * sizeof(DblPt)));
}

/// `n` points at the origin.
inline DblPt* make_points(unsigned int n) {
  DblPt* points = allocate_points(n);
  if (points != nullptr) std::uninitialized_fill_n(points, n, DblPt());
  return points;
}

/// The points (xs[i], ys[i]).
inline DblPt* make_points(unsigned int n, const double* xs, const double* ys) {
  DblPt* points = allocate_points(n);
  if (points == nullptr) return nullptr;
  for (unsigned int i = 0; i < n; ++i) std::construct_at(points + i, xs[i], ys[i]);
  return points;
}

/// A copy of `n` points; of none when `from` is null.
inline DblPt* copy_points(unsigned int n, const DblPt* from) {
  DblPt* points = from != nullptr ? allocate_points(n) : nullptr;
  if (points != nullptr) std::uninitialized_copy_n(from, n, points);
  return points;
}

/// Replaces each point by its image.
inline void map_points(Mtx2D& matrix, unsigned int n, DblPt* points) {
  for (unsigned int i = 0; i < n; ++i) {
    matrix.XfmPt(points[i].x, points[i].y, &points[i].x, &points[i].y);
  }
}

}  // namespace zelvan
