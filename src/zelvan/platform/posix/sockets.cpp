#include <zelvan/platform/posix/retry_interrupted.h>
#include <zelvan/platform/sockets.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

constexpr int first_own_fd = 3;  // above the standard streams

/// Returns the socket under a number above those of the standard streams. If it has one of these,
/// closes it and returns a duplicate instead. Returns -1 on failure.
int move_above_standard_streams(int socket) {
  if (socket < 0 || socket >= first_own_fd) return socket;
  const int moved = ::fcntl(socket, F_DUPFD_CLOEXEC, first_own_fd);
  ::close(socket);
  return moved;
}

/// Stores the address of one end, as `query` reports it.
template <typename Query>
int store_address(Query query, SocketAddress* address) {
  sockaddr_in end{};
  socklen_t length = sizeof end;
  if (query(reinterpret_cast<sockaddr*>(&end), &length) != 0) return -1;
  std::memcpy(address->host, &end.sin_addr, sizeof address->host);
  address->port = ntohs(end.sin_port);
  return 0;
}

sockaddr_in to_system(const SocketAddress& address) {
  sockaddr_in result{};
  result.sin_family = AF_INET;
  result.sin_port = htons(address.port);
  std::memcpy(&result.sin_addr, address.host, sizeof address.host);
  return result;
}

/// Waits until the system has completed a `connect` that a signal interrupted. Returns true if it
/// succeeded.
bool finish_connecting(int socket) {
  pollfd waiting{socket, POLLOUT, 0};
  if (retry_interrupted([&] { return ::poll(&waiting, 1, -1); }) < 0) return false;
  int error = 0;
  socklen_t length = sizeof error;
  return ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &length) == 0 && error == 0;
}

/// Returns true for a socket connected to itself. The system can choose the port of its own end so
/// that it equals a port that nobody listens on.
bool is_its_own_peer(int socket) {
  SocketAddress own{};
  SocketAddress peer{};
  getsockname(socket, &own);
  getpeername(socket, &peer);
  return own == peer;
}

}  // namespace

int WSAStartup() { return 0; }

void WSACleanup() {}

int socket() {
  const int made = move_above_standard_streams(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const int at_once = 1;  // TCP_NODELAY: accepted sockets inherit it from the listening one
  if (made >= 0) ::setsockopt(made, IPPROTO_TCP, TCP_NODELAY, &at_once, sizeof at_once);
  return made;
}

int bind(int socket, const SocketAddress& address) {
  const sockaddr_in own = to_system(address);
  return ::bind(socket, reinterpret_cast<const sockaddr*>(&own), sizeof own);
}

int getsockname(int socket, SocketAddress* address) {
  return store_address(
      [=](sockaddr* end, socklen_t* length) { return ::getsockname(socket, end, length); },
      address);
}

int getpeername(int socket, SocketAddress* address) {
  return store_address(
      [=](sockaddr* end, socklen_t* length) { return ::getpeername(socket, end, length); },
      address);
}

int listen(int socket, int backlog) { return ::listen(socket, backlog); }

int accept(int socket) {
  return move_above_standard_streams(
      retry_interrupted([&] { return ::accept4(socket, nullptr, nullptr, SOCK_CLOEXEC); }));
}

int connect(int socket, const SocketAddress& address) {
  const sockaddr_in peer = to_system(address);
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) != 0 &&
      (errno != EINTR || !finish_connecting(socket))) {
    return -1;
  }
  return is_its_own_peer(socket) ? -1 : 0;
}

int select(int socket) {
  pollfd tested{socket, POLLIN, 0};  // `select` supports no descriptor above 1023
  if (retry_interrupted([&] { return ::poll(&tested, 1, 0); }) < 0) return -1;
  if ((tested.revents & POLLNVAL) != 0) return -1;
  return tested.revents != 0;
}

int send(int socket, const char* bytes, int count) {
  int sent = 0;
  do {
    const ssize_t more = retry_interrupted([&] {
      return ::send(socket, bytes + sent, static_cast<std::size_t>(count - sent), MSG_NOSIGNAL);
    });
    if (more < 0) return sent > 0 ? sent : -1;
    sent += static_cast<int>(more);
  } while (sent < count);
  return sent;
}

int recv(int socket, char* bytes, int count) {
  return static_cast<int>(
      retry_interrupted([&] { return ::recv(socket, bytes, static_cast<std::size_t>(count), 0); }));
}

void closesocket(int socket) { ::close(socket); }

int gethostbyname(const char* name, SocketAddress* address) try {
  std::vector<char> scratch(1024);
  hostent entry{};
  hostent* found = nullptr;
  int trouble = 0;
  while (::gethostbyname_r(name, &entry, scratch.data(), scratch.size(), &found, &trouble) ==
         ERANGE) {
    scratch.resize(2 * scratch.size());
  }
  if (found == nullptr || found->h_length != sizeof address->host) return 0;
  std::memcpy(address->host, found->h_addr_list[0], sizeof address->host);
  return 1;
} catch (const std::bad_alloc&) {
  return 0;
}

int gethostname(char* name, std::size_t size) {
  if (::gethostname(name, size) != 0 && errno != ENAMETOOLONG) return -1;
  name[size - 1] = '\0';
  return 0;
}

}  // namespace zelvan::platform
