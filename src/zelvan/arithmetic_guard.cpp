// Refuses a build whose flags would change results: every product and sum of the library is
// rounded once, to a double, in the order in which it is written.

#include <cfloat>

#ifdef __FAST_MATH__
#error "zelvan gives exact results and cannot be built with -ffast-math; build it without"
#endif
#if defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__
#error "zelvan lets infinities and NaN through; build it without -ffinite-math-only"
#endif
#if FLT_EVAL_METHOD != 0
#error "zelvan needs doubles evaluated as doubles; on 32-bit x86 build it with -msse2 -mfpmath=sse"
#endif
