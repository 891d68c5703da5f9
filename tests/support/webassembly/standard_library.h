/// What tests use of C++20 and Emscripten's library has not got yet; included ahead of each source.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>

namespace std {

template <class To, class From>
constexpr To bit_cast(const From& from) {
  return __builtin_bit_cast(To, from);
}

namespace ranges {

auto find_if(auto&& range, auto is) { return std::find_if(range.begin(), range.end(), is); }
auto find(auto&& range, const auto& v) { return std::find(range.begin(), range.end(), v); }
auto all_of(auto&& range, auto is) { return std::all_of(range.begin(), range.end(), is); }
auto any_of(auto&& range, auto is) { return std::any_of(range.begin(), range.end(), is); }
auto none_of(auto&& range, auto is) { return std::none_of(range.begin(), range.end(), is); }
auto count_if(auto&& range, auto is) { return std::count_if(range.begin(), range.end(), is); }
auto count(auto&& range, const auto& v, auto of) {
  return ranges::count_if(range, [&](const auto& each) { return std::invoke(of, each) == v; });
}

auto mismatch(const auto& a, const auto& b) {
  struct {
    decltype(a.begin()) in1;
  } found{std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first};
  return found;
}

}  // namespace ranges
}  // namespace std
