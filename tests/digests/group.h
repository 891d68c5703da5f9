/// A workload consists of groups of operations, and a log of their results.
///
/// A workload must produce the same results wherever it runs. So it must not depend on addresses,
/// the width of `long` or of a pointer, the sign of `char`, the distributions of the standard
/// library, the order in which arguments are evaluated, or the operating system. Sine, cosine and
/// their inverses are part of the program: see trigonometry.cpp. Each group can run alone.
#pragma once

#include <zelvan/zelvan.h>

#include "support/random.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>

using support::Random;

// ---- The fields of records.

auto fields(const auto& p) requires(sizeof p == 2 * sizeof p.x) { return std::tie(p.x, p.y); }
inline auto fields(const Mtx2D& m) {
  return std::tie(m.m11, m.m12, m.m21, m.m22, m.tx, m.ty, m.mirror, m.type);
}
inline auto fields(const utl_conic_t& c) {
  return std::tie(c.a, c.b, c.c, c.d, c.e, c.f, c.start, c.end, c.clockwise);
}
inline auto fields(const utl_ellipse_t& e) {
  return std::tie(e.sin_rot, e.cos_rot, e.off_x, e.off_y, e.start, e.sweep, e.axis_x, e.axis_y);
}
inline auto fields(const utl_hyperbola_t& h) {
  return std::tie(h.sin_rot, h.cos_rot, h.cen_x, h.cen_y, h.start, h.end, h.sq_x, h.sq_y, h.branch,
                  h.y_branches);
}
inline auto fields(const utl_parabola_t& p) {
  return std::tie(p.sin_rot, p.cos_rot, p.vtx_x, p.vtx_y, p.start, p.end, p.k, p.y_of_x);
}
inline auto fields(const ColorRGB& c) { return std::tie(c.red, c.green, c.blue); }
inline auto fields(const ColorHSV& c) { return std::tie(c.hue, c.saturation, c.value); }

/// Calls `visit` with each number, a double or an int64_t, in a number, a record or a range.
template <class Value, class Visit>
void for_each_number(const Value& value, const Visit& visit) {
  if constexpr (std::is_floating_point_v<Value>) {
    visit(static_cast<double>(value));
  } else if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
    visit(static_cast<std::int64_t>(value));
  } else if constexpr (requires { std::size(value); }) {
    for (const auto& element : value) for_each_number(element, visit);
  } else {
    std::apply([&](const auto&... field) { (for_each_number(field, visit), ...); }, fields(value));
  }
}

/// Adds the results of each operation to a digest, and can print them as a line of a trace.
class Log {
 public:
  explicit Log(bool is_traced) : is_traced_(is_traced) {}

  /// Adds the results of an operation. `inputs` are only for the trace.
  template <class... Inputs, class... Results>
  void operator()(const char* operation, const std::tuple<const Inputs&...>& inputs,
                  const Results&... results) {
    (for_each_number(results, [this](auto number) { this->add(number); }), ...);
    if (!is_traced_) return;
    std::printf("%s", operation);
    std::apply([](const auto&... input) { (print(input), ...); }, inputs);
    std::printf(" =");
    (print(results), ...);
    std::printf("\n");
  }

  std::uint64_t digest() const { return digest_; }

 private:
  // Every step is invertible, so digests that differ stay different.
  void add(std::int64_t number) {
    digest_ = (digest_ ^ static_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15;
    digest_ ^= digest_ >> 32;
  }

  // All NaN count as one: the compiler decides which operand's payload a sum of two keeps, and no
  // result of the library depends on it.
  void add(double number) {
    add(__builtin_bit_cast(std::int64_t, std::isnan(number) ? double{NAN} : number));
  }

  template <class Value>
  static void print(const Value& value) {
    std::printf(" (");
    for_each_number(value, [&](auto number) {
      const double v = static_cast<double>(number);
      std::printf("%.17g ", std::isnan(v) ? NAN : v);
    });
    std::printf(")");
  }
  static void print(const std::string& text) {
    std::printf(" \"");
    for (const unsigned char c : text) std::printf(c < ' ' || c > '~' ? "\\x%02x" : "%c", c);
    std::printf("\"");
  }

  std::uint64_t digest_ = 0;
  bool is_traced_;
};

/// Returns the inputs of an operation, for Log.
auto inputs(const auto&... values) { return std::tie(values...); }

using Workload = void (*)(Log& log);

/// Returns all groups, in the order of their names.
///
/// It is a function because clang 14 with -flto initialises inline variables after users of them.
inline std::map<std::string, Workload>& groups() {
  static std::map<std::string, Workload> all;
  return all;
}

/// A group of operations that share code, with one digest of all their results.
///
/// `name` is "family.operations". Each group is a static object that adds itself to `groups()`.
struct Group {
  Group(const char* name, Workload run) { groups()[name] = run; }
};
