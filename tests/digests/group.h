/// What a workload is made of: a group of operations, and the log of what they returned.
///
/// A workload must produce the same results wherever it runs. So it depends neither on addresses
/// nor on the width of `long` or of a pointer, nor on the sign of `char`, on the distributions of
/// the standard library, on the order in which arguments are evaluated, or on anything that the
/// system says. Sine, cosine and their inverses are the program's own: see trigonometry.cpp. Each
/// group can be run alone, so none relies on what another one leaves.
#pragma once

#include <zelvan/zelvan.h>

#include "support/digest.h"
#include "support/random.h"

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

using support::Random;

/// Takes the results of each operation into a digest, and can print it as a line of a trace.
class Log {
 public:
  explicit Log(bool is_traced) : is_traced_(is_traced) {}

  /// Takes the results of an operation. `inputs` are for the trace alone.
  template <class... Inputs, class... Results>
  void operator()(const char* operation, const std::tuple<const Inputs&...>& inputs,
                  const Results&... results) {
    digest_(results...);
    if (!is_traced_) return;
    line_ = operation;
    std::apply([this](const auto&... input) { (this->append(input, longest_input), ...); }, inputs);
    line_ += " =";
    (append(results, SIZE_MAX), ...);
    print_line();
  }

  std::uint64_t digest() const { return digest_.value(); }

 private:
  static constexpr std::size_t longest_input = 24;  ///< plain values; of more just the number

  template <class Value>
  void append(const Value& value, std::size_t longest) {
    std::vector<std::string> words;
    support::for_each_plain_value(value, [&](auto plain) { words.push_back(to_word(plain)); });
    append_words(words, longest);
  }

  static std::string to_word(double v);
  static std::string to_word(std::int64_t v);
  static std::string to_word(std::string_view text);
  void append_words(const std::vector<std::string>& words, std::size_t longest);
  void print_line() const;

  support::Digest digest_;
  bool is_traced_;
  std::string line_;
};

/// The inputs of an operation, for Log.
template <class... Inputs>
std::tuple<const Inputs&...> inputs(const Inputs&... values) {
  return std::tuple<const Inputs&...>(values...);
}

/// A group of operations that share code, with one digest of all that they return.
///
/// Each is an object with the life of the program, and adds itself to `all`.
struct Group {
  using Workload = void (*)(Log& log);

  /// `name` is "family.operations".
  Group(const char* name, Workload run) : name(name), run(run) { all().push_back(this); }
  Group(const Group&) = delete;

  const char* const name;
  const Workload run;

  static std::vector<const Group*>& all() {
    static std::vector<const Group*> groups;
    return groups;
  }
};

// ---- The fields of records.

inline auto fields(const real_pt_t& p) { return std::tie(p.x, p.y); }
inline auto fields(const int_pt_t& p) { return std::tie(p.x, p.y); }
inline auto fields(const short_pt_t& p) { return std::tie(p.x, p.y); }
inline auto fields(const DblPt& p) { return std::tie(p.x, p.y); }
inline auto fields(const real_rect_t& rect) { return std::tie(rect.corners); }
inline auto fields(const int_rect_t& rect) { return std::tie(rect.corners); }
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
inline auto fields(const ColorValue& c) { return std::tie(c.pen, c.alpha, c.red, c.green, c.blue); }
