#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/connection.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/refusing_heap.h"
#include "wipc/secondary.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace zelvan;
using std::to_string;
using Pauses = std::vector<std::uint64_t>;

char local[] = "localhost";
char none[] = "/none/at/all";

std::string read_text(void* session) {
  char text[4002] = "";
  wipc_read(session, text, sizeof text);
  return text;
}

/// True once the process has ended, within 5 seconds. To wait for it is the system's, in its time.
bool ends_soon(int process) {
  for (int i = 0; i < 500; ++i) {
    std::string state;
    std::getline(std::ifstream("/proc/" + to_string(process) + "/stat"), state);
    if (state.empty() || state.find(") Z ") != std::string::npos) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

/// Interrupts whatever waits, again and again; 0 ends it.
void rain_signals(int every_microseconds) {
  struct sigaction interrupt {};  // without resuming
  interrupt.sa_handler = [](int) {};
  sigaction(SIGALRM, &interrupt, nullptr);
  const itimerval often{{0, every_microseconds}, {0, every_microseconds}};
  setitimer(ITIMER_REAL, &often, nullptr);
}

TEST(Connection, EchoesEveryLengthFromStartToEnd) {
  rain_signals(3000);
  const long descriptors = open_descriptors();
  void* session = wipc_open_session(local, own_path().data());
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(pauses, Pauses({500, 500}));  // those of the primary
  const int process = std::stoi(read_text(session));
  char text[4002];
  EXPECT_EQ(wipc_read_status(session, text, sizeof text), 5);
  EXPECT_STREQ(text, "ready");
  for (int n = 0; n <= 4001; n = n == 3998 ? 4001 : n + 1) {  // at two lengths the peer reads on
    std::string sent(static_cast<std::size_t>(n), static_cast<char>('a' + n % 26));
    ASSERT_EQ(wipc_write(session, sent.data()), 1);
    if (n > 4000) sent = "Error Maximum message length exceeded";
    std::string echo;
    while (echo.size() < sent.size()) {
      echo += read_text(session);
      ASSERT_NE(echo, "");
    }
    ASSERT_EQ(echo, sent);
  }
  wipc_close_session(session);
  rain_signals(0);
  EXPECT_TRUE(ends_soon(process));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);  // neither child nor zombie
  EXPECT_EQ(open_descriptors(), descriptors);
}

TEST(Connection, SurvivesThatEitherEndIsKilled) {
  void* session = wipc_open_session(local, own_path().data());
  ASSERT_NE(session, nullptr);
  const int secondary = std::stoi(read_text(session));
  char die[] = "die";
  wipc_write(session, die);
  EXPECT_TRUE(ends_soon(secondary));
  EXPECT_EQ(read_text(session), "die");
  EXPECT_EQ(read_text(session), "");
  EXPECT_EQ(wipc_poll_session(session), 1);
  for (int i = 0; i < 3; ++i) EXPECT_LE(wipc_write(session, die), 1);
  EXPECT_EQ(wipc_write(session, die), 0);
  wipc_close_session(session);

  int report[2];
  ASSERT_EQ(pipe(report), 0);
  const pid_t primary = fork();
  if (primary == 0) {
    void* short_lived = wipc_open_session(local, own_path().data());
    const int process = std::stoi(read_text(short_lived));
    _exit(write(report[1], &process, sizeof process) < 0 || raise(SIGKILL));
  }
  int process = 0;
  EXPECT_EQ(read(report[0], &process, sizeof process), static_cast<ssize_t>(sizeof process));
  EXPECT_TRUE(ends_soon(process));
  waitpid(primary, nullptr, 0);
  for (const int end : report) close(end);
}

TEST(Connection, StaysPendingUntilBothStreamsAreThere) {
  const long descriptors = open_descriptors();
  pause_divisor = 100;
  char* host;
  char name[256];
  int primary, secondary, is_local;
  ASSERT_EQ(wipc_open_connection(local, own_path().data(), &host, &primary, &secondary, &is_local),
            1);
  EXPECT_EQ(is_local, 1);
  gethostname(name, sizeof name);
  EXPECT_STREQ(host, name);
  for (const int timeout : {2, 0, -1}) {
    pauses.clear();
    wipc_set_connect_timeout(timeout);
    EXPECT_EQ(wipc_accept_connection(), nullptr);
    EXPECT_EQ(pauses, Pauses(2 * std::max(timeout, 0) + 1, 500));
  }
  const int half = wipc_connect_port("127.0.0.1", primary);
  EXPECT_EQ(wipc_accept_connection(), nullptr);
  char end;
  EXPECT_EQ(platform::recv(half, &end, 1), 0);  // the half that came was closed
  void* far_end = wipc_connect_session(local, primary, secondary);
  void* session = wipc_accept_connection();
  ASSERT_NE(session, nullptr);
  const int sockets[] = {wipc_sid(far_end), wipc_status_sid(far_end), half};
  EXPECT_EQ(wipc_write(far_end, local), 1);  // ends the wait in the close below
  wipc_close_session(far_end);               // closes nothing
  wipc_close_session(session);
  for (const int socket : sockets) EXPECT_EQ(close(socket), 0);
  EXPECT_EQ(open_descriptors(), descriptors);
}

// All that can go wrong, once with debugging off and once on.
TEST(Connection, TellsWhatWentWrongWhenAskedTo) {
  const long descriptors = open_descriptors();
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = 64;
  setrlimit(RLIMIT_NOFILE, &limit);
  pause_divisor = 100;
  char empty[] = "", elsewhere[] = "LOCALHOST", missing[] = "true/", folder[] = "/tmp", text[9];
  std::string long_text(4001, 'x');
  std::string long_path = "/none/" + long_text.substr(3000);
  std::string told, started[2];
  char* host;
  int bound, n, port;
  const int listening = platform::socket();
  platform::listen(listening, 1);
  platform::SocketAddress address{};
  platform::getsockname(listening, &address);
  wipc_session* bind = wipc_create_bind(&bound);
  wipc_session* p = wipc_new_session(listening, 'P');
  wipc_session* s = wipc_new_session(listening, 'S');
  for (const int debug : {0, 1}) {
    wipc_set_debug(debug);
    testing::internal::CaptureStdout();
    for (void* invalid : {static_cast<void*>(nullptr), static_cast<void*>(bind)}) {
      EXPECT_EQ(wipc_sid(invalid) + wipc_status_sid(invalid), -2);
      EXPECT_EQ(wipc_poll_session(invalid) + wipc_write(invalid, local), 0);
      EXPECT_EQ(wipc_read(invalid, nullptr, 9), -1);
      EXPECT_EQ(wipc_read_status(invalid, nullptr, 9), -1);
      EXPECT_EQ(wipc_write_status(invalid, nullptr), 0);
      wipc_close_session(invalid);
    }
    EXPECT_EQ(wipc_write_status(p, local) + wipc_read_status(s, text, 9) + wipc_write(p, nullptr),
              0);
    EXPECT_EQ(wipc_read(p, nullptr, 9) + wipc_read(s, text, 0), 0);
    EXPECT_EQ(wipc_read_status(s, nullptr, 9) + wipc_read_status(p, text, -1), 0);
    EXPECT_EQ(wipc_write_status(p, nullptr), 0);
    EXPECT_EQ(wipc_write_status(s, long_text.data()), 0);
    EXPECT_EQ(wipc_write_status(s, local), 0);
    EXPECT_EQ(wipc_poll_socket(0) + wipc_check_sockets(-1) + wipc_check_sockets(64), 0);
    EXPECT_EQ(wipc_check_sockets(8) + wipc_check_sockets(0), 2);
    EXPECT_EQ(wipc_wait_accept(0) + wipc_wait_accept(1), -2);
    EXPECT_EQ(wipc_accept_connection(), nullptr);
    EXPECT_EQ(wipc_open_connection(empty, none, &host, &port, &port, &n), 0);
    EXPECT_EQ(wipc_open_connection(local, empty, &host, &port, &port, &n), 0);
    EXPECT_EQ(wipc_open_connection(local, none, &host, &port, nullptr, &n), 0);
    EXPECT_EQ(wipc_open_connection(local, none, &host, &port, &port, &n), 0);
    EXPECT_EQ(wipc_open_connection(local, missing, &host, &port, &port, &n), 0);
    EXPECT_EQ(wipc_open_connection(local, local, &host, &port, &port, &n), 0);
    EXPECT_EQ(wipc_bind_primary, nullptr);
    EXPECT_EQ(wipc_open_connection(long_text.data(), none, &host, &port, &port, &n), 0);
    EXPECT_NE(wipc_bind_primary, nullptr);
    EXPECT_EQ(wipc_open_connection(elsewhere, none, &host, &port, &port, &n), 1);
    EXPECT_EQ(n, 0);
    EXPECT_EQ(wipc_connect_session(empty, 1, 1), nullptr);
    EXPECT_EQ(wipc_connect_session(local, 7, 0), nullptr);
    pauses.clear();
    EXPECT_EQ(wipc_connect_session(local, bound, 7), nullptr);
    EXPECT_EQ(pauses, Pauses({200, 400, 800, 1600}));  // between five attempts
    EXPECT_EQ(wipc_connect_session(local, platform::ntohs(address.port), bound), nullptr);
    EXPECT_EQ(wipc_open_session(empty, local), nullptr);
    EXPECT_EQ(wipc_open_session(local, empty), nullptr);
    EXPECT_EQ(wipc_open_session(local, long_path.data()), nullptr);
    EXPECT_EQ(wipc_open_session(local, folder), nullptr);
    started[0] = wipc_last_error();
    wipc_set_nostart(debug);
    EXPECT_EQ(std::exchange(wipc_connect_timeout, 0), 600);
    wipc_nostart = 1;
    EXPECT_EQ(wipc_open_session(local, local), nullptr);
    started[1] = wipc_last_error();
    wipc_nostart = 0;
    wipc_release_bind_sessions();
    std::fflush(stdout);
    told = testing::internal::GetCapturedStdout();
    EXPECT_EQ(told.empty(), debug == 0);
  }
  EXPECT_EQ(started[0].find("Starting secondary: \"/tmp\" localhost "), 0u);
  EXPECT_EQ(sscanf(started[1].data(), "Starting secondary: \"localhost\" localhost %d %d %d", &port,
                   &port, &n),
            3);
  EXPECT_EQ(n, getpid());
  std::string expected = R"(Error: Could not read socket for invalid session
Error: Cannot read status message from an invalid session
Error: Cannot write status message to an invalid session
Error: Could not read socket for invalid session
Error: Cannot read status message from an invalid session
Error: Cannot write status message to an invalid session
Error: Could not read socket for invalid buffer
Error: Could not read socket for invalid buffer
Error: Cannot read status message from an invalid buffer
Error: Cannot read status message from an invalid buffer
Error: Cannot write invalid status message
Error: The status message cannot be written because it has exceeded the maximum length
Error: Cannot send status message
Polling invalid session/socket ID (0)
Error: Invalid number of sockets to check (-1)
Error: Could not listen on the socket
Error: bind session are null when attempting to accept the connection.
Error: Cannot open connection because of an invalid secondary host
Error: Cannot open connection because of an invalid secondary module
Error: Cannot open connection because of invalid paramters
Error: Invalid secondary path /none/at/all
Error: Invalid secondary path true/
@Error: Connect session failed because no host was specified
Error: Connect session failed because of invalid port(s) (7 and 0)
Error: Connect session failed because the primary port failed to connect (@)
Error: Connect session failed because the secondary port failed to connect (@)
ipc_open_session  localhost
Error: Cannot open session because of an invalid hostname
ipc_open_session localhost @
Error: Cannot open session because of an invalid module name
ipc_open_session localhost @
Error: Failed to start the secondary module (@)
ipc_open_session localhost /tmp
@
Error: Failed to start the secondary module (/tmp)
ipc_open_session localhost localhost
@
Error: Timed out while attempting@to accept connection
Error: Failed to accept the primary connection
)";
  for (const std::string& part :
       {"Error: Invalid host " + long_text.substr(0, 235), to_string(bound), to_string(bound),
        std::string(), long_path, long_path, started[0], started[1], std::string("\t")}) {
    expected.replace(expected.find('@'), 1, part);
  }
  EXPECT_EQ(told, expected);
  release_session(p);
  release_session(s);
  release_bind_session(bind);
  close(listening);
  EXPECT_EQ(open_descriptors(), descriptors);
}

TEST(Connection, FindsModulesAlongThePath) {
  const std::string rows[][3] = {{"/none:/bin:/", "sh", "/bin/sh"},
                                 {"/bin/", "sh", "/bin//sh"},
                                 {":/bin", "sh", ""},
                                 {"::/bin", "sh", "/bin/sh"},
                                 {"/none::/bin", "sh", ""},
                                 {"", "sh", ""},
                                 {"/none:::/bin", "sh", "/bin/sh"},
                                 {"/none:", "sh", ""},
                                 {"/none", "a/b", "a/b"},
                                 {"/none", "//", "//"},
                                 {"/bin", "/sh", "/bin//sh"}};
  for (const auto& [path, module, expected] : rows) {
    setenv("PATH", path.c_str(), 1);
    char* found = wipc_find_module(module.c_str());
    EXPECT_EQ(found != nullptr ? found : "", expected) << path << ' ' << module;
    std::free(found);
  }
  unsetenv("PATH");
  EXPECT_EQ(wipc_find_module("sh"), nullptr);
  setenv("PATH", "/bin", 1);
  const long descriptors = open_descriptors();
  char module[] = "sh";
  char* host;
  int port;
  int result;
  EXPECT_EQ(support::refuse_each_request(
                [&] { result = wipc_open_connection(local, module, &host, &port, &port, &port); },
                [&](bool refused) {
                  EXPECT_EQ(result, !refused);
                  wipc_release_bind_sessions();
                  EXPECT_EQ(open_descriptors(), descriptors);
                }),
            5);
}

}  // namespace
