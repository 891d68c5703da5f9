/// Which vector forms may run on this processor.
#pragma once

namespace zelvan {

/// True when the kernels for AVX2 may run. Set once, when the library is loaded, from what the
/// processor says; every form gives the same bits, so nothing depends on it but the time. Only
/// tests change it, to compare the forms. A constant where no such kernels exist, so that the
/// calls of them vanish.
#if defined(__x86_64__)
extern bool has_avx2;
#else
inline constexpr bool has_avx2 = false;
#endif

}  // namespace zelvan
