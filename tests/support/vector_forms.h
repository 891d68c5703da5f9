/// The switches of the vector forms. Only for private test programs.
#pragma once

#include <zelvan/detail/instruction_set.h>

namespace support {

inline void set(bool& may_run, bool value) { may_run = value; }
inline void set(const bool&, bool) {}  // no such form exists for this kind of processor

inline void force_plain_forms() {
  set(zelvan::has_avx2, false);
  set(zelvan::has_neon, false);
}

/// Calls `run(name)` once with the plain forms forced and once with each vector form that this
/// processor has.
template <class Run>
void for_each_form(Run run) {
  const bool has_avx2 = zelvan::has_avx2;
  const bool has_neon = zelvan::has_neon;
  force_plain_forms();
  run("plain");
  set(zelvan::has_avx2, has_avx2);
  set(zelvan::has_neon, has_neon);
  if (has_avx2) run("avx2");
  if (has_neon) run("neon");
}

}  // namespace support
