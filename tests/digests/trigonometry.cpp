// Sine, cosine, arc cosine and arc tangent made of sums, products and roots alone, which every
// machine rounds alike. The linker puts them in the place of the C library's, which differ in the
// last bit: glibc 2.36 has other ones for processors with a fused multiply-add than for those
// without. So one digest holds for all.
#include <cmath>
#include <numbers>
#include <utility>

namespace {

using std::numbers::pi;

constexpr int last_term = 26;  // of a power series; later terms are too small even for half a turn

double sine(double angle) {
  const double x = std::remainder(angle, 2 * pi);
  double sum = 1.0;
  for (int n = last_term; n > 0; n -= 2) sum = 1.0 - x * x / (n * (n + 1)) * sum;
  return x * sum;
}

double cosine(double angle) {
  const double x = std::remainder(angle, 2 * pi);
  double sum = 1.0;
  for (int n = last_term; n > 0; n -= 2) sum = 1.0 - x * x / (n * (n - 1)) * sum;
  return sum;
}

/// Halves the angle three times, so that a few terms of the power series are enough.
double arc_tangent(double y, double x) {
  if (std::isunordered(x, y)) return NAN;
  double longer = std::fabs(x);
  double shorter = std::fabs(y);
  if (std::isinf(longer) || std::isinf(shorter)) {
    longer = std::isinf(longer) ? 1.0 : 0.0;
    shorter = std::isinf(shorter) ? 1.0 : 0.0;
  }
  const bool is_steep = shorter > longer;
  if (is_steep) std::swap(longer, shorter);
  double tangent = longer == 0.0 ? 0.0 : shorter / longer;
  for (int halved = 0; halved < 3; ++halved) tangent /= 1.0 + std::sqrt(1.0 + tangent * tangent);
  double sum = 0.0;
  for (int n = 17; n > 0; n -= 2) sum = 1.0 / n - tangent * tangent * sum;
  double angle = 8 * (tangent * sum);
  if (is_steep) angle = pi / 2 - angle;
  if (std::signbit(x)) angle = pi - angle;
  return std::copysign(angle, y);
}

}  // namespace

extern "C" {
double __wrap_sin(double x) { return sine(x); }
double __wrap_cos(double x) { return cosine(x); }
double __wrap_acos(double x) { return arc_tangent(std::sqrt((1.0 - x) * (1.0 + x)), x); }
double __wrap_atan2(double y, double x) { return arc_tangent(y, x); }
void __wrap_sincos(double x, double* sine_of_x,
                   double* cosine_of_x) {  // gcc makes one call of both
  *sine_of_x = sine(x);
  *cosine_of_x = cosine(x);
}
}
