#include <zelvan/detail/heap_text.h>
#include <zelvan/platform/clock.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/processes.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/connection.h>
#include <zelvan/wipc/detail/owners.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/detail/words.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace zelvan {
namespace {

constexpr std::uint64_t look_again_ms = 500;
// The pauses before the attempts to connect. The first are short, so that a peer that is about to
// listen is found soon. Together they last much longer than half a second, by which the listening
// side can be late.
constexpr std::uint64_t pauses_ms[] = {0, 200, 400, 800, 1600};

// Room for the answer to `end_of_session` and for texts sent before it. If a socket is closed with
// unread data, the peer can lose data that is on its way to it.
constexpr int answer_size = 1599;

// The host name for a secondary on this machine while other machines are kept out.
char loopback_name[] = "localhost";

constexpr int exists = 0;  // mode of `_access`

bool is_empty(const char* text) { return text == nullptr || text[0] == '\0'; }

/// Returns whether an attempt to accept a connection ends the wait. While other machines are kept
/// out, only a connection from this machine does. A failed attempt does not: on some systems
/// `accept` fails if the peer has already left, so another machine could end the wait.
bool ends_wait(int socket) {
  if (keeps_machines_out == 0) return true;
  platform::SocketAddress peer{};
  if (platform::getpeername(socket, &peer) != 0) return false;
  return std::memcmp(peer.host, platform::loopback.host, sizeof peer.host) == 0;
}

/// Creates a session that takes over both connections. Returns null if the heap refuses; the caller
/// then still owns the connections.
wipc_session* session_over(OwnedSocket& data, OwnedSocket& status, char session_type) {
  wipc_session* session = wipc_new_session(data.get(), session_type);
  if (session == nullptr) return nullptr;
  data.pass_on();
  session->status_sid = status.pass_on();
  return session;
}

/// Starts the secondary; with `wipc_nostart` set, only reports how to start it. Returns 1 if it was
/// started or `wipc_nostart` is set. Stores the command line as the last error if the program can't
/// be started or `wipc_nostart` is set. Returns 0 without a text if a port is not above 0 or the
/// line has 1024 bytes or more.
int start_secondary(const char* host, const char* module, int primary_port, int secondary_port) {
  if (primary_port <= 0 || secondary_port <= 0) {
    wipc_print("Error: Cannot start the secondary since the ports are invalid (%d and %d)\n",
               primary_port, secondary_port);
    return 0;
  }
  char line[1024];
  const int length = std::snprintf(line, sizeof line, "\"%s\" %s %d %d %d", module, host,
                                   primary_port, secondary_port, platform::_getpid());
  if (static_cast<unsigned>(length) >= sizeof line) return 0;  // negative: too long for an `int`
  if (wipc_nostart == 0 && platform::CreateProcessA(line) != 0) return 1;
  set_error_text("Starting secondary: %s", line);
  wipc_print("Starting secondary: %s\n", line);
  return wipc_nostart != 0;
}

/// Returns the path of a program; null if it isn't found or the heap refuses. A name with a `/`
/// after its first character is returned unchanged; any other is searched along "PATH".
HeapText wipc_find_module(const char* module) {
  if (std::strchr(module + 1, '/') != nullptr) return heap_copy(module);
  const char* variable = std::getenv("PATH");
  std::string_view path = variable != nullptr ? variable : "";
  const std::size_t size = path.size() + std::strlen(module) + 2;
  HeapText candidate(static_cast<char*>(std::malloc(size)));
  if (candidate == nullptr) return nullptr;
  while (!path.empty()) {
    // An entry of PATH has at least one character, so a colon at its start is part of it.
    const std::string_view entry = path.substr(0, path.find(':', 1));
    std::snprintf(candidate.get(), size, "%.*s/%s", static_cast<int>(entry.size()), entry.data(),
                  module);
    if (platform::_access(candidate.get(), exists) == 0) return candidate;
    if (entry.size() == path.size()) break;
    path.remove_prefix(entry.size() + 1);
  }
  return nullptr;
}

/// Returns whether the module exists on this machine. If it is named by a path and there is no such
/// file, sets the last error; a bare name that is not found along PATH sets none.
bool has_module(const char* module) {
  const HeapText path = module[0] == '/' ? heap_copy(module) : wipc_find_module(module);
  if (path == nullptr) return false;
  if (platform::_access(path.get(), exists) == 0) return true;
  set_error_text("Error: Invalid secondary path %s\n", module);
  wipc_print("%s", wipc_error_text);
  return false;
}

/// Stores the listening sockets of the data and of the status connection, until
/// `wipc_accept_connection` uses them.
void make_pending(BindSession primary, BindSession secondary) {
  wipc_bind_primary = primary.release();
  wipc_bind_secondary = secondary.release();
}

/// Listens, and polls every half second for a connection until the connect time-out. Returns the
/// connection, or -1. The listening socket stays open.
///
/// Each poll accepts at most one connection, and closes it if it comes from a machine that is kept
/// out. A failed `accept` returns -1 at once, except while other machines are kept out: then
/// polling continues.
int wipc_wait_accept(int socket) {
  if (socket <= 0) return -1;
  if (platform::listen(socket, 1) != 0) {
    wipc_print("Error: Could not listen on the socket\n");
    return -1;
  }
  std::int64_t looks = 0;
  do {
    if (platform::select(socket) > 0) {
      OwnedSocket peer(platform::accept(socket));
      if (ends_wait(peer.get())) return peer.pass_on();
    }
    platform::Sleep(look_again_ms);
  } while (looks++ < 2 * std::int64_t{wipc_connect_timeout});
  wipc_print("Error: Timed out while attempting\tto accept connection\n");
  return -1;
}

}  // namespace

int wipc_connect_port(const char* host, int port) {
  platform::SocketAddress address{};
  if (platform::gethostbyname(host, &address) == 0) return -1;
  address.port = static_cast<std::uint16_t>(port);
  for (const std::uint64_t pause_ms : pauses_ms) {
    platform::Sleep(pause_ms);
    OwnedSocket socket(platform::socket());
    if (!socket.is_open()) return -1;
    if (platform::connect(socket.get(), address) == 0) return socket.pass_on();
  }
  return -1;
}

}  // namespace zelvan

using namespace zelvan;

void* wipc_open_session(char* host, char* module) {
  wipc_print("ipc_open_session %s %s\n", host != nullptr ? host : "(null)",
             module != nullptr ? module : "(null)");
  if (is_empty(host)) {
    wipc_print("Error: Cannot open session because of an invalid hostname\n");
    return nullptr;
  }
  if (is_empty(module)) {
    wipc_print("Error: Cannot open session because of an invalid module name\n");
    return nullptr;
  }
  int primary_port = 0;
  int secondary_port = 0;
  const BindSession primary(wipc_create_bind(&primary_port));
  if (primary == nullptr) {
    wipc_print("Error: Failed to create and bind the primary socket\n");
    return nullptr;
  }
  const BindSession secondary(wipc_create_bind(&secondary_port));
  if (secondary == nullptr) {
    wipc_print("Error: Failed to create and bind the secondary socket\n");
    return nullptr;
  }
  if (wipc_check_sockets(2) == 0) {
    wipc_print("Error: not enough sockets to open a session\n");
    return nullptr;
  }
  if (start_secondary(host, module, primary_port, secondary_port) == 0) {
    wipc_print("Error: Failed to start the secondary module (%s)\n", module);
    return nullptr;
  }
  OwnedSocket data(wipc_wait_accept(primary->sid));
  if (!data.is_open()) {
    wipc_print("Error: Failed to accept the primary connection\n");
    return nullptr;
  }
  OwnedSocket status(wipc_wait_accept(secondary->sid));
  if (!status.is_open()) {
    wipc_print("Error: Failed to accept the secondary connection\n");
    return nullptr;
  }
  return session_over(data, status, primary_end);
}

int wipc_open_connection(char* host, char* module, char** local_host, int* primary_port,
                         int* secondary_port, int* is_local) {
  if (is_empty(host)) {
    wipc_print("Error: Cannot open connection because of an invalid secondary host\n");
    return 0;
  }
  if (is_empty(module)) {
    wipc_print("Error: Cannot open connection because of an invalid secondary module\n");
    return 0;
  }
  if (local_host == nullptr || primary_port == nullptr || secondary_port == nullptr ||
      is_local == nullptr) {
    wipc_print("Error: Cannot open connection because of invalid paramters\n");
    return 0;
  }
  wipc_release_bind_sessions();  // of a pending connection that was never accepted
  BindSession primary(wipc_create_bind(primary_port));
  if (primary == nullptr) return 0;
  BindSession secondary(wipc_create_bind(secondary_port));
  if (secondary == nullptr) return 0;
  if (wipc_check_sockets(2) == 0) {
    wipc_print("Error: not enough sockets to open a connection\n");
    return 0;
  }
  platform::SocketAddress address{};
  if (platform::gethostbyname(host, &address) == 0) {
    set_error_text("Error: Invalid host %s or no file descriptors\n", host);
    wipc_print("%s", wipc_error_text);
    make_pending(std::move(primary), std::move(secondary));
    return 0;
  }
  platform::gethostname(wipc_local_host, sizeof wipc_local_host);
  *local_host = keeps_machines_out != 0 ? loopback_name : wipc_local_host;
  *is_local = std::strcmp(host, wipc_local_host) == 0 || std::strcmp(host, "localhost") == 0;
  if (*is_local != 0 && !has_module(module)) return 0;
  make_pending(std::move(primary), std::move(secondary));
  return 1;
}

void* wipc_accept_connection(void) {
  if (wipc_bind_primary == nullptr) {
    wipc_print("Error: bind session are null when attempting to accept the connection.\n");
    return nullptr;
  }
  OwnedSocket data(wipc_wait_accept(wipc_bind_primary->sid));
  if (!data.is_open()) return nullptr;
  OwnedSocket status(wipc_wait_accept(wipc_bind_secondary->sid));
  if (!status.is_open()) return nullptr;
  wipc_session* session = session_over(data, status, primary_end);
  if (session != nullptr) wipc_release_bind_sessions();
  return session;
}

void* wipc_connect_session(char* host, int primary_port, int secondary_port) {
  if (is_empty(host)) {
    wipc_print("Error: Connect session failed because no host was specified\n");
    return nullptr;
  }
  if (primary_port <= 0 || secondary_port <= 0) {
    wipc_print("Error: Connect session failed because of invalid port(s) (%d and %d)\n",
               primary_port, secondary_port);
    return nullptr;
  }
  SocketStartup startup;
  if (!startup.is_usable()) return nullptr;
  OwnedSocket data(wipc_connect_port(host, primary_port));
  if (!data.is_open()) {
    wipc_print("Error: Connect session failed because the primary port failed to connect (%d)\n",
               primary_port);
    return nullptr;
  }
  OwnedSocket status(wipc_connect_port(host, secondary_port));
  if (!status.is_open()) {
    wipc_print("Error: Connect session failed because the secondary port failed to connect (%d)\n",
               secondary_port);
    return nullptr;
  }
  startup.keep();
  return session_over(data, status, secondary_end);
}

void wipc_close_session(void* session) {
  wipc_session* record = usable_session(session);
  if (record == nullptr) return;
  if (record->session_type == primary_end) {
    send_text(record->sid, end_of_session);
    char answer[answer_size];
    platform::recv(record->sid, answer, answer_size);  // the answer; or the peer has gone
    platform::closesocket(record->sid);
    platform::closesocket(record->status_sid);
  }
  release_session(record);
}
