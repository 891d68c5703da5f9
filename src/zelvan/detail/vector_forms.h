/// The forms of kernels: which ones exist, and which one runs.
///
/// A kernel is a function whose first parameter is its form. Every kernel has a plain form. A form
/// for an instruction set is an overload in a file that is named after the set (`*_avx2.cpp`). Such
/// a file is part of the build only for processors of that family (for AVX2, 64-bit x86). Where a
/// form is missing, the plain form runs:
///
///     int sum(Plain, const int* values, int n);  // in sum.cpp
///     int sum(Avx2, const int* values, int n);   // in sum_avx2.cpp
///
///     return with_best_form([=](auto form) { return sum(form, values, n); });
///
/// All forms of a kernel produce the same bits, so the choice affects only the time. It depends on
/// the processor alone and is made once, when the library is loaded; a call before that runs the
/// plain form.
#pragma once

namespace zelvan {

/// The plain form: portable code for every processor. All other forms must produce the same
/// results.
struct Plain {
  static constexpr const char* name = "plain";
};

/// AVX2, which some 64-bit x86 processors have.
struct Avx2 : Plain {
  static constexpr const char* name = "avx2";
  static bool may_run;  ///< true if the processor has AVX2; only tests change it
};

/// NEON with vectors of doubles, which every 64-bit ARM processor has.
struct Neon : Plain {
  static constexpr const char* name = "neon";
  static bool may_run;  ///< true; only tests change it
};

template <class... Form>
struct FormList {};

/// The vector forms for this kind of processor, the preferred one first.
#if defined(__x86_64__)
using VectorForms = FormList<Avx2>;
/// Marks a function that may contain AVX2 instructions. The compiler option for AVX2 is not set for
/// whole files: an inline function of a header would then contain such instructions, and the linker
/// could choose that copy for the whole library, also for processors without AVX2.
#define ZELVAN_AVX2 __attribute__((target("avx2")))
#elif defined(__aarch64__)
using VectorForms = FormList<Neon>;
#else
using VectorForms = FormList<>;
#endif

template <class Kernel>
[[gnu::always_inline]] inline auto with_best_form(const Kernel& kernel, FormList<> /*none*/) {
  return kernel(Plain{});
}

template <class Kernel, class First, class... Others>
[[gnu::always_inline]] inline auto with_best_form(const Kernel& kernel,
                                                  FormList<First, Others...> /*forms*/) {
  if (First::may_run) return kernel(First{});
  return with_best_form(kernel, FormList<Others...>{});
}

/// Calls `kernel(form)` with the best form that this processor can run, and returns its result.
template <class Kernel>
[[gnu::always_inline]] inline auto with_best_form(const Kernel& kernel) {
  return with_best_form(kernel, VectorForms{});
}

}  // namespace zelvan
