/// Which arrays a block of memory can hold.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvan {

/// True if `count` elements may fit into one block; only then the heap is asked for them.
///
/// With 32 bits a larger count times the size of an element wraps, and `malloc` would return a
/// block that is too small. gcc's `new (std::nothrow)` throws where it should return null.
template <class T>
constexpr bool is_possible_array(std::size_t count) {
  return count <= PTRDIFF_MAX / sizeof(T);
}

}  // namespace zelvan
