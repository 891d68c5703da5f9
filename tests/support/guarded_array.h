/// Arrays that lie flush against unreadable pages, so that one step outside faults at once.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace support {

/// Which end of an array touches the unreadable page; the other has bytes of 0xA5 beside it.
enum class Flush { at_end, at_start };

/// A block of `size` bytes with an unreadable page right behind or right before it.
class GuardedBlock {
 public:
  GuardedBlock(std::size_t size, Flush flush);
  ~GuardedBlock();
  GuardedBlock(const GuardedBlock&) = delete;
  GuardedBlock& operator=(const GuardedBlock&) = delete;

  void* data() { return data_; }

 private:
  void* pages_;
  std::size_t pages_size_;
  void* data_;
};

/// `n` elements in such a block, each byte 0xA5 until written.
template <class T>
class GuardedArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  explicit GuardedArray(std::size_t n, Flush flush = Flush::at_end)
      : size_(n), block_(n * sizeof(T), flush) {}

  /// A copy of the elements of any container.
  template <class Container>
  requires requires(const Container& c) { c.begin(); }
  explicit GuardedArray(const Container& from, Flush flush = Flush::at_end)
      : GuardedArray(from.size(), flush) {
    if (size_ != 0) std::memcpy(block_.data(), from.data(), size_ * sizeof(T));
  }

  T* data() { return static_cast<T*>(block_.data()); }
  T& operator[](std::size_t i) { return data()[i]; }
  std::size_t size() const { return size_; }
  T* begin() { return data(); }
  T* end() { return data() + size_; }

 private:
  std::size_t size_;
  GuardedBlock block_;
};

}  // namespace support
