#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/system.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Processes, TalkUntilOneDies) {
  const int descriptors = support::open_descriptors();
  char host[] = "localhost", text[4002];
  void* session = wipc_open_session(host, support::own_path().data());
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(wipc_read(session, text, sizeof text), 9);
  EXPECT_EQ(wipc_read_status(session, text, sizeof text), 5);
  EXPECT_STREQ(text, "ready");
  for (std::string sent : {std::string("a"), std::string(3998, 'b'), std::string("die")}) {
    EXPECT_EQ(wipc_write(session, sent.data()), 1);
    std::string echo;
    while (echo.size() < sent.size() && wipc_read(session, text, sizeof text) > 0) echo += text;
    EXPECT_EQ(echo, sent);
  }
  EXPECT_EQ(wipc_read(session, text, sizeof text), 0);
  EXPECT_EQ(wipc_poll_session(session), 1);
  int writes = 0;
  while (wipc_write(session, host) == 1 && writes < 9) ++writes;
  EXPECT_LT(writes, 9);  // and no signal
  for (const int socket : {wipc_sid(session), wipc_status_sid(session)}) {
    EXPECT_FALSE(support::is_inherited(socket));
  }
  wipc_close_session(session);
  EXPECT_EQ(support::open_descriptors(), descriptors);
}

}  // namespace
