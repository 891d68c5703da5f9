#include "wipc/scripted_peer.h"

TEST(Sessions, AreRefusedIfNullOrNotOpen) {
  char text[] = "~";
  zelvan::wipc_session* const bind = zelvan::wipc_new_session(7, zelvan::bind_session);
  ScriptedPeer primary('P'), secondary('S');
  const std::string reports = printed([&] {
    for (void* const none : {static_cast<void*>(nullptr), static_cast<void*>(bind)}) {
      EXPECT_EQ(wipc_write(none, text), 0);
      EXPECT_EQ(wipc_write_status(none, text), 0);
      EXPECT_EQ(wipc_read(none, text, 1), -1);
      EXPECT_EQ(wipc_read_status(none, text, 1), -1);
      EXPECT_EQ(wipc_sid(none), -1);
      EXPECT_EQ(wipc_status_sid(none), -1);
      EXPECT_EQ(wipc_poll_session(none), 0);
      wipc_close_session(none);
    }
    EXPECT_EQ(wipc_write(primary.session, nullptr), 0);
    EXPECT_EQ(wipc_write_status(secondary.session, nullptr), 0);
    EXPECT_EQ(wipc_read(primary.session, nullptr, 1), 0);
    EXPECT_EQ(wipc_read_status(primary.session, nullptr, 1), 0);
    EXPECT_EQ(wipc_read_status(primary.session, text, 0), 0);
    EXPECT_EQ(wipc_read_status(secondary.session, text, 1), 0) << "it only writes a status";
  });
  zelvan::release_session(bind);
  // Each failure prints a line, save wipc_write, wipc_poll_session, the sids, wipc_close_session.
  EXPECT_EQ(std::count(reports.begin(), reports.end(), '\n'), 10) << "lines:\n" << reports;
}

TEST(PollSession, TellsWhetherAReadWouldFindSomething) {
  ScriptedPeer peer('P');
  char text[] = "~~~~~~~~";
  EXPECT_EQ(wipc_read_status(peer.session, text, 8), 0) << "nothing has come";
  send(peer.data[1], "one\0two", 7, 0);
  EXPECT_EQ(wipc_poll_session(peer.session), 1) << "bytes have come";
  EXPECT_EQ(wipc_read(peer.session, text, 0), 0);
  EXPECT_EQ(wipc_read(peer.session, text, 1), 1) << "the rest of the message is gone";
  EXPECT_EQ(wipc_poll_session(peer.session), 1) << "a message is queued";
  EXPECT_EQ(wipc_read(peer.session, text, 5), 3);
  EXPECT_EQ(std::string(text, 6), std::string("two\0\0~", 6));
  EXPECT_EQ(wipc_poll_session(peer.session), 0) << "nothing is left";
  shutdown(peer.data[1], SHUT_RDWR);
  EXPECT_EQ(wipc_poll_session(peer.session), 1) << "the peer has gone";
}

TEST(Sockets, AreRefusedByImpossibleNumbers) {
  EXPECT_EQ(zelvan::wipc_check_sockets(-1), 0);
  EXPECT_EQ(zelvan::wipc_poll_socket(0), 0) << "the standard input is no session";
}
