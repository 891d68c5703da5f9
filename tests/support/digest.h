/// A running digest of results: equal on every machine if and only if all of them are.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

namespace support {

/// The bits of `v`. All NaN are one: which operand's payload survives an addition of two NaN
/// is the compiler's choice, and no result of the library depends on it.
inline std::uint64_t bits(double v) {
  return std::isnan(v) ? 0x7ff8000000000000 : __builtin_bit_cast(std::uint64_t, v);
}

class Digest {
 public:
  /// With `every` not 0 the digest so far is printed behind so many operations.
  explicit Digest(long every = 0) : every_(every) {}

  /// Takes the results of one operation: numbers, records, texts, null ones too, and whatever else
  /// has elements. An address is no result.
  template <class... Results>
  void operator()(const Results&... results) {
    (add(results), ...);
    if (++operations_; every_ != 0 && operations_ % every_ == 0) tell("behind operation");
  }

  /// Takes whether an operation agrees with its model. The first that doesn't is told at once.
  void expect(bool agrees) {
    (*this)(agrees);
    if (!agrees && disagreements_++ == 0) tell("no agreement with the model in operation");
  }

  std::uint64_t value() const { return value_; }
  long disagreements() const { return disagreements_; }

 private:
  void tell(const char* what) {  // not by printf, in whose place the program may have put another
    char line[100];
    std::snprintf(line, sizeof line, "%s %ld: %016llx\n", what, operations_,
                  static_cast<unsigned long long>(value_));
    std::fputs(line, stdout);
  }

  static void tell_value(std::uint64_t value) {
    char text[22];
    std::snprintf(text, sizeof text, "%llu ", static_cast<unsigned long long>(value));
    std::fputs(text, stdout);
  }

  template <class Result>
  void add(const Result& result) {
    if constexpr (std::is_floating_point_v<Result>) {
      mix(bits(result));
    } else if constexpr (std::is_same_v<Result, char>) {
      mix(static_cast<unsigned char>(result));  // has a sign on some machines
    } else if constexpr (std::is_same_v<Result, const char*> || std::is_same_v<Result, char*>) {
      add(result != nullptr);
      if (result != nullptr) add(std::string_view(result));
    } else if constexpr (std::is_integral_v<Result> || std::is_enum_v<Result>) {
      mix(static_cast<std::uint64_t>(result));
    } else if constexpr (requires { std::size(result); }) {
      mix(std::size(result));
      for (const auto& element : result) add(element);
    } else if constexpr (requires { result.corners; }) {
      add(result.corners);
    } else if constexpr (requires { result.red; }) {
      add(result.red);
      add(result.green);
      add(result.blue);
    } else {
      add(result.x);
      add(result.y);
    }
  }

  // No step loses anything, so that a difference stays one. With `every` 1 each value is printed.
  void mix(std::uint64_t v) {
    if (every_ == 1) tell_value(v);
    value_ = (value_ ^ v) * 0x9E3779B97F4A7C15;
    value_ ^= value_ >> 32;
  }

  std::uint64_t value_ = 0;
  long operations_ = 0, disagreements_ = 0, every_;
};

}  // namespace support
