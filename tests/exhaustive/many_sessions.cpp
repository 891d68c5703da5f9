#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>

#include "support/system.h"

#include <cstdint>
#include <cstdlib>

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

// The linker sends every pause of the library's objects here: see CMakeLists.txt. A secondary's
// are divided by the environment's "ZELVAN_PAUSE_DIVISOR".
static unsigned pause_divisor = 1;
void real_sleep(std::uint64_t milliseconds) asm("__real__ZN6zelvan8platform5SleepEm");
void sleep_in_haste(std::uint64_t milliseconds) asm("__wrap__ZN6zelvan8platform5SleepEm");
void sleep_in_haste(std::uint64_t milliseconds) {
  const char* of_secondary = std::getenv("ZELVAN_PAUSE_DIVISOR");
  const bool is_primary = pause_divisor != 1 || of_secondary == nullptr;
  real_sleep(milliseconds / (is_primary ? pause_divisor : std::atoi(of_secondary)));
}

namespace {

bool opens_talks_and_closes() {
  char host[] = "localhost";
  char text[4002] = "";
  void* session = wipc_open_session(host, support::own_path().data());
  const bool talks = session != nullptr && wipc_read(session, text, sizeof text) > 0 &&
                     wipc_write(session, text) == 1;
  wipc_close_session(session);
  return talks;
}

// In ten processes at once, so that they come late now and then, twenty each in a row.
TEST(ManySessions, AlwaysOpen) {
  for (int i = 0; i < 10; ++i) {
    if (fork() != 0) continue;
    int failed = 0;
    for (int j = 0; j < 20; ++j) failed += !opens_talks_and_closes();
    _exit(failed);
  }
  for (int status; wait(&status) > 0;) EXPECT_EQ(status, 0);
}

// With pauses cut short at both ends, more at the one that must not be late.
TEST(ManySessions, LeaveNothingInTheirProcess) {
  setenv("ZELVAN_PAUSE_DIVISOR", "10", 1);
  pause_divisor = 25;
  for (int i = 0; i < 20; ++i) ASSERT_TRUE(opens_talks_and_closes());
  const int descriptors = support::open_descriptors();
  const std::size_t memory = mallinfo2().uordblks;
  for (int i = 0; i < 500; ++i) ASSERT_TRUE(opens_talks_and_closes()) << i;
  EXPECT_EQ(support::open_descriptors(), descriptors);
  EXPECT_LT(mallinfo2().uordblks, memory + 4 * 500);  // no block a session; the heap has caches
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
