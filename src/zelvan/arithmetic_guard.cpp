// Refuses a build whose flags would change results: every product and sum of the library is
// rounded once, to a double, in the order in which it is written.

#include <cfloat>

#ifdef __FAST_MATH__
#error "zelvan gives exact results and cannot be built with -ffast-math; build it without"
#endif
#if defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__
#error "zelvan lets infinities and NaN through; build it without -ffinite-math-only"
#endif

static_assert(FLT_EVAL_METHOD == 0, "zelvan needs doubles that are evaluated as doubles");
