/// Arrays that need no heap while they are small.
#pragma once

#include <zelvan/detail/array_size.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace zelvan {

/// Uninitialised elements. Up to `own_size` are part of the object; more come from the heap and are
/// released with the object.
template <class T, std::size_t own_size>
class ScratchArray {
 public:
  ScratchArray() = default;
  ScratchArray(const ScratchArray&) = delete;
  ScratchArray& operator=(const ScratchArray&) = delete;

  T* begin() { return begin_; }

  /// Makes room for `size` elements, of which the first `n_kept` keep their values. Returns the
  /// array, which may have moved; null if the heap refuses, and nothing changes then.
  T* make_room(std::size_t size, std::size_t n_kept = 0) {
    if (size <= size_) return begin_;
    if (!is_possible_array<T>(size)) return nullptr;
    std::unique_ptr<T[]> larger(new (std::nothrow) T[size]);
    if (larger == nullptr) return nullptr;
    std::copy_n(begin_, n_kept, larger.get());
    larger_ = std::move(larger);
    size_ = size;
    return begin_ = larger_.get();
  }

 private:
  T own_[own_size];
  std::unique_ptr<T[]> larger_;  // null while `own_` is large enough
  T* begin_ = own_;
  std::size_t size_ = own_size;
};

}  // namespace zelvan
