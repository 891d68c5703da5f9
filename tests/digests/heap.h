/// The program's heap, which refuses on demand and counts: `malloc`, `calloc` and `free` of the
/// library's objects and of the program's, by the linker's --wrap, and `new` and `delete`.
#pragma once

#include <initializer_list>

namespace heap {

/// How many blocks are in use. A workload takes the difference before and behind an operation.
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

/// Calls `run` with its first request refused, its second and so on until it makes no more, first
/// each alone and then together with all behind it. `run` asks for nothing but by the operation
/// in question, as the standard libraries differ in what they ask for.
template <class Run>
void refuse_each(Run run) {
  for (const bool for_good : {false, true}) {
    for (int nth = 1;; ++nth) {
      refuse(nth, for_good);
      run();
      const bool was_last = !has_refused();
      refuse(0, false);
      if (was_last) break;
    }
  }
}

}  // namespace heap
