#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/system.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

// Started as a secondary the test program says "ready" as its status and its first argument as its
// data, and echoes what it reads. The text "die" ends it at once.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 5) return RUN_ALL_TESTS();
  void* session = wipc_connect_session(argv[1], std::atoi(argv[2]), std::atoi(argv[3]));
  wipc_write_status(session, std::string("ready").data());
  wipc_write(session, argv[1]);
  char text[4002];
  while (wipc_read(session, text, sizeof text) > 0) {
    wipc_write(session, text);
    if (std::string(text) == "die") std::_Exit(0);
  }
}

TEST(Processes, TalkUntilTheSessionEndsOrOneDies) {
  char host[] = "localhost", text[4002];
  EXPECT_EQ(wipc_open_session(host, std::string("zelvan-none-such").data()), nullptr);
  const int descriptors = support::open_descriptors();
  for (const std::string last : {"goodbye", "die"}) {
    void* session = wipc_open_session(host, support::own_path().data());
    ASSERT_NE(session, nullptr) << wipc_last_error();
    EXPECT_EQ(wipc_read(session, text, 4002), 9);
    EXPECT_EQ(wipc_read_status(session, text, 4002), 5);
    for (std::string sent : {std::string(3998, 'b'), last}) {
      EXPECT_EQ(wipc_write(session, sent.data()), 1);
      std::string echo;
      while (echo.size() < sent.size() && wipc_read(session, text, 4002) > 0) echo += text;
      EXPECT_EQ(echo, sent);
    }
    int writes = 0;
    if (last == "die") {
      EXPECT_EQ(wipc_read(session, text, 4002), 0);
      while (wipc_write(session, text) == 1 && writes < 9) ++writes;
    }
    EXPECT_LT(writes, 9);  // and no signal
    EXPECT_FALSE(support::is_inherited(wipc_sid(session)));
    wipc_close_session(session);
    EXPECT_EQ(support::open_descriptors(), descriptors);
  }
}
