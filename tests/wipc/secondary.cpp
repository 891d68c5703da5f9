#include "wipc/secondary.h"

#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>

#include <csignal>
#include <cstdlib>

#include <gtest/gtest.h>
#include <unistd.h>

// The linker sends every pause of the library's objects here: see CMakeLists.txt.
void real_sleep(std::uint64_t milliseconds) asm("__real__ZN6zelvan8platform5SleepEm");
void sleep_in_haste(std::uint64_t milliseconds) asm("__wrap__ZN6zelvan8platform5SleepEm");
void sleep_in_haste(std::uint64_t milliseconds) {
  pauses.push_back(milliseconds);
  real_sleep(milliseconds / pause_divisor);
}

static int run_secondary(char** arguments) {
  alarm(120);  // outlives no test
  if (const char* divisor = std::getenv("ZELVAN_PAUSE_DIVISOR")) pause_divisor = std::atoi(divisor);
  void* session =
      wipc_connect_session(arguments[1], std::atoi(arguments[2]), std::atoi(arguments[3]));
  wipc_write_status(session, std::string("ready").data());
  wipc_write(session, std::to_string(getpid()).data());
  char text[4002];
  while (wipc_read(session, text, sizeof text) > 0) {
    wipc_write(session, text);
    if (std::string(text) == "die") raise(SIGKILL);
  }
  return 0;
}

int main(int argc, char** argv) {
  if (argc == 5) return run_secondary(argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
