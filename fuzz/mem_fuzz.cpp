// The world of lists, handlers and a model beside them, with bytes in the place of chance, until
// the bytes are used up. Where the model disagrees, the program stops.

#include "mem_world.h"

#include <cstddef>
#include <cstdint>

// A size that no heap can give is refused, not reported.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto below = [&](int count) {
    if (size == 0) return 0;
    --size;
    return *data++ % count;
  };
  World world(below, [](bool agrees) {
    if (!agrees) std::abort();
  });
  while (size > 0) world.step();
  return 0;
}
