/// A heap that refuses on demand and counts.
///
/// Replaces `malloc`, `calloc`, `free`, `new` and `delete` in a test program, including the
/// library's objects in it: see `zelvan_refuse_heap` in tests/CMakeLists.txt. For one thread.
#pragma once

#include <initializer_list>

namespace heap {

/// Refuses the `nth` request from now on, and all after it if `for_good`. With 0, refuses nothing.
void refuse(int nth, bool for_good);

/// Grants all requests again. Returns true if one was refused.
bool grant_all();

/// Returns how many blocks are live of those allocated between the last `refuse` and `grant_all`.
int blocks_left();

/// Runs `operation` with its first request refused, then with its second and so on, until it makes
/// no further request. Then does so again, with all later requests refused as well. After each run
/// with a refusal, grants all requests and calls `check`. Returns the number of these runs.
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
/// pair and assume that the block is not null.
inline bool is_null(const void* block) {
  asm volatile("" : : "r"(block) : "memory");
  return block == nullptr;
}

}  // namespace heap
