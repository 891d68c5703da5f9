/// Owned arrays, allocated without exceptions.
#pragma once

#include <zelvan/detail/array_size.h>

#include <cstddef>
#include <memory>
#include <new>

namespace zelvan {

/// Returns an array of `count` elements, initialised (numbers to 0); null if the heap refuses or
/// the size overflows.
template <class T>
std::unique_ptr<T[]> new_array(std::size_t count) {
  return std::unique_ptr<T[]>(is_possible_array<T>(count) ? new (std::nothrow) T[count]()
                                                          : nullptr);
}

}  // namespace zelvan
