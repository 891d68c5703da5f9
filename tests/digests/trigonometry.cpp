// Sine, cosine, arc cosine and arc tangent, computed by sums, products, quotients, remainders and
// roots alone, which every machine rounds alike. The linker replaces those of the C library by
// these. Theirs differ in the last bit: glibc 2.36 uses different code on processors with and
// without fused multiply-add. With these, one digest holds for all machines.
#include <cmath>
#include <numbers>

using std::numbers::pi;

static constexpr int last_term = 26;  // of a power series; later terms are too small to matter

extern "C" {
double __wrap_sin(double angle) {
  const double x = std::remainder(angle, 2 * pi);
  double sum = 1.0;
  for (int n = last_term; n > 0; n -= 2) sum = 1.0 - x * x / (n * (n + 1)) * sum;
  return x * sum;
}

double __wrap_cos(double angle) {
  const double x = std::remainder(angle, 2 * pi);
  double sum = 1.0;
  for (int n = last_term; n > 0; n -= 2) sum = 1.0 - x * x / (n * (n - 1)) * sum;
  return sum;
}

void __wrap_sincos(double x, double* sine, double* cosine) {  // gcc combines both calls
  *sine = __wrap_sin(x);
  *cosine = __wrap_cos(x);
}

// Halves the angle three times, so that a few terms of the power series are enough. If a square
// overflows or underflows, the result is no arc tangent, but it is the same on every machine.
double __wrap_atan2(double y, double x) {
  if (std::signbit(x)) return std::copysign(pi, y) - __wrap_atan2(y, -x);
  if (y == 0.0) return y;
  for (int halved = 0; halved < 3; ++halved) x += std::sqrt(x * x + y * y);
  const double tangent = y / x;
  double sum = 0.0;
  for (int n = 21; n > 0; n -= 2) sum = 1.0 / n - tangent * tangent * sum;
  return 8 * (tangent * sum);
}

double __wrap_acos(double x) { return __wrap_atan2(std::sqrt((1.0 - x) * (1.0 + x)), x); }
}
