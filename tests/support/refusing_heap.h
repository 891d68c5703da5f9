/// A heap that refuses the n-th request, for n = 1, 2, 3 and on.
///
/// Only for private test programs: their linker sends every `malloc`, `calloc`, `realloc` and
/// `new` of the library's objects and of the test through this harness.
#pragma once

#include <functional>

namespace support {

/// Runs `operation` again and again, with the first heap request refused, then the second,
/// until a run ends before the refused one is reached. After each run, `check` is told whether
/// a request was refused in it; it runs with the heap whole, so assertions belong there. Gives
/// the number of runs that were refused, for the caller to see that there were any. What a
/// refusal leaks is the address sanitizer's to find. A `lasting` refusal goes on to the end of
/// the run: whoever asks again is refused again.
int refuse_each_request(const std::function<void()>& operation,
                        const std::function<void(bool refused)>& check, bool lasting = false);

}  // namespace support
