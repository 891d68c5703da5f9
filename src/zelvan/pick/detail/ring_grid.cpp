#include <zelvan/detail/new_array.h>
#include <zelvan/pick/detail/ring_grid.h>

#include <cassert>
#include <cstdint>

namespace zelvan {
namespace {

bool is_empty(const Box& box) { return !(box.bottom < box.top); }

// Returns the box of all rings, except those whose box is the whole plane; the unit square if there
// are none.
Box extent_of(const PreparedRing* rings, int n) {
  Box all;
  for (int i = 0; i < n; ++i) {
    if (!is_empty(rings[i].box) && rings[i].box.left > -infinity) all = unite(all, rings[i].box);
  }
  return is_empty(all) ? Box{0.0, 0.0, 1.0, 1.0} : all;
}

// Returns the row or column of a coordinate. Rounding is monotonic, so a larger number never has a
// lower row, and a box reaches the cell of every point in it. A NaN is in the first row.
unsigned int place_of(double v, double origin, double places_per_unit, unsigned int places) {
  const double place = (v - origin) * places_per_unit;
  if (!(place >= 1.0)) return 0;
  return place < places ? static_cast<unsigned int>(place) : places - 1;
}

}  // namespace

RingGrid::Cells RingGrid::cells_of(const Box& box) const {
  return {place_of(box.left, extent_.left, columns_per_unit_, side_),
          place_of(box.bottom, extent_.bottom, rows_per_unit_, side_),
          place_of(box.right, extent_.left, columns_per_unit_, side_),
          place_of(box.top, extent_.bottom, rows_per_unit_, side_)};
}

void RingGrid::divide(unsigned int side) {
  side_ = side;
  columns_per_unit_ = side / (extent_.right - extent_.left);
  rows_per_unit_ = side / (extent_.top - extent_.bottom);
}

bool RingGrid::fits(const PreparedRing* rings, int n, std::size_t room) const {
  std::uint64_t count = cell_count();
  for (int i = 0; i < n && count <= room; ++i) {
    if (is_empty(rings[i].box)) continue;
    const Cells cells = cells_of(rings[i].box);
    count += std::uint64_t{cells.right - cells.left + 1} * (cells.top - cells.bottom + 1);
  }
  return count <= room;
}

// Calls `look(cell, i)` for each cell that the box of ring i reaches, ring by ring.
template <class Look>
void RingGrid::for_each_entry(const PreparedRing* rings, int n, const Look& look) const {
  for (int i = 0; i < n; ++i) {
    if (is_empty(rings[i].box)) continue;
    const Cells cells = cells_of(rings[i].box);
    for (unsigned int row = cells.bottom; row <= cells.top; ++row) {
      for (unsigned int column = cells.left; column <= cells.right; ++column) {
        look(std::size_t{row} * side_ + column, i);
      }
    }
  }
}

bool RingGrid::fill(const PreparedRing* rings, int n, std::size_t room) {
  assert(room > static_cast<std::size_t>(n));  // so a single cell fits
  extent_ = extent_of(rings, n);
  divide(1);
  while (cell_count() < 2 * static_cast<std::size_t>(n)) divide(2 * side_);
  while (!fits(rings, n, room)) divide(side_ / 2);

  // A counting sort, so the rings of a cell keep their order. Each count is stored two places after
  // its cell, so that the prefix sums become start indices.
  const std::size_t n_starts = cell_count() + 2;
  starts_ = new_array<unsigned int>(n_starts);
  if (starts_ == nullptr) return false;
  for_each_entry(rings, n, [&](std::size_t cell, int) { ++starts_[cell + 2]; });
  for (std::size_t i = 2; i < n_starts; ++i) starts_[i] += starts_[i - 1];
  entries_ = new_array<int>(starts_[n_starts - 1]);
  if (entries_ == nullptr) return false;
  for_each_entry(rings, n, [&](std::size_t cell, int i) { entries_[starts_[cell + 1]++] = i; });
  return true;
}

std::span<const int> RingGrid::around(double x, double y) const {
  const std::size_t row = place_of(y, extent_.bottom, rows_per_unit_, side_);
  const std::size_t cell = row * side_ + place_of(x, extent_.left, columns_per_unit_, side_);
  return {&entries_[starts_[cell]], &entries_[starts_[cell + 1]]};
}

std::size_t RingGrid::bytes() const {
  if (starts_ == nullptr) return 0;
  return (cell_count() + 2) * sizeof(unsigned int) + starts_[cell_count()] * sizeof(int);
}

}  // namespace zelvan
