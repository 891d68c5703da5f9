/// The switch between the vector forms of a kernel. Only for private test programs.
#pragma once

#include <zelvan/transforms/detail/instruction_set.h>

namespace support {

/// Runs `judge` with the plain forms forced, and then `compare` with each vector form that
/// this processor has. Gives the number of vector forms.
template <class Judge, class Compare>
int with_each_form(Judge judge, Compare compare) {
#if defined(__x86_64__)
  const bool has_avx2 = zelvan::has_avx2;
  zelvan::has_avx2 = false;
  judge();
  zelvan::has_avx2 = has_avx2;
  if (!has_avx2) return 0;
  compare("avx2");
  return 1;
#else
  judge();
  return 0;
#endif
}

}  // namespace support
