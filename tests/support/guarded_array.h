/// Arrays that end at an unreadable page, except on Windows: an access past the end faults at once.
#pragma once

#include <algorithm>
#include <cstring>
#include <span>
#include <type_traits>

#include <support/system.h>

namespace support {

/// An array of `n` elements. All bytes are 0xA5 until they are written.
template <class T>
class GuardedArray : public std::span<T> {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  explicit GuardedArray(std::size_t n)
      : std::span<T>(reinterpret_cast<T*>(guarded_pages(n * sizeof(T))) - n, n) {
    std::memset(static_cast<void*>(this->data()), 0xA5, this->size_bytes());
  }

  /// Copies the elements of a container.
  template <class Container>
  requires requires(const Container& c) { c.begin(); }
  explicit GuardedArray(const Container& from) : GuardedArray(from.size()) {
    std::copy(from.begin(), from.end(), this->begin());
  }

  ~GuardedArray() {
    char* const guard = reinterpret_cast<char*>(this->data() + this->size());
    release_guarded_pages(guard, this->size_bytes());
  }
  GuardedArray(const GuardedArray&) = delete;
  GuardedArray& operator=(const GuardedArray&) = delete;
};

}  // namespace support
