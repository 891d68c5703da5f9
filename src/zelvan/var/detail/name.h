/// How names compare in the `Var` family.
#pragma once

#include <cstddef>

namespace zelvan {

/// Only so many characters of a name are significant.
constexpr std::size_t significant_name_length = 1600;

constexpr bool is_control(char c) { return c >= 1 && c <= 31; }

/// True if two names are the same: the case of ASCII letters doesn't count, and a name ends at
/// its first control character. A null name is an empty one.
bool is_same_name(const char* a, const char* b);

}  // namespace zelvan
