#include <zelvan/geometry/detail/clip_arena.h>

#include <algorithm>
#include <cstdlib>

namespace zelvan {

ClipArena::~ClipArena() {
  while (newest_ != nullptr) {
    Block* previous = newest_->previous;
    std::free(newest_);
    newest_ = previous;
  }
}

void ClipArena::give_back_all() {
  if (newest_ == nullptr) return start_in_own_block();
  while (newest_->previous != nullptr) {
    Block* older = newest_->previous;
    newest_->previous = older->previous;
    std::free(older);
  }
  start_in(newest_);
}

void* ClipArena::take(std::size_t size) {
  size = (size + alignment - 1) / alignment * alignment;
  if (size > left_ && !add_block(size)) return nullptr;
  std::byte* taken = free_;
  free_ += size;
  left_ -= size;
  return taken;
}

bool ClipArena::add_block(std::size_t least_size) {
  const std::size_t grown = newest_ != nullptr ? 2 * newest_->size : 8 * sizeof own_block_;
  const std::size_t size = std::max(least_size, grown);
  auto* block = static_cast<Block*>(std::malloc(sizeof(Block) + size));
  if (block == nullptr) return false;
  block->previous = newest_;
  block->size = size;
  newest_ = block;
  start_in(block);
  return true;
}

void ClipArena::start_in_own_block() {
  free_ = own_block_;
  left_ = sizeof own_block_;
}

void ClipArena::start_in(Block* block) {
  free_ = reinterpret_cast<std::byte*>(block + 1);
  left_ = block->size;
}

}  // namespace zelvan
