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

void ClipArena::keep_newest() {
  while (newest_->previous != nullptr) {
    Block* older = newest_->previous;
    newest_->previous = older->previous;
    std::free(older);
  }
  start_in(newest_);
}

bool ClipArena::add_block(std::size_t least_size) {
  const std::size_t grown = newest_ != nullptr ? 2 * newest_->size : 8 * sizeof own_block_;
  const std::size_t size = std::max(least_size, std::min(grown, most_bytes));
  auto* block = static_cast<Block*>(std::malloc(sizeof(Block) + size));
  if (block == nullptr) return false;
  block->previous = newest_;
  block->size = size;
  newest_ = block;
  start_in(block);
  return true;
}

void ClipArena::start_in(Block* block) {
  free_ = reinterpret_cast<std::byte*>(block + 1);
  left_ = block->size;
}

}  // namespace zelvan
