/// Limits on the size of an array.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvan {

/// True if an array of `count` elements may fit into memory. Test this before asking the heap.
///
/// With a larger count the size in bytes can wrap, most easily with 32 bits, and `malloc` would
/// return a block that is too small. gcc's `new (std::nothrow)` throws instead of returning null.
template <class T>
constexpr bool is_possible_array(std::size_t count) {
  return count <= PTRDIFF_MAX / sizeof(T);
}

}  // namespace zelvan
