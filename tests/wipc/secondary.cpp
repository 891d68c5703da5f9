#include <zelvan/zelvan.h>

#include "support/system.h"

#include <gtest/gtest.h>

// Started as a secondary the program returns what it reads.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 5) return RUN_ALL_TESTS();
  void* session = wipc_connect_session(argv[1], std::stoi(argv[2]), std::stoi(argv[3]));
  char text[99];
  while (wipc_read(session, text, sizeof text) > 0) wipc_write(session, text);
}

TEST(Processes, TalkUntilTheSessionEnds) {
  char text[99] = "localhost";
  void* session = wipc_open_session(text, support::own_path().data());
  ASSERT_NE(session, nullptr) << wipc_last_error();
  EXPECT_EQ(wipc_write(session, text), 1);
  EXPECT_EQ(wipc_read(session, text, 99), 9);
  wipc_close_session(session);
}
