// The model of a list and a pool that the tests use, with bytes in the place of chance, until the
// bytes are used up. Where the list disagrees with it, the program stops.

#include <cstddef>
#include <cstdint>

#include <mem/mem_model.h>

// A size that no heap can give is refused, not reported.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto below = [&](int count) {
    if (size == 0) return 0;
    --size;
    return *data++ % count;
  };
  MemModel model(below);
  while (size > 0) {
    model.step();
    if (!model.difference().empty()) std::abort();
  }
  return 0;
}
