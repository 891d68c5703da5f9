#include "digests/heap.h"

#include <cstddef>
#include <new>

namespace heap {
namespace {

constexpr std::size_t most = 0x7FFFFFFF;  // more would be given on some machines only

int wanted = 0, requests = 0;
bool until_the_end = false;

bool refuses(std::size_t size) {
  if (size > most) return true;
  if (wanted == 0 || ++requests < wanted) return false;
  return requests == wanted || until_the_end;
}

void* counted(void* block) {
  blocks += block != nullptr;
  return block;
}

}  // namespace

long blocks = 0;

void refuse(int nth, bool for_good) {
  wanted = nth;
  until_the_end = for_good;
  requests = 0;
}

bool has_refused() { return wanted != 0 && requests >= wanted; }

}  // namespace heap

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size) {
  return heap::refuses(size) ? nullptr : heap::counted(__real_malloc(size));
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return heap::refuses(count * size) ? nullptr : heap::counted(__real_calloc(count, size));
}
void __wrap_free(void* block) {
  heap::blocks -= block != nullptr;
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
