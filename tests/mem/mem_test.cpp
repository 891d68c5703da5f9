#include "mem/mem_world.h"
#include "support/random.h"

#include <sstream>

#include <gtest/gtest.h>

// A size that no heap can give is refused under the address sanitizer, too.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

TEST(Mem, AgreesWithAModelAfterEveryStep) {
  EXPECT_TRUE(mem_trace == 0 && zelvan::mem_sequence == 1 && zelvan::mem_default_list == nullptr);
  for (unsigned seed = 1; seed <= 16 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    support::Random random(seed);
    std::ostringstream trace;
    testing::internal::CaptureStdout();
    {
      World world([&](int count) { return random.below(count); },
                  [](bool agrees) { EXPECT_TRUE(agrees); }, seed % 4 == 0 ? nullptr : &trace,
                  seed % 3 == 0 ? INT_MAX : 500);
      for (int i = 0; i < 500 && !HasFailure(); ++i) world.step();
    }
    mem_trace = 0;
    const std::string told = testing::internal::GetCapturedStdout(), expected = trace.str();
    const auto same = std::ranges::mismatch(told, expected).in1 - told.begin();
    const std::size_t line = told.rfind('\n', same) + 1;
    EXPECT_EQ(told.substr(line, 300), expected.substr(line, 300)) << "from byte " << line;
  }
}

TEST(Mem, LooksForAParentFromItsFirstByteToItsLast) {
  void* memory[3];
  for (int at = 7; at <= 16; ++at) {  // the block is the second word
    MemEntry rows[] = {{&memory[1], 8, 8, nullptr, nullptr, 0, 1, -1}, zelvan::empty_entry};
    MemList list = {2, 1, nullptr, nullptr, rows};
    rows[1].back_ptr = reinterpret_cast<void**>(reinterpret_cast<char*>(memory) + at);
    zelvan::MemEntryFindParent(&list, &rows[1]);
    EXPECT_EQ(rows[1].parent, at >= 8 && at < 16 ? 0 : -1) << at;
  }
}

}  // namespace
