// Two processes that talk: the test program starts itself as its secondary.
#include <zelvan/zelvan.h>

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <support/system.h>

// A secondary writes the status "ready" and sends back what it reads. "die" ends it at once.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 5) return RUN_ALL_TESTS();
  void* session = wipc_connect_session(argv[1], std::stoi(argv[2]), std::stoi(argv[3]));
  wipc_write_status(session, std::string("ready").data());
  char text[4002];
  while (wipc_read(session, text, sizeof text) > 0) {
    if (std::string(text) == "die") std::_Exit(0);
    wipc_write(session, text);
  }
}

TEST(Processes, TalkUntilTheSessionEndsOrOneDies) {
  char text[4002];
  char localhost[] = "localhost";
  EXPECT_EQ(wipc_open_session(localhost, std::string("zelvan-none-such").data()), nullptr);
  const int descriptors = support::open_descriptors();  // with those that the first socket opens
  for (const bool dies : {false, true}) {
    zelvan_set_local_sessions_only(dies);  // both settings accept a local secondary
    void* session = wipc_open_session(localhost, support::own_path().data());
    ASSERT_NE(session, nullptr) << wipc_last_error();
    EXPECT_FALSE(support::is_inherited(wipc_sid(session)));
    EXPECT_EQ(wipc_read_status(session, text, sizeof text), 5) << "ready";
    EXPECT_EQ(wipc_write(session, std::string("echo").data()), 1);
    EXPECT_EQ(wipc_read(session, text, sizeof text), 4) << "echo";
    if (dies) {
      wipc_write(session, std::string("die").data());
      EXPECT_EQ(wipc_read(session, text, sizeof text), 0) << "the other has ended";
      int writes = 0;
      while (writes < 9 && wipc_write(session, text) == 1) ++writes;
      EXPECT_LT(writes, 9) << "a write fails soon, and no signal ends the process";
    }
    wipc_close_session(session);
    EXPECT_EQ(support::open_descriptors(), descriptors) << "nothing stays open";
  }
}
