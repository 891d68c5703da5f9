#include <zelvan/platform/clock.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/connection.h>

#include "wipc/scripted_peer.h"

#include <support/system.h>
#include <sys/resource.h>

namespace platform = zelvan::platform;

// Called in each pause of the library. A pause takes no time here.
static std::function<void()> on_pause = [] {};
static int paused_ms;                                              // the sum of the pauses
static const int timeout_at_first = zelvan::wipc_connect_timeout;  // 10 s

static char localhost[] = "localhost", *own_name;
static int ports[2], is_local;

static int open_connection(std::string host, std::string module) {
  on_pause = [] {};
  return wipc_open_connection(host.data(), module.data(), &own_name, &ports[0], &ports[1],
                              &is_local);
}

void zelvan::platform::GetLocalTime(LocalTime*) {}
void zelvan::platform::Sleep(std::uint64_t milliseconds) {
  paused_ms += static_cast<int>(milliseconds);
  if (milliseconds != 0) on_pause();
}

TEST(OpenSession, LooksEveryHalfSecondAndReportsWhatDidNotCome) {
  on_pause = [] {};
  const int descriptors = support::open_descriptors();
  const auto expect = [&](std::string module, int refused, int looks, const std::string& what) {
    paused_ms = 0;
    const std::string text = printed([&] {
      heap::refuse(refused, false);
      EXPECT_EQ(wipc_open_session(localhost, module.data()), nullptr);
      heap::grant_all();
    });
    EXPECT_TRUE(text.ends_with("Error: Failed to " + what + '\n')) << what << ": " << text;
    EXPECT_EQ(text.find("Error: Timed out") != std::string::npos, looks > 0) << what;
    EXPECT_EQ(paused_ms, 500 * looks) << what;
    EXPECT_EQ(support::open_descriptors(), descriptors) << what;
  };
  wipc_set_connect_timeout(timeout_at_first);
  expect("/bin/true", 0, 1 + 2 * 10, "accept the primary connection");
  wipc_set_nostart(1);
  expect("none", 0, 1 + 2 * 600, "accept the primary connection");
  on_pause = [] {  // a peer comes to the first port only
    const int port = std::atoi(std::strstr(wipc_last_error(), "localhost ") + 10);
    if (paused_ms == 500) platform::closesocket(zelvan::wipc_connect_port(localhost, port));
  };
  expect("none", 0, 1 + 1 + 2 * 600, "accept the secondary connection");
  wipc_set_nostart(0);
  expect("none", 1, 0, "create and bind the primary socket");
  expect("none", 2, 0, "create and bind the secondary socket");
}

TEST(OpenSession, NeedsDescriptorsForTwoPortsAndTwoConnections) {
  const char* const ends[] = {"the primary socket\n", "the secondary socket\n", "open a session\n",
                              "open a session\n", "the secondary module (gone)\n"};
  rlimit usual;
  getrlimit(RLIMIT_NOFILE, &usual);
  for (rlim_t left = 0; left < 5; ++left) {
    closefrom(3);  // so that there are no gaps
    const std::string text = printed([&] {
      const rlimit few = {dup(1) + 1 + left, usual.rlim_max};  // the copy is the highest
      setrlimit(RLIMIT_NOFILE, &few);
      EXPECT_EQ(wipc_open_session(localhost, std::string("gone").data()), nullptr);
      setrlimit(RLIMIT_NOFILE, &usual);
    });
    EXPECT_TRUE(text.ends_with(ends[left])) << left << " are left: " << text;
  }
  EXPECT_TRUE(std::string(wipc_last_error()).starts_with("Starting secondary: \"gone\""));
}

TEST(OpenConnection, WantsAModuleOnThisMachine) {
  zelvan::wipc_release_bind_sessions();
  const int descriptors = support::open_descriptors();
  const auto expect = [&](const char* path, const char* module, bool opens, const char* why) {
    support::set_environment("PATH", path);
    EXPECT_EQ(open_connection("localhost", module), opens) << why;
    EXPECT_EQ(support::open_descriptors(), descriptors + (opens ? 2 : 0)) << why;
  };
  expect(".:/bin:", "sh", true, "on the path, which a colon may end");
  expect(":/bin", "sh", false, "a colon at the start is part of the first name");
  expect(nullptr, "sh", false, "no path");
  expect(nullptr, "/bin/sh", true, "an absolute path");
  expect("/bin", "/sh", false, "an absolute path to nothing");
  EXPECT_STREQ(wipc_last_error(), "Error: Invalid secondary path /sh\n");
  EXPECT_EQ(open_connection("127.0.0.1", "/sh"), 1) << "the module is on another machine";
  EXPECT_EQ(open_connection(own_name, "/sh"), 0) << "this machine, by its name";
}

TEST(Connections, WantHostModulePortsAndPlacesForResults) {
  char none[] = "", module[] = "/bin/sh", *own;
  int first, second, local;
  const std::string text = printed([&] {
    EXPECT_EQ(wipc_open_session(none, module), nullptr);
    EXPECT_EQ(wipc_open_session(localhost, nullptr), nullptr);
    EXPECT_EQ(wipc_open_session(localhost, std::string(1024, 'a').data()), nullptr) << "too long";
    EXPECT_EQ(wipc_open_connection(nullptr, module, &own, &first, &second, &local), 0);
    EXPECT_EQ(wipc_open_connection(localhost, none, &own, &first, &second, &local), 0);
    EXPECT_EQ(wipc_open_connection(localhost, module, nullptr, &first, &second, &local), 0);
    EXPECT_EQ(wipc_open_connection(localhost, module, &own, nullptr, &second, &local), 0);
    EXPECT_EQ(wipc_open_connection(localhost, module, &own, &first, nullptr, &local), 0);
    EXPECT_EQ(wipc_open_connection(localhost, module, &own, &first, &second, nullptr), 0);
    EXPECT_EQ(open_connection(std::string(300, 'a'), "/bin/sh"), 0) << "no host";
    EXPECT_NE(zelvan::wipc_bind_primary, nullptr) << "the connection is pending all the same";
    paused_ms = 0;
    EXPECT_EQ(wipc_connect_session(none, 1, 1), nullptr);
    EXPECT_EQ(wipc_connect_session(localhost, 0, 1), nullptr);
    EXPECT_EQ(wipc_connect_session(localhost, 1, -1), nullptr);
  });
  // Opening a session also prints its arguments; the message on the long host lacks its line end.
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 15) << text;
  EXPECT_NE(text.find("Error: Invalid host aaa"), std::string::npos) << text;
  EXPECT_EQ(paused_ms, 0) << "no port is tried";
}

TEST(AcceptConnection, CanBeRepeatedUntilBothConnectionsCome) {
  std::vector<int> peers;
  peers.reserve(2);
  heap::refuse(0, false);
  ASSERT_EQ(open_connection("127.0.0.1", "/none"), 1);
  wipc_set_connect_timeout(1);
  EXPECT_EQ(wipc_accept_connection(), nullptr) << "nobody came";
  on_pause = [&] { peers.push_back(zelvan::wipc_connect_port(localhost, ports[peers.size()])); };
  void* session = wipc_accept_connection();
  ASSERT_NE(session, nullptr);
  send(peers[0], "one\0two", 7, 0);
  EXPECT_EQ(wipc_read(session, std::string(9, '~').data(), 9), 3);
  send(peers[0], "Acknowledge", 11, 0);
  wipc_close_session(session);
  heap::grant_all();
  EXPECT_EQ(heap::blocks_left(), 0) << "records and queued messages are released";
  EXPECT_EQ(arrived(peers[0]), "SessionClosed");
  EXPECT_NE(printed([] { EXPECT_EQ(wipc_accept_connection(), nullptr); }), "") << "not pending";
}

TEST(SetLocalSessionsOnly, OpensPortsOnTheLoopbackAndClosesOtherConnectionsWhileItWaits) {
  // Each peer is the last number of its address and the index of a port.
  using Peers = std::vector<std::pair<std::uint8_t, int>>;
  const auto expect = [](bool is_on, const Peers& connections, const char* why) {
    SCOPED_TRACE(why);
    zelvan_set_local_sessions_only(is_on);
    ASSERT_EQ(open_connection("localhost", "/bin/sh"), 1);
    EXPECT_EQ(std::string(own_name) == "localhost", is_on) << own_name;
    for (const auto* bound : {zelvan::wipc_bind_primary, zelvan::wipc_bind_secondary}) {
      platform::SocketAddress own{};
      platform::getsockname(bound->sid, &own);
      EXPECT_EQ(own.host[0], is_on ? 127 : 0) << "a port's address, 0 is any";
    }
    std::vector<int> peers;
    on_pause = [&] {  // the next peer connects
      if (peers.size() == connections.size()) return;
      const auto& [last, port] = connections[peers.size()];
      peers.push_back(platform::socket());
      platform::bind(peers.back(), {{127, 0, 0, last}, 0});
      platform::connect(peers.back(), {{127, 0, 0, 1}, static_cast<std::uint16_t>(ports[port])});
    };
    void* session = wipc_accept_connection();
    EXPECT_NE(session, nullptr);
    for (std::size_t i = 0; i < peers.size(); ++i) {
      const bool is_closed = platform::select(peers[i]) == 1;
      EXPECT_EQ(is_closed, is_on && i % 2 == 0) << "peer " << i;
      platform::closesocket(peers[i]);
    }
    wipc_close_session(session);
  };
  expect(true, {{2, 0}, {1, 0}, {2, 1}, {1, 1}}, "only 127.0.0.1 is accepted");
  expect(false, {{2, 0}, {2, 1}}, "the first peer on each port is accepted");
}

TEST(ConnectSession, TriesEachPortFiveTimesWithinThreeSeconds) {
  ASSERT_EQ(open_connection("127.0.0.1", "/none"), 1);
  const int descriptors = support::open_descriptors();
  paused_ms = 0;
  on_pause = [] {
    if (paused_ms == 3000) listen(zelvan::wipc_bind_primary->sid, 1);  // before the fifth attempt
  };
  EXPECT_EQ(wipc_connect_session(localhost, ports[0], ports[1]), nullptr);
  EXPECT_EQ(paused_ms, 6000) << "the first port answers the fifth attempt, the second none";
  EXPECT_EQ(support::open_descriptors(), descriptors);
}
