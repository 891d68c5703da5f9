/// A grid over many rings: each cell lists the rings whose boxes reach it.
#pragma once

#include <zelvan/pick/detail/prepared_ring.h>

#include <cstddef>
#include <memory>
#include <span>

namespace zelvan {

/// Finds the few rings that may wind about a point.
class RingGrid {
 public:
  /// Sorts `n` rings into a grid. Returns false if the heap refuses.
  ///
  /// There are 2 to 8 cells for each ring, or fewer: cells are enlarged until they and their
  /// entries together number at most `room`. Requires: `room` is larger than `n`.
  bool fill(const PreparedRing* rings, int n, std::size_t room);

  /// Returns the numbers of the rings near a point, ascending; all rings that wind about it are
  /// among them. Requires: a filled grid.
  std::span<const int> around(double x, double y) const;

  /// Returns the size of the cells and their entries in bytes; 0 before they are filled.
  std::size_t bytes() const;

 private:
  struct Cells {  ///< a block of cells: its first and last column and row
    unsigned int left, bottom, right, top;
  };
  Cells cells_of(const Box& box) const;
  std::size_t cell_count() const { return std::size_t{side_} * side_; }
  void divide(unsigned int side);
  bool fits(const PreparedRing* rings, int n, std::size_t room) const;
  template <class Look>
  void for_each_entry(const PreparedRing* rings, int n, const Look& look) const;

  Box extent_;
  unsigned int side_;  ///< the number of columns and of rows
  double columns_per_unit_;
  double rows_per_unit_;
  std::unique_ptr<unsigned int[]> starts_;  ///< index of each cell's first entry, then of the end
  std::unique_ptr<int[]> entries_;
};

}  // namespace zelvan
