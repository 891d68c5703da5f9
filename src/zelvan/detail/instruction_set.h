/// Which vector forms may run on this processor.
#pragma once

#include <zelvan/detail/vector_forms.h>

namespace zelvan {

#if defined(__x86_64__)
inline bool& has_avx2 = Avx2::may_run;
#else
inline constexpr bool has_avx2 = false;
#endif

}  // namespace zelvan
