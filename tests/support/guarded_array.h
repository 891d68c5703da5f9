/// Arrays that lie flush against an unreadable page, so that one step behind them faults at once.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include <sys/mman.h>
#include <unistd.h>

namespace support {

/// `n` elements, each byte 0xA5 until written. In front of them are bytes of 0xA5, too.
template <class T>
class GuardedArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  explicit GuardedArray(std::size_t n) : size_(n) {
    const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t usable = (n * sizeof(T) + page - 1) / page * page;
    pages_size_ = usable + page;
    pages_ = mmap(nullptr, pages_size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages_ == MAP_FAILED) std::abort();
    char* const guard = static_cast<char*>(std::memset(pages_, 0xA5, usable)) + usable;
    if (mprotect(guard, page, PROT_NONE) != 0) std::abort();
    data_ = reinterpret_cast<T*>(guard - n * sizeof(T));
  }

  /// A copy of the elements of any container.
  template <class Container>
  requires requires(const Container& c) { c.begin(); }
  explicit GuardedArray(const Container& from) : GuardedArray(from.size()) {
    if (size_ != 0) std::memcpy(data_, from.data(), size_ * sizeof(T));
  }

  ~GuardedArray() { munmap(pages_, pages_size_); }
  GuardedArray(const GuardedArray&) = delete;
  GuardedArray& operator=(const GuardedArray&) = delete;

  T* data() { return data_; }
  T& operator[](std::size_t i) { return data_[i]; }
  std::size_t size() const { return size_; }
  T* begin() { return data_; }
  T* end() { return data_ + size_; }

 private:
  std::size_t size_;
  std::size_t pages_size_;
  void* pages_;
  T* data_;
};

}  // namespace support
