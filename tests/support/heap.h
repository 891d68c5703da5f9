/// The program's heap, which refuses on demand and counts: `malloc`, `calloc` and `free` of the
/// library's objects and of the program's, by the linker's --wrap, and `new` and `delete`. One
/// thread uses it.
#pragma once

namespace heap {

/// From now on refuses the `nth` request, or also all behind it; with 0 none.
void refuse(int nth, bool for_good);

/// From now on grants all requests. Gives whether one was refused.
bool grant_all();

/// How many blocks are not yet back of those given between the last two calls.
int blocks_left();

/// Is there no block? Whoever asks so has one: a compiler that sees all at once could do without a
/// block that is only made and given back, and take it for granted.
inline bool is_null(const void* block) {
  asm volatile("" : : "r"(block) : "memory");
  return block == nullptr;
}

}  // namespace heap
