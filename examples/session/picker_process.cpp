#include "session/picker_process.h"

#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/session.h>

#include "common/error.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace example {

namespace {

char localhost[] = "localhost";

pid_t start(const std::string& module, int primary_port, int secondary_port) {
  std::string arguments[] = {module, localhost, std::to_string(primary_port),
                             std::to_string(secondary_port), std::to_string(getpid())};
  char* argv[std::size(arguments) + 1] = {};
  for (std::size_t i = 0; i < std::size(arguments); ++i) argv[i] = arguments[i].data();
  posix_spawnattr_t own_group;  // so that Ctrl-C in the terminal reaches this program alone
  posix_spawnattr_init(&own_group);
  posix_spawnattr_setflags(&own_group, POSIX_SPAWN_SETPGROUP);
  pid_t started = 0;
  const int error = posix_spawn(&started, argv[0], nullptr, &own_group, argv, environ);
  posix_spawnattr_destroy(&own_group);
  if (error != 0) {
    throw Error(module + ": " + std::strerror(error));
  }
  return started;
}

}  // namespace

PickerProcess::PickerProcess(const Options& options) {
  std::string module = options.module;
  if (options.host.empty()) {
    zelvan_set_local_sessions_only(1);
    session_ = wipc_open_session(localhost, module.data());
    if (session_ == nullptr)
      throw Error(module +
                  ": can't be started, or has not connected in time; is it a session_picker?");
  } else {
    open_in_two_steps(options);
  }
}

void PickerProcess::open_in_two_steps(const Options& options) {
  std::string host = options.host;
  std::string module = options.module;
  char* local_host = nullptr;
  int primary_port = 0;
  int secondary_port = 0;
  int is_local = 0;
  if (wipc_open_connection(host.data(), module.data(), &local_host, &primary_port, &secondary_port,
                           &is_local) == 0) {
    throw Error(host + ": no such machine, or no program " + module + " on it");
  }
  if (is_local != 0) {
    if (options.shows_wire) {
      tap_.emplace(primary_port, secondary_port);
      primary_port = tap_->data_port();
      secondary_port = tap_->status_port();
    }
    started_ = start(module, primary_port, secondary_port);
  } else {
    constexpr int minutes = 10;  // a person has to start it there
    wipc_set_connect_timeout(60 * minutes);
    std::printf("run on %s: session_picker %s %d %d %d\n", host.c_str(), local_host, primary_port,
                secondary_port, static_cast<int>(getpid()));
    std::fflush(stdout);
    std::fprintf(stderr, "session: waiting up to %d minutes for it; Ctrl-C ends this\n", minutes);
  }
  session_ = wipc_accept_connection();
  if (session_ != nullptr) return;
  tap_.reset();
  if (started_ != 0) {
    kill(started_, SIGTERM);
    wait_for_end();
  }
  if (is_local == 0) throw Error(host + ": no picker has connected from there in time");
  throw Error(module + ": has not connected in time; is it a session_picker?");
}

PickerProcess::~PickerProcess() {
  wipc_close_session(session_);
  if (started_ != 0) wait_for_end();
}

void PickerProcess::wait_for_end() {
  while (waitpid(started_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace example
