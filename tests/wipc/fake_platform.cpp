#include "wipc/fake_platform.h"

#include <zelvan/platform/clock.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/processes.h>
#include <zelvan/platform/sockets.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace zelvan::platform {
namespace {

template <typename... Arguments>
void tell(const char* format, Arguments... arguments) {
  if (fake.tells) std::printf(format, arguments...);
}

/// Tells a call that can fail. 1 if it does.
template <typename... Arguments>
int fails(const char* format, Arguments... arguments) {
  const bool is_refused = ++fake.calls == fake.refused_call;
  if (is_refused) tell("%s", "\n!");
  tell(format, arguments...);
  return is_refused;
}

}  // namespace

int WSAStartup() { return fails("%s ", "startup"); }
void WSACleanup() { tell("%s ", "cleanup"); }

int socket() { return fails("%s ", "socket") ? -1 : fake.make(); }
void closesocket(int socket) {
  tell("close(%c%s) ", fake.letter(socket), fake.at(socket).is_open ? "" : " again");
  fake.at(socket).is_open = false;
}

int bind(int socket, const SocketAddress& own) {
  return -fails("bind(%c %d:%d) ", fake.letter(socket), own.host[0], own.port);
}
int getsockname(int socket, SocketAddress* own) {
  own->port = htons(fake.ports[fake.bound++ % 2]);
  return -fails("address(%c) ", fake.letter(socket));
}

int listen(int socket, int backlog) {
  fake.at(socket).looks_in_vain = fake.looks_in_vain;
  return -fails("listen(%c %d) ", fake.letter(socket), backlog);
}
int accept(int socket) { return fails("accept(%c) ", fake.letter(socket)) ? -1 : fake.make(); }

int connect(int socket, const SocketAddress& peer) {
  const int port = ntohs(peer.port);
  const int is_refused = fails("connect(%c %d:%d) ", fake.letter(socket), peer.host[3], port);
  return -(is_refused != 0 || port == fake.deaf_port);
}

int select(int socket) {
  if (fails("look(%c) ", fake.letter(socket)) != 0) return -1;
  FakeSocket& record = fake.at(socket);
  return record.looks_in_vain < 0 ? !record.arriving.empty() : record.looks_in_vain-- == 0;
}

int send(int socket, const char* bytes, int count) {
  const std::string text(bytes, std::min(count, 40));
  return fails("send(%c %d %s) ", fake.letter(socket), count, text.c_str()) ? -1 : count;
}
int _write_socket(int socket, const char* bytes, unsigned count) {
  return send(socket, bytes, static_cast<int>(count));
}

int recv(int socket, char* bytes, int count) {
  std::deque<std::string>& arriving = fake.at(socket).arriving;
  if (fails("receive(%c %d) ", fake.letter(socket), count) != 0) return -1;
  if (arriving.empty()) return 0;
  const std::size_t taken = arriving[0].copy(bytes, count);
  arriving[0].erase(0, taken);
  if (arriving[0].empty()) arriving.pop_front();
  return static_cast<int>(taken);
}

int gethostbyname(const char* name, SocketAddress* address) {
  *address = {{9, 8, 7, 6}, 0};
  return !fails("find(%s) ", name);
}
int gethostname(char* name, std::size_t size) {
  if (fails("own_name(%d) ", static_cast<int>(size)) != 0) return -1;
  return std::strcpy(name, "here") == nullptr;
}

// Not their own inverse, so that one in the place of the other shows.
std::uint16_t htons(std::uint16_t port) { return static_cast<std::uint16_t>(port + 3); }
std::uint16_t ntohs(std::uint16_t port) { return static_cast<std::uint16_t>(port - 3); }

void Sleep(std::uint64_t milliseconds) { tell("sleep(%d) ", static_cast<int>(milliseconds)); }

int _access(const char* path, int mode) {
  return -(fails("access(%s %d) ", path, mode) != 0 || std::strcmp(path, "/bin/m") != 0);
}

int _getpid() { return 77; }

int CreateProcessA(const char* line) { return !fails("run(%s) ", line); }

}  // namespace zelvan::platform
