/// Which vector forms may run on this processor.
///
/// Every form of a kernel gives the same bits, so nothing depends on the choice but the time. It is
/// made once, when the library is loaded; only tests change it, to compare the forms. Where a
/// form can't exist it is a constant, and the calls of its kernels vanish.
#pragma once

namespace zelvan {

/// True when the kernels for AVX2 may run.
#if defined(__x86_64__)
extern bool has_avx2;
#else
inline constexpr bool has_avx2 = false;
#endif

/// True when the kernels for NEON may run, with its vectors of doubles, which 64-bit ARM has.
#if defined(__aarch64__)
extern bool has_neon;
#else
inline constexpr bool has_neon = false;
#endif

}  // namespace zelvan
