// Sessions over a platform that is played here, linked in the place of the real one. It tells each
// of its calls on standard output, and nothing waits.
#include <zelvan/platform/clock.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/processes.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/connection.h>
#include <zelvan/wipc/detail/heap_text.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/session.h>

#include "support/system.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int first_socket = 40000, deaf_port = 9;  // more than 16 bits; told as letters

struct {
  int refused_call = 0;                 // this one of those that can fail does, from 1
  int looks_in_vain = 0;                // until a connection is there
  std::uint16_t ports[2] = {1, 65535};  // of the bound sockets, in turn
  bool listens[128]{};                  // each socket by its letter
  int calls = 0, bound = 0, made = 0;
} fake;

int make() { return first_socket + fake.made++; }
int letter(int socket) { return 'A' + socket - first_socket; }

/// Tells a call, and with a mark whether it fails.
template <typename... Arguments>
bool fails(const char* format, Arguments... arguments) {
  if (++fake.calls == fake.refused_call) std::printf("\n!");
  std::printf(format, arguments...);
  return fake.calls == fake.refused_call;
}

using namespace zelvan;
using namespace std::string_literals;

const char written_down[] =
#include "wipc/told.txt"
    ;

const std::vector at_first{wipc_connect_timeout, wipc_debug, wipc_nostart, +wipc_error_text[0]};
char local[] = "localhost", other[] = "LOCALHOST", here[] = "here", empty[] = "", *null = nullptr;
char module[] = "m", path[] = "/bin/m", missing[] = "x/y", root[] = "/m", *host = empty;
int ports[2], is_local;
std::string told;

// A result is told behind all that led to it, and a session's record released.
void say(int n) { n < first_socket ? std::printf("= %d;", n) : std::printf("= %c;", letter(n)); }
void say(const char* result) { std::printf("= %s;", result != nullptr ? result : "null"); }
void say(void* handle) {
  auto* session = static_cast<wipc_session*>(handle);
  if (session == nullptr) return say("null");
  std::printf("= %c ", session->session_type), say(session->sid), say(session->status_sid);
  release_session(session);
}
void tell_connection(char* on, char* program) {
  say(wipc_open_connection(on, program, &host, &ports[0], &ports[1], &is_local));
  std::printf("%s %d %d %d;", host, ports[0], ports[1], is_local);
}

/// Adds a line for each result. Where a call is refused it begins there, and ends with the next
/// result and what is released; that goes for each call in turn, and at last for none, or once.
enum { once, each };
void add(const std::string& title, int refused_call, auto calls) {
  told += "\n" + title + "\n";
  for (bool is_refused = true; is_refused; ++refused_call) {
    fake = {.refused_call = refused_call};
    wipc_set_debug(1), wipc_set_nostart(0), wipc_set_connect_timeout(1);
    support::set_environment("PATH", "/none:/bin");
    testing::internal::CaptureStdout();
    calls(), wipc_release_bind_sessions();
    std::string lines = testing::internal::GetCapturedStdout();
    const std::size_t refused = lines.find("\n!"), end = lines.find(';', refused);
    is_refused = refused != std::string::npos;
    if (is_refused) lines = lines.substr(0, end) + ' ' + lines.substr(lines.rfind(';') + 1);
    lines = lines.substr(refused + 1, lines.find_last_not_of(" ;") - refused);  // from 0 if none
    for (char& c : lines) c = c == '\n' ? '|' : c == ';' ? '\n' : c;
    told += lines + "\n";
  }
}

}  // namespace

namespace zelvan::platform {

int WSAStartup() { return fails("%s ", "startup"); }
void WSACleanup() { std::printf("cleanup "); }

int socket() { return fails("%s ", "socket") ? -1 : make(); }
void closesocket(int socket) { std::printf("close(%c) ", letter(socket)); }
int bind(int socket, const SocketAddress& own) {
  return -fails("bind(%c %d:%d) ", letter(socket), own.host[0], own.port);
}
int getsockname(int socket, SocketAddress* own) {
  return own->port = htons(fake.ports[fake.bound++ % 2]), -fails("address(%c) ", letter(socket));
}
int listen(int socket, int backlog) {
  return fake.listens[letter(socket)] = true, -fails("listen(%c %d) ", letter(socket), backlog);
}
int accept(int socket) { return fails("accept(%c) ", letter(socket)) ? -1 : make(); }
int connect(int socket, const SocketAddress& peer) {
  const int port = ntohs(peer.port);
  return -(fails("connect(%c %d:%d) ", letter(socket), peer.host[3], port) || port == deaf_port);
}
int select(int socket) {
  if (fails("look(%c) ", letter(socket))) return -1;
  return fake.listens[letter(socket)] && fake.looks_in_vain-- <= 0;
}

// Nothing is said: for messages see tests/digests.
int send(int, const char*, int) { return -1; }
int _write_socket(int, const char*, unsigned) { return -1; }
int recv(int, char*, int) { return -1; }

int gethostbyname(const char* name, SocketAddress* address) {
  return *address = {{9, 8, 7, 6}, 0}, !fails("find(%s) ", name);
}
int gethostname(char* name, std::size_t size) {
  return std::strcpy(name, "here"), -fails("own_name(%d) ", static_cast<int>(size));
}
// Not their own inverse, so that one in the place of the other shows.
std::uint16_t htons(std::uint16_t port) { return static_cast<std::uint16_t>(port + 3); }
std::uint16_t ntohs(std::uint16_t port) { return static_cast<std::uint16_t>(port - 3); }

void Sleep(std::uint64_t time) { std::printf("sleep(%d) ", static_cast<int>(time)); }
int _access(const char* path, int mode) {
  return -(fails("access(%s %d) ", path, mode) || std::strcmp(path, "/bin/m") != 0);
}
int _getpid() { return 77; }
int CreateProcessA(const char* line) { return !fails("run(%s) ", line); }

}  // namespace zelvan::platform

// What is told stands in told.txt: every call of the platform, every text and every result.
TEST(Sessions, DoAndTellWhatIsWrittenDown) {
  told = testing::PrintToString(at_first);
  add("opening in one step", each, [] { say(wipc_open_session(local, module)); });
  add("in two steps", each, [] { tell_connection(local, module), say(wipc_accept_connection()); });
  add("connecting and waiting", each, [] {
    say(wipc_connect_session(other, 1, 65535)), say(wipc_connect_port(local, deaf_port));
    for (const int looks : {0, 1, 2, 3}) {
      wipc_set_connect_timeout(looks > 1 ? 1 : -1), fake.looks_in_vain = looks;
      say(wipc_wait_accept(make()));
    }
  });
  add("lines and numbers", once, [] {
    wipc_set_debug(0), wipc_set_nostart(-1), say(wipc_connect_timeout);
    for (const int length : {1000, 1001}) {
      say(wipc_open_session(local, std::string(length, 'x').data())), say(wipc_last_error());
    }
    wipc_set_connect_timeout(1), wipc_set_debug(1), wipc_set_nostart(0), say(wipc_connect_timeout);
    for (const int last : {0, 1}) {
      fake.ports[last] = 0, say(wipc_open_session(local, module)), fake.ports[last] = 7;
      say(wipc_connect_session(local, last, -last));
      say(wipc_wait_accept(last - 1)), say(wipc_poll_socket(last - 1));
    }
    for (const int n : {-1, 0, 3}) say(wipc_check_sockets(n));
  });
  add("hosts and programs", once, [] {
    for (char* on : {here, other}) tell_connection(on, path), tell_connection(on, root);
    for (char* program : {path, missing, root}) say(HeapText(wipc_find_module(program)).get());
    support::set_environment("PATH", nullptr), say(wipc_find_module(module));
    for (const char* all : {"/bin/:", ":/bin", "::/bin", "", ":", "a:::/bin:/"}) {
      support::set_environment("PATH", all), say(HeapText(wipc_find_module(module)).get());
    }
  });
  add("invalid arguments", once, [] {
    for (char* none : {null, empty}) {
      say(wipc_open_session(none, none)), say(wipc_open_session(local, none));
      tell_connection(none, none), tell_connection(local, none);
      say(wipc_connect_session(none, 1, 1)), say(wipc_find_module(none));
    }
    say(wipc_open_connection(local, module, nullptr, ports, ports, ports));
    say(wipc_open_connection(local, module, &host, nullptr, ports, ports));
    say(wipc_open_connection(local, module, &host, ports, nullptr, ports));
    say(wipc_open_connection(local, module, &host, ports, ports, nullptr));
    wipc_bind_primary = wipc_create_bind(ports), say(wipc_accept_connection());
    std::swap(wipc_bind_primary, wipc_bind_secondary), say(wipc_accept_connection());
  });
  EXPECT_EQ(told, written_down);
}
