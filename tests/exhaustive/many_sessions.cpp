#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/system.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

// The linker sends every pause of the library's objects here: see CMakeLists.txt. A secondary's
// are divided by the environment's "ZELVAN_PAUSE_DIVISOR".
static unsigned pause_divisor = 1;
void real_sleep(std::uint64_t milliseconds) asm("__real_" SLEEP);
void sleep_in_haste(std::uint64_t milliseconds) asm("__wrap_" SLEEP);
void sleep_in_haste(std::uint64_t milliseconds) {
  const char* of_secondary = std::getenv("ZELVAN_PAUSE_DIVISOR");
  const bool is_primary = pause_divisor != 1 || of_secondary == nullptr;
  real_sleep(milliseconds / (is_primary ? pause_divisor : std::atoi(of_secondary)));
}

namespace {

bool opens_talks_and_closes(const char* last_word = "goodbye") {
  char host[] = "localhost";
  char text[4002] = "";
  void* session = wipc_open_session(host, support::own_path().data());
  const bool talks = session != nullptr && wipc_read(session, text, sizeof text) > 0 &&
                     wipc_write(session, std::string(last_word).data()) == 1 &&
                     wipc_read(session, text, sizeof text) > 0 && text == std::string(last_word);
  wipc_close_session(session);
  return talks;
}

TEST(ManySessions, DISABLED_OpenInARow) {
  for (int i = 0; i < 20; ++i) ASSERT_TRUE(opens_talks_and_closes());
  std::ofstream("done-" + std::to_string(getpid()));
}

// In ten processes at once, so that they come late now and then.
TEST(ManySessions, OpenInManyProcessesAtOnce) {
  const support::TemporaryFolder folder;
  const std::string line =
      '"' + support::own_path() + "\" --gtest_also_run_disabled_tests --gtest_filter=*InARow";
  std::thread shells[10];
  for (std::thread& shell : shells)
    shell = std::thread([&] { EXPECT_EQ(std::system(line.c_str()), 0); });
  for (std::thread& shell : shells) shell.join();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 10);
}

// With pauses cut short at both ends, more at the one that must not be late; every fifth program
// dies, and the next one is started all the same.
TEST(ManySessions, LeaveNothingInTheirProcess) {
  support::set_environment("ZELVAN_PAUSE_DIVISOR", "10");
  pause_divisor = 25;
  wipc_set_connect_timeout(100);  // which are 4 seconds then
  for (int i = 0; i < 20; ++i) ASSERT_TRUE(opens_talks_and_closes());
  const int descriptors = support::open_descriptors();
  const std::size_t memory = support::heap_in_use();
  for (int i = 0; i < 200; ++i) ASSERT_TRUE(opens_talks_and_closes(i % 5 ? "hello" : "die")) << i;
  EXPECT_EQ(support::open_descriptors(), descriptors);
  EXPECT_LT(support::heap_in_use(), memory + 4 * 200);  // no block a session; the heap has caches
}

}  // namespace
