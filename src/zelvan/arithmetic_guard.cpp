// Refuses a build whose flags would change results or layouts: every product and sum of the library
// is rounded once, to a double, in the order in which it is written.
//
// CMake compiles this file twice: with the flags of the library, and with only those of a parent
// project. The library's flags undo some of a parent's, so only the second compilation sees them.

#include <cfloat>

#if defined(__FAST_MATH__) || (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#error "zelvan cannot be built with -ffast-math or -ffinite-math-only; build it without"
#endif
#if FLT_EVAL_METHOD != 0 || (defined(__x86_64__) && !defined(__SSE2_MATH__))
#error "zelvan needs doubles evaluated as doubles; on x86 build it with -msse2 -mfpmath=sse"
#endif
#ifndef ZELVAN_FLAGS_OF_PARENT  // a parent may have the flags below: the library undoes them
#if defined(__ASSOCIATIVE_MATH__) || defined(__RECIPROCAL_MATH__) || defined(__NO_SIGNED_ZEROS__)
#error "zelvan rounds as written; build it with -fno-unsafe-math-optimizations -fsigned-zeros"
#endif
#endif

namespace {

enum Few { one };
static_assert(sizeof(Few) == sizeof(int),
              "enumerations are ints: build zelvan without -fshort-enums");

struct Padded {
  char c;
  int i;
};
static_assert(sizeof(Padded) == 2 * sizeof(int),
              "records are padded: build zelvan without -fpack-struct");

}  // namespace
