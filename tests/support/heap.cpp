#include "support/heap.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <new>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
}

namespace {

constexpr std::size_t most = 0x7FFFFFFF;  // refuses larger requests: only some machines grant them

int refused = 0, n_requests = 0;
bool is_counting = false, is_for_good = false;
void *blocks[10000], **end = blocks;

bool refuses(std::size_t size) {
  if (is_counting) ++n_requests;
  const bool is_reached = refused != 0 && n_requests >= refused && is_counting;
  const bool refuses = size > most || (is_reached && (n_requests == refused || is_for_good));
  if (refuses) errno = ENOMEM;
  return refuses;
}

void* noted(void* block) {
  if (is_counting && block != nullptr && end != std::end(blocks)) *end++ = block;
  return block;
}

}  // namespace

void heap::refuse(int nth, bool for_good) {
  refused = nth;
  is_for_good = for_good;
  is_counting = true;
  n_requests = 0;
  end = blocks;
}

bool heap::grant_all() {
  is_counting = false;
  return refused != 0 && n_requests >= refused;
}

int heap::blocks_left() { return static_cast<int>(end - blocks); }

extern "C" {
void* __wrap_malloc(std::size_t size) {
  return refuses(size) ? nullptr : noted(__real_malloc(size));
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return refuses(count * size) ? nullptr : noted(__real_calloc(count, size));
}
void __wrap_free(void* block) {
  end = std::remove(blocks, end, block);
  __real_free(block);
}
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return __wrap_malloc(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return __wrap_malloc(size);
}
void* operator new(std::size_t size) {
  void* const block = __wrap_malloc(size);
  return block != nullptr ? block : throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* block) noexcept { __wrap_free(block); }
void operator delete[](void* block) noexcept { __wrap_free(block); }
void operator delete(void* block, std::size_t) noexcept { __wrap_free(block); }
void operator delete[](void* block, std::size_t) noexcept { __wrap_free(block); }
