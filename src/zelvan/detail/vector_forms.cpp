#include <zelvan/detail/vector_forms.h>

#if defined(__x86_64__)

namespace {

bool processor_has_avx2() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2");
}

}  // namespace

bool zelvan::Avx2::may_run = processor_has_avx2();

#elif defined(__aarch64__)

bool zelvan::Neon::may_run = true;

#endif
