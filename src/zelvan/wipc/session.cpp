#include <zelvan/detail/new_array.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/owners.h>
#include <zelvan/wipc/detail/queue.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/session.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>

namespace zelvan {

int wipc_connect_timeout = 10;
int wipc_debug = 0;
int wipc_nostart = 0;
int keeps_machines_out = 0;
char wipc_error_text[256] = "";
wipc_session* wipc_bind_primary = nullptr;
wipc_session* wipc_bind_secondary = nullptr;
char wipc_local_host[256] = "";

void wipc_print(const char* format, ...) {
  if (wipc_debug == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

void set_error_text(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(wipc_error_text, sizeof wipc_error_text, format, arguments);
  va_end(arguments);
}

int wipc_startup(void) {
  if (platform::WSAStartup() == 0) return 1;
  wipc_print("Error: WinSock failed to initialize");
  return 0;
}

wipc_session* wipc_create_bind(int* port) {
  SocketStartup startup;
  if (!startup.is_usable()) return nullptr;
  OwnedSocket socket(platform::socket());
  if (!socket.is_open()) return nullptr;
  BindSession session(wipc_new_session(socket.get(), bind_session));
  if (session == nullptr) return nullptr;
  socket.pass_on();
  // With port 0 the system chooses a free one.
  auto address = keeps_machines_out != 0 ? platform::loopback : platform::SocketAddress{};
  if (platform::bind(session->sid, address) != 0) return nullptr;
  if (platform::getsockname(session->sid, &address) != 0) return nullptr;
  *port = address.port;
  startup.keep();
  return session.release();
}

int wipc_check_sockets(int n) {
  if (n < 0) {
    wipc_print("Error: Invalid number of sockets to check (%d)\n", n);
    return 0;
  }
  const auto sockets = new_array<OwnedSocket>(static_cast<std::size_t>(n));
  if (sockets == nullptr) {
    wipc_print("Error: Memory allocation failure when checking for %d sockets\n", n);
    return 0;
  }
  for (int i = 0; i < n; ++i) {
    sockets[i].open();
    if (!sockets[i].is_open()) return 0;
  }
  return 1;
}

wipc_session* wipc_new_session(int sid, char session_type) {
  return new (std::nothrow) wipc_session{sid, 0, session_type, nullptr, nullptr, nullptr, nullptr};
}

void release_session(wipc_session* session) {
  while (char* text = wipc_dequeue(&session->status_head, &session->status_tail)) std::free(text);
  while (char* text = wipc_dequeue(&session->data_head, &session->data_tail)) std::free(text);
  delete session;
}

void release_bind_session(wipc_session* session) {
  if (session == nullptr) return;
  platform::closesocket(session->sid);
  release_session(session);
}

void wipc_release_bind_sessions(void) {
  release_bind_session(std::exchange(wipc_bind_primary, nullptr));
  release_bind_session(std::exchange(wipc_bind_secondary, nullptr));
}

int wipc_poll_socket(int socket) {
  if (socket <= 0) {
    wipc_print("Polling invalid session/socket ID (%d)\n", socket);
    return 0;
  }
  return platform::select(socket) > 0;
}

wipc_session* usable_session(void* session) {
  auto* record = static_cast<wipc_session*>(session);
  const bool is_usable = record != nullptr && (record->session_type == primary_end ||
                                               record->session_type == secondary_end);
  return is_usable ? record : nullptr;
}

}  // namespace zelvan

using namespace zelvan;

char* wipc_last_error(void) { return wipc_error_text; }

void wipc_set_connect_timeout(int seconds) { wipc_connect_timeout = seconds; }

void wipc_set_debug(int on) { wipc_debug = on; }

void wipc_set_nostart(int on) {
  wipc_nostart = on;
  wipc_connect_timeout = 600;
}

void zelvan_set_local_sessions_only(int on) { keeps_machines_out = on; }

int wipc_sid(void* session) {
  const wipc_session* record = usable_session(session);
  return record != nullptr ? record->sid : -1;
}

int wipc_status_sid(void* session) {
  const wipc_session* record = usable_session(session);
  return record != nullptr ? record->status_sid : -1;
}

int wipc_poll_session(void* session) {
  const wipc_session* record = usable_session(session);
  if (record == nullptr) return 0;
  if (record->data_head != nullptr) return 1;
  return wipc_poll_socket(record->sid);
}
