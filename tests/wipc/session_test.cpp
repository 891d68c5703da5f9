#include "wipc/scripted_peer.h"

TEST(Sessions, AreRefusedIfNullOrNotOpen) {
  char text[] = "~";
  zelvan::wipc_session* const bind = zelvan::wipc_new_session(7, zelvan::bind_session);
  for (void* const none : {static_cast<void*>(nullptr), static_cast<void*>(bind)}) {
    EXPECT_EQ(wipc_write(none, text), 0);
    EXPECT_EQ(wipc_write_status(none, text), 0);
    EXPECT_EQ(wipc_read(none, text, 1), -1);
    EXPECT_EQ(wipc_read_status(none, text, 1), -1);
    EXPECT_EQ(wipc_status_sid(none), -1);
    wipc_close_session(none);
  }
  zelvan::release_session(bind);
  ScriptedPeer peer('P');
  EXPECT_EQ(wipc_write(peer.session, nullptr), 0);
  EXPECT_EQ(wipc_write_status(ScriptedPeer('S').session, nullptr), 0);
  EXPECT_EQ(wipc_read_status(peer.session, nullptr, 1), 0);
  EXPECT_EQ(wipc_read_status(peer.session, text, 0), 0);
}

TEST(PollSession, TellsWhetherAReadWouldFindSomething) {
  ScriptedPeer peer('P');
  char text[] = "~~~~~~~~";
  EXPECT_EQ(wipc_read_status(peer.session, text, 8), 0) << "nothing has come";
  send(peer.data[1], "one\0two", 7, 0);
  EXPECT_EQ(wipc_poll_session(peer.session), 1) << "bytes have come";
  EXPECT_EQ(wipc_read(peer.session, nullptr, 9), 0);
  EXPECT_EQ(wipc_read(peer.session, text, 0), 0);
  EXPECT_EQ(wipc_read(peer.session, text, 2), 2) << "the rest of the message is gone";
  EXPECT_EQ(wipc_poll_session(peer.session), 1) << "a message is queued";
  EXPECT_EQ(wipc_read(peer.session, text, 5), 3);
  EXPECT_EQ(std::string(text, 6), std::string("two\0\0~", 6));
  EXPECT_EQ(wipc_poll_session(peer.session), 0) << "nothing is left";
  shutdown(peer.data[1], SHUT_RDWR);
  EXPECT_EQ(wipc_poll_session(peer.session), 1) << "the peer has gone";
}
