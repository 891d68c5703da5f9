/// The program's heap, which refuses on demand and counts: `malloc`, `calloc` and `free` of the
/// library's objects and of the program's, by the linker's --wrap, and `new` and `delete`.
#pragma once

#include <initializer_list>

namespace heap {

/// How many blocks are in use.
extern long blocks;

/// From now on refuses the `nth` request, or also all behind it; 0 for none.
void refuse(int nth, bool for_good);

/// Has a request been refused since?
bool has_refused();

/// Is there no block? Whoever asks so has one: a compiler that sees all at once could do without a
/// block that is only made and given back, and take it for granted.
inline bool is_null(const void* block) {
  asm volatile("" : : "r"(block) : "memory");
  return block == nullptr;
}

}  // namespace heap
