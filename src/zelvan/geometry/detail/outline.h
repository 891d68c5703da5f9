/// One polygon of a set.
#pragma once

#include <zelvan/transforms/records.h>

#include <algorithm>

namespace zelvan {

/// A polygon, from its first vertex to its closing one.
struct Outline {
  const real_pt_t* points;
  const int* edge_flags;
  int count;
};

/// Appends the polygon unchanged.
inline void append(const Outline& outline, drw_pset_t* target) {
  std::copy_n(outline.points, outline.count, target->points + target->n_points);
  std::copy_n(outline.edge_flags, outline.count, target->edge_flags + target->n_points);
  target->n_points += outline.count;
}

}  // namespace zelvan
