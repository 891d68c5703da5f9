/// The switch that forces each form of a vector kernel. Only for private test programs.
#pragma once

#include <zelvan/transforms/detail/instruction_set.h>

namespace support {

/// Calls `run(name)` once with the plain forms forced and once with each vector form that this
/// processor has.
template <class Run>
void for_each_form(Run run) {
#if defined(__x86_64__)
  const bool has_avx2 = zelvan::has_avx2;
  zelvan::has_avx2 = false;
  run("plain");
  zelvan::has_avx2 = has_avx2;
  if (has_avx2) run("avx2");
#else
  run("plain");
#endif
}

}  // namespace support
