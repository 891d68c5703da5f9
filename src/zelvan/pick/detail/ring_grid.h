/// A grid over many rings: each cell lists those whose box reaches into it.
#pragma once

#include <zelvan/pick/detail/prepared_ring.h>

#include <cstddef>
#include <memory>
#include <span>

namespace zelvan {

/// Finds the few of many rings that may wind about a point.
class RingGrid {
 public:
  /// Sorts `n` rings into cells, 2 to 8 for a ring, or fewer: cells get larger until they and
  /// their entries together are at most `room`, or one is left. Returns false if the heap refuses.
  bool fill(const PreparedRing* rings, int n, std::size_t room);

  /// The numbers, ascending, of the rings near a point: all that wind about it are among them.
  /// Requires: a filled grid.
  std::span<const int> around(double x, double y) const;

  /// The bytes of the cells and their entries; 0 before they are filled.
  std::size_t bytes() const;

 private:
  struct Cells {  ///< columns and rows, the last included
    unsigned int left, bottom, right, top;
  };
  Cells cells_of(const Box& box) const;
  std::size_t cell_count() const { return std::size_t{side_} * side_; }
  void divide(unsigned int side);
  bool fits(const PreparedRing* rings, int n, std::size_t room) const;
  template <class Look>
  void for_each_entry(const PreparedRing* rings, int n, const Look& look) const;

  Box extent_;
  unsigned int side_;  ///< columns, and rows
  double columns_per_unit_;
  double rows_per_unit_;
  std::unique_ptr<unsigned int[]> starts_;  ///< of each cell in `entries_`, and the end of the last
  std::unique_ptr<int[]> entries_;
};

}  // namespace zelvan
