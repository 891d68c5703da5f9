#include <zelvan/detail/instruction_set.h>

#if defined(__x86_64__)

namespace {

bool processor_has_avx2() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2");
}

}  // namespace

bool zelvan::has_avx2 = processor_has_avx2();

#elif defined(__aarch64__)

bool zelvan::has_neon = true;  // it is part of every such processor

#endif
