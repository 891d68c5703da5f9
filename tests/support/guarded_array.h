/// Arrays that end at an unreadable page, except on Windows: an access past the end faults at once.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

#include <support/system.h>

namespace support {

/// An array of `n` elements. All bytes are 0xA5 until they are written.
template <class T>
class GuardedArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  explicit GuardedArray(std::size_t n) : size_(n) {
    char* const guard = guarded_pages(n * sizeof(T));
    data_ = reinterpret_cast<T*>(guard - n * sizeof(T));
    std::memset(static_cast<void*>(data_), 0xA5, n * sizeof(T));
  }

  /// Copies the elements of a container that stores them in one block.
  template <class Container>
  requires requires(const Container& c) { c.begin(); }
  explicit GuardedArray(const Container& from) : GuardedArray(from.size()) {
    if (size_ != 0) std::memcpy(data_, from.data(), size_ * sizeof(T));
  }

  ~GuardedArray() { release_guarded_pages(reinterpret_cast<char*>(end()), size_ * sizeof(T)); }
  GuardedArray(const GuardedArray&) = delete;
  GuardedArray& operator=(const GuardedArray&) = delete;

  T* data() { return data_; }
  T& operator[](std::size_t i) { return data_[i]; }
  std::size_t size() const { return size_; }
  T* begin() { return data_; }
  T* end() { return data_ + size_; }

 private:
  std::size_t size_;
  T* data_;
};

}  // namespace support
