// Runs the tests' model of a list and a pool with the input in place of random numbers, until it is
// used up. The program stops if the list disagrees with the model.

#include <cstddef>
#include <cstdint>

#include <mem/mem_model.h>

// A request that no heap can meet must return null, not stop the program with a report.
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
