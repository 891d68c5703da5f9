#include "support/refusing_heap.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// The harness serves tests of one thread.
bool is_counting = false;
bool is_lasting = false;
int requests_made = 0;
int refused_request = 0;

bool refuses() {
  if (!is_counting) return false;
  ++requests_made;
  return is_lasting ? requests_made >= refused_request : requests_made == refused_request;
}

}  // namespace

// The names that the linker's --wrap gives the real functions and their stand-ins.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) { return refuses() ? nullptr : __real_malloc(size); }

void* __wrap_calloc(std::size_t count, std::size_t size) {
  return refuses() ? nullptr : __real_calloc(count, size);
}

void* __wrap_realloc(void* block, std::size_t size) {
  return refuses() ? nullptr : __real_realloc(block, size);
}
}

// The language's own way for `new`, whose symbols differ by the width of a size. All of the
// program's go this way, those inside the standard library as well; each form, since a sanitizer
// has its own for those that are not here.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return refuses() ? nullptr : __real_malloc(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void* operator new(std::size_t size) {
  void* const block = operator new(size, std::nothrow);
  return block != nullptr ? block : throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

namespace support {

int refuse_each_request(const std::function<void()>& operation,
                        const std::function<void(bool refused)>& check, bool lasting) {
  is_lasting = lasting;
  for (int nth = 1;; ++nth) {
    requests_made = 0;
    refused_request = nth;
    is_counting = true;
    operation();
    is_counting = false;
    const bool refused = requests_made >= nth;
    check(refused);
    if (!refused) return nth - 1;
  }
}

}  // namespace support
