/// The switch that forces each form of a vector kernel. Only for private test programs.
#pragma once

#include <zelvan/detail/instruction_set.h>

#include <utility>

namespace support {

/// Lets a form run or not. Gives what was, which is all there is to it where no such form exists.
inline bool allow(bool& may_run, bool wanted) { return std::exchange(may_run, wanted); }
inline bool allow(const bool& may_run, bool) { return may_run; }

/// Calls `run(name)` once with the plain forms forced and once with each vector form that this
/// processor has.
template <class Run>
void for_each_form(Run run) {
  const bool has_avx2 = allow(zelvan::has_avx2, false), has_neon = allow(zelvan::has_neon, false);
  run("plain");
  allow(zelvan::has_avx2, has_avx2), allow(zelvan::has_neon, has_neon);
  if (has_avx2) run("avx2");
  if (has_neon) run("neon");
}

}  // namespace support
