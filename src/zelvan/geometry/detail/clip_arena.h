/// The memory of polygon clipping: an arena, from which pieces are taken one by one and released
/// all at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

namespace zelvan {

/// An arena for the rings of one polygon after the other.
///
/// It starts with a block inside the object, so that small polygons never use the heap, and then
/// allocates blocks of growing size. The largest block is kept for the next polygon; the destructor
/// releases all blocks.
class ClipArena {
 public:
  ClipArena() { start_in_own_block(); }
  ~ClipArena();
  ClipArena(const ClipArena&) = delete;
  ClipArena& operator=(const ClipArena&) = delete;

  /// Returns uninitialised room for `count` elements, or null if the heap refuses.
  template <class T>
  T* make(std::size_t count) {
    static_assert(std::is_trivial_v<T> && alignof(T) <= alignment);
    if (count > most_bytes / sizeof(T)) return nullptr;
    void* memory = take(count * sizeof(T));
    return memory != nullptr ? new (memory) T[count] : nullptr;
  }

  /// Invalidates all elements made so far. Frees all blocks but the largest.
  void reset() {
    if (newest_ != nullptr) {
      keep_newest();
    } else {
      start_in_own_block();
    }
  }

 private:
  static constexpr std::size_t alignment = alignof(std::max_align_t);

  struct alignas(alignment) Block {
    Block* previous;
    std::size_t size;  // number of bytes after this header
  };

  /// The largest block that `malloc` can return. Smaller sizes can be rounded up and doubled
  /// without overflow, even with 32 bits.
  static constexpr std::size_t most_bytes = (PTRDIFF_MAX - sizeof(Block)) / alignment * alignment;

  void* take(std::size_t size) {
    size = (size + alignment - 1) / alignment * alignment;
    if (size > left_ && !add_block(size)) return nullptr;
    std::byte* const taken = free_;
    free_ += size;
    left_ -= size;
    return taken;
  }
  bool add_block(std::size_t least_size);
  void keep_newest();
  void start_in_own_block() {
    free_ = own_block_;
    left_ = sizeof own_block_;
  }
  void start_in(Block* block);

  std::byte* free_;  // the unused part of the current block
  std::size_t left_;
  Block* newest_ = nullptr;  // the largest: each new block is larger than the last
  alignas(alignment) std::byte own_block_[8192];
};

}  // namespace zelvan
