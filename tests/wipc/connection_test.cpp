#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/connection.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/refusing_heap.h"
#include "wipc/secondary.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>
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

int connect_to(int port) {
  platform::SocketAddress address{{127, 0, 0, 1},
                                  platform::htons(static_cast<unsigned short>(port))};
  const int socket = platform::socket();
  EXPECT_EQ(platform::connect(socket, address), 0);
  return socket;
}

/// What a step printed; the pauses that it makes are counted and hardly take time.
template <typename Step>
std::string told_by(Step step) {
  pauses.clear();
  pause_divisor = 100;
  wipc_set_debug(1);
  testing::internal::CaptureStdout();
  step();
  std::fflush(stdout);
  wipc_set_debug(0);
  pause_divisor = 1;
  return testing::internal::GetCapturedStdout();
}

/// Interrupts whatever waits, all the time.
class SignalRain {
 public:
  SignalRain() {
    struct sigaction interrupt {};  // without resuming
    interrupt.sa_handler = [](int) {};
    sigaction(SIGALRM, &interrupt, nullptr);
    set(3000);
  }
  ~SignalRain() { set(0); }

 private:
  static void set(int microseconds) {
    const itimerval often{{0, microseconds}, {0, microseconds}};
    setitimer(ITIMER_REAL, &often, nullptr);
  }
};

TEST(Connection, EchoesEveryLengthFromStartToEnd) {
  const SignalRain rain;
  const int descriptors = open_descriptors();
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
    while (echo.size() < sent.size()) echo += read_text(session);
    ASSERT_EQ(echo, sent);
  }
  wipc_close_session(session);
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
  const int descriptors = open_descriptors();
  char* host = nullptr;
  int primary = 0;
  int secondary = 0;
  int is_local = 0;
  wipc_set_connect_timeout(2);
  EXPECT_EQ(wipc_open_connection(local, local, &host, &primary, &secondary, &is_local), 0);
  EXPECT_EQ(told_by([] { EXPECT_EQ(wipc_accept_connection(), nullptr); }),
            "Error: bind session are null when attempting to accept the connection.\n");
  ASSERT_EQ(wipc_open_connection(local, own_path().data(), &host, &primary, &secondary, &is_local),
            1);
  EXPECT_EQ(is_local, 1);
  EXPECT_EQ(host, wipc_local_host);
  char name[256];
  gethostname(name, sizeof name);
  EXPECT_STREQ(host, name);
  const char timed_out[] = "Error: Timed out while attempting\tto accept connection\n";
  EXPECT_EQ(told_by([] { EXPECT_EQ(wipc_accept_connection(), nullptr); }), timed_out);
  EXPECT_EQ(pauses, Pauses(5, 500));
  wipc_set_connect_timeout(-1);
  const int half = connect_to(primary);
  EXPECT_EQ(told_by([] { EXPECT_EQ(wipc_accept_connection(), nullptr); }), timed_out);
  EXPECT_EQ(pauses, Pauses(1, 500));
  char end;
  EXPECT_EQ(platform::recv(half, &end, 1), 0);  // the half that came was closed
  void* far_end = wipc_connect_session(local, primary, secondary);
  void* session = wipc_accept_connection();
  ASSERT_NE(session, nullptr);
  EXPECT_EQ(wipc_bind_primary, nullptr);
  EXPECT_EQ(wipc_bind_secondary, nullptr);
  const int sockets[] = {wipc_sid(far_end), wipc_status_sid(far_end), half};
  EXPECT_EQ(wipc_write(far_end, local), 1);  // ends the wait in the close below
  wipc_close_session(far_end);               // closes nothing
  wipc_close_session(session);
  for (const int socket : sockets) EXPECT_EQ(close(socket), 0);
  EXPECT_EQ(open_descriptors(), descriptors);
  wipc_set_connect_timeout(10);
}

TEST(Connection, TellsWhyItCannotBeMade) {
  const int descriptors = open_descriptors();
  char empty[] = "";
  char elsewhere[] = "LOCALHOST";
  std::string long_name(2000, 'x');
  char* host;
  int port;
  const auto opens = [&](char* name, char* module, int result, int* is_local) {
    return told_by([&] {
      EXPECT_EQ(wipc_open_connection(name, module, &host, &port, &port, is_local), result);
    });
  };
  EXPECT_EQ(opens(nullptr, nullptr, 0, nullptr) + opens(empty, none, 0, &port) +
                opens(local, empty, 0, &port) + opens(local, nullptr, 0, nullptr) +
                opens(local, none, 0, nullptr),
            "Error: Cannot open connection because of an invalid secondary host\n"
            "Error: Cannot open connection because of an invalid secondary host\n"
            "Error: Cannot open connection because of an invalid secondary module\n"
            "Error: Cannot open connection because of an invalid secondary module\n"
            "Error: Cannot open connection because of invalid paramters\n");
  EXPECT_STREQ(wipc_last_error(), "");
  const std::string cut = "Error: Invalid host " + long_name.substr(0, 255 - 20);
  EXPECT_EQ(opens(long_name.data(), none, 0, &port), cut);
  EXPECT_EQ(wipc_last_error(), cut);
  EXPECT_NE(wipc_bind_secondary, nullptr);  // it stays
  EXPECT_EQ(opens(elsewhere, none, 1, &port), "");
  EXPECT_EQ(port, 0);  // not local, so the module isn't looked at
  EXPECT_EQ(opens(local, none, 0, &port), "Error: Invalid secondary path /none/at/all\n");
  EXPECT_STREQ(wipc_last_error(), "Error: Invalid secondary path /none/at/all\n");
  EXPECT_EQ(opens(local, local, 0, &port), "");
  EXPECT_EQ(wipc_bind_primary, nullptr);
  EXPECT_EQ(wipc_bind_secondary, nullptr);

  const auto connects = [](char* name, int first, int second) {
    return told_by([&] { EXPECT_EQ(wipc_connect_session(name, first, second), nullptr); });
  };
  wipc_session* bound = wipc_create_bind(&port);
  EXPECT_EQ(connects(nullptr, 1, 1) + connects(empty, 1, 1) + connects(local, 0, 7) +
                connects(local, 7, -1),
            "Error: Connect session failed because no host was specified\n"
            "Error: Connect session failed because no host was specified\n"
            "Error: Connect session failed because of invalid port(s) (0 and 7)\n"
            "Error: Connect session failed because of invalid port(s) (7 and -1)\n");
  const std::string failed = "Error: Connect session failed because the ";
  const std::string to_connect = " port failed to connect (" + to_string(port) + ")\n";
  EXPECT_EQ(connects(local, port, 7), failed + "primary" + to_connect);
  EXPECT_EQ(pauses, Pauses({200, 400, 800, 1600}));  // between five attempts
  platform::SocketAddress open{};
  const int listening = platform::socket();
  platform::listen(listening, 1);
  platform::getsockname(listening, &open);
  EXPECT_EQ(connects(local, platform::ntohs(open.port), port), failed + "secondary" + to_connect);
  platform::closesocket(listening);
  release_bind_session(bound);
  EXPECT_EQ(open_descriptors(), descriptors);
}

TEST(Connection, TellsWhyTheSecondaryIsNotThere) {
  const int descriptors = open_descriptors();
  std::string module = "/none/" + std::string(1000, 'x');
  wipc_set_connect_timeout(0);
  const auto opens = [&](char* host, const char* name) {
    return told_by([&] { EXPECT_EQ(wipc_open_session(host, const_cast<char*>(name)), nullptr); });
  };
  EXPECT_EQ(opens(nullptr, "m") + opens(local, ""),
            "ipc_open_session (null) m\n"
            "Error: Cannot open session because of an invalid hostname\n"
            "ipc_open_session localhost \n"
            "Error: Cannot open session because of an invalid module name\n");
  EXPECT_EQ(opens(local, module.c_str()),  // refused: it would have to be cut
            "ipc_open_session localhost " + module +
                "\nError: Failed to start the secondary module (" + module + ")\n");
  const std::string before = wipc_last_error();
  for (const char* program : {"/none/at/all", "/tmp", "/etc/passwd"}) {
    const std::string told = opens(local, program);
    const std::string line = "Starting secondary: \"" + std::string(program) + "\" localhost ";
    EXPECT_EQ(std::string(wipc_last_error()).substr(0, line.size()), line);
    EXPECT_EQ(told, "ipc_open_session localhost " + std::string(program) + "\n" +
                        wipc_last_error() + "\nError: Failed to start the secondary module (" +
                        program + ")\n");
    EXPECT_EQ(std::string(wipc_last_error()).find("Starting"), 0u);
    EXPECT_NE(told.find(' ' + to_string(getpid()) + '\n'), std::string::npos);
    EXPECT_EQ(pauses, Pauses());
  }
  wipc_set_nostart(0);
  EXPECT_EQ(wipc_connect_timeout, 600);
  wipc_set_connect_timeout(0);
  EXPECT_EQ(opens(local, "true"),
            "ipc_open_session localhost true\n"
            "Error: Timed out while attempting\tto accept connection\n"
            "Error: Failed to accept the primary connection\n");
  wipc_set_nostart(1);
  wipc_set_connect_timeout(0);
  const std::string told = opens(local, "true");
  EXPECT_EQ(told, "ipc_open_session localhost true\n" + std::string(wipc_last_error()) +
                      "\nError: Timed out while attempting\tto accept connection\n"
                      "Error: Failed to accept the primary connection\n");
  wipc_set_nostart(0);
  wipc_set_connect_timeout(10);
  EXPECT_EQ(open_descriptors(), descriptors);
}

TEST(Connection, FindsModulesAlongThePath) {
  const struct {
    const char* path;
    const char* module;
    const char* found;
  } rows[] = {
      {"/none:/bin:/", "sh", "/bin/sh"},
      {"/bin/", "sh", "/bin//sh"},
      {":/bin", "sh", nullptr},
      {"::/bin", "sh", "/bin/sh"},
      {"/none::/bin", "sh", nullptr},
      {"/none:::/bin", "sh", "/bin/sh"},
      {"/none:", "sh", nullptr},
      {"", "sh", nullptr},
      {nullptr, "sh", nullptr},
      {"/none", "a/b", "a/b"},
      {"/none", "//", "//"},
      {"/bin", "/sh", "/bin//sh"},
  };
  for (const auto& row : rows) {
    row.path != nullptr ? setenv("PATH", row.path, 1) : unsetenv("PATH");
    char* found = wipc_find_module(row.module);
    EXPECT_EQ(std::string(found ? found : "null"), row.found ? row.found : "null") << row.module;
    std::free(found);
  }
  setenv("PATH", "/bin", 1);
  const int descriptors = open_descriptors();
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
