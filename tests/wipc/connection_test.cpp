#include <zelvan/platform/clock.h>
#include <zelvan/wipc/detail/connection.h>

#include "wipc/scripted_peer.h"

#include <support/system.h>

// What happens in a pause, which is over at once, and how long all of them would have been.
static std::function<void()> on_pause = [] {};
static int paused_ms;

static char localhost[] = "localhost", program[] = "/bin/true", *own_name;
static int ports[2], is_local;

static int open_connection(std::string host, std::string module) {
  on_pause = [] {};
  return wipc_open_connection(host.data(), module.data(), &own_name, &ports[0], &ports[1],
                              &is_local);
}

void zelvan::platform::GetLocalTime(LocalTime*) {}
void zelvan::platform::Sleep(std::uint64_t milliseconds) {
  paused_ms += static_cast<int>(milliseconds);
  on_pause();
}

TEST(OpenSession, LooksEveryHalfSecondAndReportsWhatDidNotCome) {
  const struct {
    void (*set)(int);
    int value;
    int looks;
    std::string error;
  } rows[] = {
      {wipc_set_connect_timeout, 10, 21, "accept the primary connection\n"},
      {wipc_set_connect_timeout, 0, 1, "accept the primary connection\n"},
      {wipc_set_nostart, -1, 1201, "accept the primary connection\n"},
      {wipc_set_nostart, 0, 1201, "accept the primary connection\n"},
      {[](int letter) { program[0] = letter; }, 'x', 0, "start the secondary module (xbin/true)\n"},
  };
  wipc_set_debug(1);
  const int descriptors = support::open_descriptors();
  for (const auto& row : rows) {
    row.set(row.value);
    paused_ms = 0;
    testing::internal::CaptureStdout();
    EXPECT_EQ(wipc_open_session(localhost, program), nullptr);
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(text.ends_with("Error: Failed to " + row.error)) << row.error << text;
    EXPECT_EQ(paused_ms, 500 * row.looks) << row.error << row.value;
    EXPECT_EQ(support::open_descriptors(), descriptors) << row.error << row.value;
  }
}

TEST(OpenConnection, WantsAModuleOnThisMachine) {
  const struct {
    const char* why;
    const char* path;
    const char* module;
    bool opens;
  } rows[] = {
      {"on the path, which a colon may end", "/none:/bin:", "sh", true},
      {"an entry's first colon belongs to it", ":/bin", "sh", false},
      {"an absolute path", nullptr, "/bin/sh", true},
      {"a relative path is not looked for along it", "/", "bin/sh", false},
      {"no path", nullptr, "sh", false},
      {"an absolute path to nothing", "/bin", "/sh", false},
  };
  const int descriptors = support::open_descriptors();
  for (const auto& row : rows) {
    support::set_environment("PATH", row.path);
    EXPECT_EQ(open_connection("localhost", row.module), row.opens) << row.why;
    EXPECT_EQ(support::open_descriptors(), descriptors + (row.opens ? 2 : 0)) << row.why;
  }
  EXPECT_STREQ(wipc_last_error(), "Error: Invalid secondary path /sh\n");
  EXPECT_EQ(is_local, 1);
  EXPECT_EQ(open_connection("127.0.0.1", "/sh"), 1) << "the module is on another machine";
  EXPECT_EQ(is_local, 0);
}

TEST(AcceptConnection, CanBeRepeatedUntilBothConnectionsCome) {
  ASSERT_EQ(open_connection("127.0.0.1", "/none"), 1);
  wipc_set_connect_timeout(1);
  EXPECT_EQ(wipc_accept_connection(), nullptr) << "nobody came";
  std::vector<int> peers;
  on_pause = [&] { peers.push_back(zelvan::wipc_connect_port(localhost, ports[peers.size()])); };
  void* session = wipc_accept_connection();
  ASSERT_NE(session, nullptr);
  send(peers[0], "Acknowledge", 11, 0);
  wipc_close_session(session);
  EXPECT_EQ(arrived(peers[0]), "SessionClosed");
  EXPECT_EQ(wipc_accept_connection(), nullptr) << "it is not pending any more";
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
  zelvan::wipc_release_bind_sessions();
}

TEST(CloseSession, NeitherTellsThePrimaryNorClosesSocketsAtTheSecondary) {
  ScriptedPeer peer('S');
  wipc_close_session(std::exchange(peer.session, nullptr));
  EXPECT_EQ(arrived(peer.data[1]), "");
  EXPECT_EQ(send(peer.data[1], "x", 1, MSG_NOSIGNAL), 1) << "the socket stays open";
}

TEST(NullArguments, AreRefused) {
  char text[] = "text";
  EXPECT_EQ(wipc_open_session(nullptr, program), nullptr);
  EXPECT_EQ(wipc_open_session(localhost, nullptr), nullptr);
  EXPECT_EQ(wipc_open_connection(nullptr, program, &own_name, ports, ports, ports), 0);
  EXPECT_EQ(wipc_open_connection(localhost, nullptr, &own_name, ports, ports, ports), 0);
  EXPECT_EQ(wipc_connect_session(nullptr, 1, 1), nullptr);
  EXPECT_EQ(wipc_connect_session(localhost, 0, 1), nullptr);
  EXPECT_EQ(wipc_connect_session(localhost, 1, 0), nullptr);
  wipc_close_session(nullptr);
  EXPECT_EQ(wipc_sid(nullptr), -1);
  EXPECT_EQ(wipc_status_sid(nullptr), -1);
  EXPECT_EQ(wipc_poll_session(nullptr), 0);
  EXPECT_EQ(wipc_write(nullptr, text), 0);
  EXPECT_EQ(wipc_write_status(nullptr, text), 0);
  EXPECT_EQ(wipc_read(nullptr, text, 4), -1);
  EXPECT_EQ(wipc_read_status(nullptr, text, 4), -1);
}
