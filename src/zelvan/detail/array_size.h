/// The largest arrays that a block of memory can hold.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvan {

/// True if `count` elements may fit into one block of memory. Test this before asking the heap.
///
/// A larger count times the size of an element can wrap, with 32 bits above all, and `malloc` would
/// return a block that is too small. gcc's `new (std::nothrow)` throws instead of returning null.
template <class T>
constexpr bool is_possible_array(std::size_t count) {
  return count <= PTRDIFF_MAX / sizeof(T);
}

}  // namespace zelvan
