#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

/// What the test program does where it was started as a secondary: says "ready" as its status and
/// its first argument as its data, and echoes what it reads. The text "die" ends it at once.
static int run_secondary(char** arguments) {
  void* session =
      wipc_connect_session(arguments[1], std::atoi(arguments[2]), std::atoi(arguments[3]));
  wipc_write_status(session, std::string("ready").data());
  wipc_write(session, arguments[1]);
  char text[4002];
  while (wipc_read(session, text, sizeof text) > 0) {
    wipc_write(session, text);
    if (std::string(text) == "die") std::_Exit(0);
  }
  return 0;
}

int main(int argc, char** argv) {
  if (argc == 5) return run_secondary(argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
