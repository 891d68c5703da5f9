#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/queue.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/refusing_heap.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace zelvan;
using Texts = std::vector<std::string>;

/// A session at either end, and the bare far ends of its two streams. They keep the bounds of what
/// was sent, so a receive gives one piece, and a receive of too few bytes loses the rest of it.
class Messages : public testing::Test {
 protected:
  ~Messages() override { hang_up(); }
  void open(char session_type) {
    session = wipc_new_session(connected(&data), session_type);
    session->status_sid = connected(&status);
  }
  static int connected(int* far_end) {
    int ends[2];
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends), 0);
    *far_end = ends[1];
    return ends[0];
  }
  void hang_up() {
    if (session == nullptr) return;
    for (const int socket : {session->sid, session->status_sid, data, status}) close(socket);
    release_session(std::exchange(session, nullptr));
  }
  static std::string bytes_at(int socket) {
    char bytes[5000];
    const ssize_t got = recv(socket, bytes, sizeof bytes, MSG_DONTWAIT);
    return got > 0 ? std::string(bytes, static_cast<std::size_t>(got)) : "";
  }
  /// All messages that the pieces make, followed by the end of the stream.
  Texts messages_of(const Texts& pieces, bool on_status) {
    const int far_end = on_status ? status : data;
    for (const std::string& piece : pieces) send(far_end, piece.data(), piece.size(), 0);
    shutdown(far_end, SHUT_WR);
    Texts result;
    while (true) {
      std::string buffer(5000, '~');
      const int length = (on_status ? wipc_read_status : wipc_read)(session, buffer.data(), 5000);
      if (buffer[0] == '~') return result;  // no message
      result.push_back(buffer.c_str());
      EXPECT_EQ(length, static_cast<int>(result.back().size()));
    }
  }

  wipc_session* session = nullptr;
  int data = -1;
  int status = -1;
};

std::string a(int n) { return std::string(static_cast<std::size_t>(n), 'a'); }
std::string b(int n) { return std::string(static_cast<std::size_t>(n), 'b'); }
const std::string nul(1, '\0');

// Each piece is received at once. Around 4000 bytes the reader goes on reading, and joins.
TEST_F(Messages, AreWhatOneReceiveGaveSplitAtItsNuls) {
  const struct {
    Texts pieces;
    Texts messages;
    const char* why;
  } rows[] = {
      {{}, {}, "an end without a message"},
      {{"one", "two" + nul, nul, "x" + nul + nul + "y"}, {"one", "two", "", "x", "", "y"}, "short"},
      {{a(3998), b(5)}, {a(3998), b(5)}, "the longest that is complete in any case"},
      {{a(3998) + nul, b(5)}, {a(3998), b(5)}, "3999 bytes that end in a NUL"},
      {{a(3999)}, {a(3999)}, "reads on, to the end"},
      {{a(3999), b(2)}, {a(3999) + b(2)}, "joined up to 4001"},
      {{a(3999), b(3)}, {""}, "joined above 4001"},
      {{a(3999) + nul, b(2)}, {a(3999) + b(2)}, "complete, and joined all the same"},
      {{a(3998) + nul + b(1), b(4)}, {a(3998), b(5)}, "the second string is cut"},
      {{a(3997) + nul + nul + b(1), b(4) + nul + "c"}, {a(3997), "", b(5), "c"}, "the third is"},
      {{a(4000)}, {a(4000)}, "reads on, to the end"},
      {{a(4000), b(1)}, {a(4000) + b(1)}, "joined to 4001"},
      {{a(4000) + b(1), b(1)}, {a(4000) + b(1)}, "a receive takes 4000"},
      {{a(4000), b(2) + nul + "c"}, {"", "c"}, "too long, and what follows is whole"},
      {{a(4000), nul + b(3)}, {a(4000), b(3)}, "an empty rest"},
      {{a(4000), nul, b(3)}, {a(4000), b(3)}, "a whole status text"},
      {{a(4000), b(4000), "c"}, {"", "c"}, "a full chunk joined isn't read on from"},
      {{a(4000), nul + b(3999), "c"}, {a(4000), b(3999) + "c"}, "but a later string of it is"},
  };
  for (const std::string channel : {"P data", "S data", "P status"}) {
    for (const auto& row : rows) {
      open(channel[0]);
      EXPECT_EQ(messages_of(row.pieces, channel[2] == 's'), row.messages) << channel << row.why;
      hang_up();
    }
  }
}

TEST_F(Messages, AreSentAsTheyAreUpToTheirLimit) {
  open('S');
  for (int n : {0, 1, 3999, 4000, 4001, 9000}) {
    EXPECT_EQ(wipc_write(session, a(n).data()), 1);
    EXPECT_EQ(bytes_at(data), n <= 4000 ? a(n) : "Error Maximum message length exceeded") << n;
    EXPECT_EQ(wipc_write_status(session, a(n).data()), n <= 4000);
    EXPECT_EQ(bytes_at(status), n <= 4000 ? a(n) + nul : "") << n;
  }
  close(std::exchange(data, -1));
  close(std::exchange(status, -1));
  EXPECT_EQ(wipc_write(session, a(1).data()), 0);
  EXPECT_EQ(wipc_write_status(session, a(1).data()), 0);
}

TEST_F(Messages, FillTheReadersBufferAndNothingBeyond) {
  open('P');
  for (const unsigned length : {1, 2, 3, 4, 7}) {
    for (const auto read : {wipc_read, wipc_read_status}) {
      platform::send(read == wipc_read ? data : status, "abc", 4);
      std::string buffer = "~~~~~~~~~";
      EXPECT_EQ(read(session, buffer.data(), static_cast<int>(length)), std::min(length, 3u));
      EXPECT_EQ(buffer, std::string("abc\0\0\0\0", length) + std::string(9 - length, '~'));
    }
  }
  platform::send(data, "one\0two", 7);
  char buffer[8];
  EXPECT_EQ(wipc_read(session, buffer, 8), 3);
  EXPECT_EQ(platform::select(session->sid), 0);
  EXPECT_EQ(wipc_poll_session(session), 1);  // queued, not on the socket
  EXPECT_EQ(wipc_read(session, buffer, 8), 3);
  EXPECT_EQ(wipc_poll_session(session), 0);
  EXPECT_EQ(wipc_read_status(session, buffer, 8), 0);  // without waiting
}

// Only the secondary knows the word, only as a whole message, and only on the data channel.
TEST_F(Messages, EndTheSessionAtTheSecondary) {
  const Texts words = {"SessionClosed", "Acknowledge"};
  open('P');
  EXPECT_EQ(messages_of({words[0], words[1]}, false), words);
  hang_up();
  open('S');
  platform::send(data, "xSessionClosed\0SessionClosed.\0SessionClosed\0left", 49);
  char buffer[99];
  EXPECT_EQ(wipc_read(session, buffer, 99), 14);
  EXPECT_EQ(wipc_read(session, buffer, 99), 14);
  const int sockets[] = {session->sid, session->status_sid};
  EXPECT_EQ(wipc_read(std::exchange(session, nullptr), buffer, 99), -1);
  EXPECT_EQ(bytes_at(data), "Acknowledge");
  for (const int socket : sockets) EXPECT_EQ(close(socket), 0);  // still open
  for (const int socket : {data, status}) close(socket);
}

TEST_F(Messages, AreLostOneByOneWhereTheHeapRefuses) {
  open('P');
  char buffer[8];
  const int refused = support::refuse_each_request(
      [&] {
        platform::send(data, "one\0two\0end", 11);
        wipc_fill_queues(session, session->sid);
      },
      [&](bool is_refused) {
        int left = 0;
        while (wipc_poll_session(session) == 1 && wipc_read(session, buffer, 8) == 3) ++left;
        EXPECT_EQ(left, is_refused ? 2 : 3);
      });
  EXPECT_EQ(refused, 6);
}

// A standard stream's number is never taken, and numbers beyond a descriptor set are polled.
TEST_F(Messages, WorkOnSocketsOfAnyNumber) {
  const int input = dup(0);
  close(0);
  platform::SocketAddress own{};
  const int lonely = platform::socket();
  dup2(input, 0);
  close(input);
  EXPECT_GT(lonely, 2);
  platform::bind(lonely, own);
  platform::getsockname(lonely, &own);
  EXPECT_EQ(platform::connect(lonely, own), -1);  // to itself
  platform::closesocket(lonely);
  open('P');
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = 2000;
  setrlimit(RLIMIT_NOFILE, &limit);
  const int high = fcntl(session->sid, F_DUPFD, 1500);
  EXPECT_GE(high, 1500);
  EXPECT_EQ(wipc_poll_socket(high), 0);
  platform::send(data, "x", 1);
  EXPECT_EQ(wipc_poll_socket(high), 1);
  close(high);
  EXPECT_EQ(platform::select(high), -1);
}

}  // namespace
