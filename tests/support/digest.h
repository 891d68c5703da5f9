/// A running digest of results: equal on every machine if and only if all of them are.
#pragma once

#include <cmath>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace support {

/// Returns the bits of `v`. All NaN are one: which operand's payload survives an addition of two
/// is the compiler's choice, and no result of the library depends on it.
inline std::uint64_t bits(double v) {
  return std::isnan(v) ? 0x7ff8000000000000 : __builtin_bit_cast(std::uint64_t, v);
}

/// Calls `visit` with each plain value that `value` consists of: a double, an int64_t or a
/// string_view.
///
/// A record consists of its fields, which the function `fields` in the record's own namespace
/// returns as a tuple.
template <class Value, class Visit>
void for_each_plain_value(const Value& value, const Visit& visit) {
  if constexpr (std::is_floating_point_v<Value>) {
    visit(static_cast<double>(value));
  } else if constexpr (std::is_same_v<Value, char>) {
    visit(std::int64_t{static_cast<unsigned char>(value)});  // has a sign on some machines
  } else if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
    visit(static_cast<std::int64_t>(value));
  } else if constexpr (std::is_pointer_v<Value>) {
    visit(value != nullptr ? std::string_view(value) : std::string_view("null"));
  } else if constexpr (std::is_convertible_v<const Value&, std::string_view>) {
    visit(std::string_view(value));
  } else if constexpr (requires { std::size(value); }) {
    for (const auto& element : value) for_each_plain_value(element, visit);
  } else {
    std::apply([&](const auto&... field) { (for_each_plain_value(field, visit), ...); },
               fields(value));
  }
}

class Digest {
 public:
  /// Takes results: numbers, texts, records, and whatever has elements. An address is no result.
  template <class... Results>
  void operator()(const Results&... results) {
    (for_each_plain_value(results, [this](auto value) { this->mix(value); }), ...);
  }

  std::uint64_t value() const { return value_; }

 private:
  void mix(double v) { mix(bits(v)); }
  void mix(std::int64_t v) { mix(static_cast<std::uint64_t>(v)); }
  void mix(std::string_view text) {
    mix(std::uint64_t{text.size()});
    for (const char c : text) mix(std::uint64_t{static_cast<unsigned char>(c)});
  }

  // No step loses anything, so a difference stays one.
  void mix(std::uint64_t v) {
    value_ = (value_ ^ v) * 0x9E3779B97F4A7C15;
    value_ ^= value_ >> 32;
  }

  std::uint64_t value_ = 0;
};

}  // namespace support
