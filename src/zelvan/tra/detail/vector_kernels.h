/// Whole vectors of elements at a time. Each kernel does as many of the leading bytes as fill whole
/// vectors and gives their number; the plain loop does the rest, and would have done the same.
#pragma once

#include <zelvan/detail/instruction_set.h>

#include <cstddef>
#include <cstdint>

namespace zelvan {

using VectorKernel = std::size_t (*)(std::size_t bytes, const unsigned char* from,
                                     unsigned char* to);

/// A table of 256 bytes in the form in which vectors look it up: 16 rows of 16 bytes, in each
/// half of the table each row given by how it differs from the row before.
struct SteppedTable {
  alignas(16) unsigned char rows[16][16];

  constexpr explicit SteppedTable(const unsigned char (&table)[256]) : rows{} {
    for (int row = 0; row < 16; ++row) {
      for (int i = 0; i < 16; ++i) {
        const unsigned char before = row % 8 == 0 ? 0 : table[16 * (row - 1) + i];
        rows[row][i] = table[16 * row + i] ^ before;
      }
    }
  }
};

namespace avx2 {

// Only called where `has_avx2` is true.
std::size_t swap_2(std::size_t bytes, const unsigned char* from, unsigned char* to);
std::size_t swap_4(std::size_t bytes, const unsigned char* from, unsigned char* to);
std::size_t swap_8(std::size_t bytes, const unsigned char* from, unsigned char* to);
std::size_t reverse_bits(std::size_t bytes, const unsigned char* from, unsigned char* to);
std::size_t ieee_to_ibm_singles(std::size_t bytes, const unsigned char* from, unsigned char* to);
std::size_t ibm_to_ieee_singles(std::size_t bytes, const unsigned char* from, unsigned char* to);
std::size_t ieee_to_ibm_doubles(std::size_t bytes, const unsigned char* from, unsigned char* to);
std::size_t ibm_to_ieee_doubles(std::size_t bytes, const unsigned char* from, unsigned char* to);

std::size_t translate(const SteppedTable& table, std::size_t bytes, const unsigned char* from,
                      unsigned char* to);

}  // namespace avx2

/// May vectors run ahead? Not where the target begins inside the source: there an element that
/// is written is read again as a later one, and they have to be done one by one. In place is
/// harmless.
inline bool may_run_ahead(std::size_t bytes, const unsigned char* from, unsigned char* to) {
  const auto ahead = reinterpret_cast<std::uintptr_t>(to) - reinterpret_cast<std::uintptr_t>(from);
  return ahead == 0 || ahead >= bytes;
}

/// Runs a kernel where that is possible; 0 where all is left to the plain loop.
template <VectorKernel kernel>
std::size_t run(std::size_t bytes, const unsigned char* from, unsigned char* to) {
  return has_avx2 && may_run_ahead(bytes, from, to) ? kernel(bytes, from, to) : 0;
}

}  // namespace zelvan
