/// Equality and printing of the library's records, so that a failed expectation prints all fields.
///
/// Two records are equal if their bits are: -0.0 is not 0.0. All NaN are equal: the compiler
/// decides which operand's payload a sum keeps.
#pragma once

#include <zelvan/colour/color_rgb.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/points.h>
#include <zelvan/transforms/records.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ostream>
#include <string>
#include <type_traits>

namespace support {

inline bool same_bits(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return __builtin_bit_cast(std::uint64_t, a) == __builtin_bit_cast(std::uint64_t, b);
}

/// Returns the number in decimal, with enough digits to distinguish it from its neighbours.
inline std::string digits(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%.17g", v);
  return text;
}

template <class T>
inline constexpr bool is_point = std::is_same_v<T, real_pt_t> || std::is_same_v<T, int_pt_t> ||
                                 std::is_same_v<T, short_pt_t> || std::is_same_v<T, DblPt>;

}  // namespace support

template <class Point>
requires support::is_point<Point>
bool operator==(const Point& a, const Point& b) {
  return support::same_bits(a.x, b.x) && support::same_bits(a.y, b.y);
}
inline bool operator==(const ColorRGB& a, const ColorRGB& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}
inline bool operator==(const Mtx2D& a, const Mtx2D& b) {
  using support::same_bits;
  return same_bits(a.m11, b.m11) && same_bits(a.m12, b.m12) && same_bits(a.m21, b.m21) &&
         same_bits(a.m22, b.m22) && same_bits(a.tx, b.tx) && same_bits(a.ty, b.ty) &&
         a.mirror == b.mirror && a.type == b.type;
}

template <class Point>
requires support::is_point<Point>
void PrintTo(const Point& p, std::ostream* out) {
  *out << '(' << support::digits(p.x) << ", " << support::digits(p.y) << ')';
}
inline void PrintTo(const real_rect_t& rect, std::ostream* out) {
  for (const real_pt_t& corner : rect.corners) PrintTo(corner, out);
}
inline void PrintTo(const ColorRGB& c, std::ostream* out) {
  *out << "RGB(" << c.red << ", " << c.green << ", " << c.blue << ')';
}
inline void PrintTo(const ColorValue& c, std::ostream* out) {
  *out << "pen " << c.pen << ", alpha " << +c.alpha << ", RGB(" << +c.red << ", " << +c.green
       << ", " << +c.blue << ')';
}
inline void PrintTo(const Mtx2D& m, std::ostream* out) {
  using support::digits;
  *out << "m11 " << digits(m.m11) << ", m12 " << digits(m.m12) << ", m21 " << digits(m.m21)
       << ", m22 " << digits(m.m22) << ", tx " << digits(m.tx) << ", ty " << digits(m.ty)
       << ", mirror " << m.mirror << ", type " << m.type;
}
