/// Comparing text without regard to case.
///
/// Only the case of the ASCII letters A to Z is ignored, whatever the locale of the process:
/// a name that is found today is found on every machine. All other bytes, those with the high
/// bit set included, stand for themselves and compare as unsigned values, a letter as its
/// small form. Nothing is allocated or kept, so every function may run on any thread.
#pragma once

#include <cstddef>

namespace zelvan::platform {

/// Compares two terminated texts whole: negative if `a` comes before `b`, 0 if they are equal
/// but for case, positive if `a` comes after. A text comes after its own beginnings.
///
/// Requires: no null pointer.
int _stricmp(const char* a, const char* b);

/// Compares at most the first `count` bytes as `_stricmp` does: texts that agree so far are equal.
/// A `count` of 0 reads nothing and returns 0.
///
/// Requires: no null pointer, save with a `count` of 0.
int _strnicmp(const char* a, const char* b, std::size_t count);

}  // namespace zelvan::platform
