/// A heap that refuses on demand and counts.
///
/// It takes the place of `malloc`, `calloc`, `free`, `new` and `delete` in a test program, for the
/// library's objects in it as well: see `zelvan_refuse_heap` in tests/CMakeLists.txt. For one
/// thread.
#pragma once

#include <initializer_list>

namespace heap {

/// Refuses the `nth` request from now on, and all after it if `for_good`. Refuses none if `nth` is
/// 0.
void refuse(int nth, bool for_good);

/// Grants all requests again. Returns true if one was refused.
bool grant_all();

/// Returns how many blocks are still live of those granted between the last two calls.
int blocks_left();

/// Runs `operation` with its first request refused, then with its second and so on until it makes
/// no more; each alone, and then with all after it. Calls `check` after each refusal, with the heap
/// granting again. Returns how many refusals there were.
template <class Operation, class Check>
int refuse_each(Operation operation, Check check) {
  int refusals = 0;
  for (const bool for_good : {false, true}) {
    for (int nth = 1;; ++nth) {
      refuse(nth, for_good);
      operation();
      if (!grant_all()) break;
      ++refusals;
      check();
    }
  }
  return refusals;
}

/// True if null. Hides the pointer from the optimiser, which may otherwise remove the malloc/free
/// pair and take the block for granted.
inline bool is_null(const void* block) {
  asm volatile("" : : "r"(block) : "memory");
  return block == nullptr;
}

}  // namespace heap
