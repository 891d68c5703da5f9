#include <zelvan/platform/sockets.h>

#include <algorithm>
#include <cstring>

#include <winsock2.h>

namespace zelvan::platform {
namespace {

constexpr BOOL yes = TRUE;

/// Returns the handle: handles have 32 significant bits, even if a pointer has 64, and the lowest
/// is 4.
SOCKET handle_of(int socket) { return static_cast<SOCKET>(static_cast<unsigned>(socket)); }

template <typename Value>
bool set_option(int socket, int level, int option, const Value& value) {
  return ::setsockopt(handle_of(socket), level, option, reinterpret_cast<const char*>(&value),
                      sizeof value) == 0;
}

/// Makes a new socket not inheritable, and lets it send at once. Returns its number, or -1 if
/// `made` is no socket.
int configure_new(SOCKET made) {
  if (made == INVALID_SOCKET) return -1;
  ::SetHandleInformation(reinterpret_cast<HANDLE>(made), HANDLE_FLAG_INHERIT, 0);
  const int socket = static_cast<int>(made);
  set_option(socket, IPPROTO_TCP, TCP_NODELAY, yes);
  return socket;
}

/// Stores the address of one end, as `query` reports it.
int store_address(decltype(::getsockname) query, int socket, SocketAddress* address) {
  sockaddr_in end{};
  int length = sizeof end;
  if (query(handle_of(socket), reinterpret_cast<sockaddr*>(&end), &length) != 0) return -1;
  std::memcpy(address->host, &end.sin_addr, sizeof address->host);
  address->port = ::ntohs(end.sin_port);
  return 0;
}

sockaddr_in to_system(const SocketAddress& address) {
  sockaddr_in result{};
  result.sin_family = AF_INET;
  result.sin_port = ::htons(address.port);
  std::memcpy(&result.sin_addr, address.host, sizeof address.host);
  return result;
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

int WSAStartup() {
  WSADATA ignored;
  return ::WSAStartup(MAKEWORD(2, 2), &ignored);
}

void WSACleanup() { ::WSACleanup(); }

int socket() {
  constexpr DWORD flags = WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT;
  return configure_new(::WSASocketW(AF_INET, SOCK_STREAM, 0, nullptr, 0, flags));
}

int bind(int socket, const SocketAddress& address) {
  // Otherwise another process could bind the same address and take over its connections.
  if (!set_option(socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, yes)) return -1;
  const sockaddr_in own = to_system(address);
  return ::bind(handle_of(socket), reinterpret_cast<const sockaddr*>(&own), sizeof own);
}

int getsockname(int socket, SocketAddress* address) {
  return store_address(::getsockname, socket, address);
}

int getpeername(int socket, SocketAddress* address) {
  return store_address(::getpeername, socket, address);
}

int listen(int socket, int backlog) { return ::listen(handle_of(socket), backlog); }

int accept(int socket) { return configure_new(::accept(handle_of(socket), nullptr, nullptr)); }

int connect(int socket, const SocketAddress& address) {
  const sockaddr_in peer = to_system(address);
  if (::connect(handle_of(socket), reinterpret_cast<const sockaddr*>(&peer), sizeof peer) != 0) {
    return -1;
  }
  return is_its_own_peer(socket) ? -1 : 0;
}

int select(int socket) {
  fd_set tested;  // a list of sockets on this platform, so any socket number fits
  FD_ZERO(&tested);
  FD_SET(handle_of(socket), &tested);
  timeval at_once{};
  return ::select(0, &tested, nullptr, nullptr, &at_once);
}

int send(int socket, const char* bytes, int count) {
  int sent = 0;
  do {
    const int more = ::send(handle_of(socket), bytes + sent, count - sent, 0);
    if (more < 0) return sent > 0 ? sent : -1;
    sent += more;
  } while (sent < count);
  return sent;
}

int recv(int socket, char* bytes, int count) { return ::recv(handle_of(socket), bytes, count, 0); }

void closesocket(int socket) {
  // Sends the end of the stream after all data; closing alone could abort the connection.
  ::shutdown(handle_of(socket), SD_SEND);
  ::closesocket(handle_of(socket));
}

int gethostbyname(const char* name, SocketAddress* address) {
  const hostent* found = ::gethostbyname(name);
  if (found == nullptr || found->h_length != sizeof address->host) return 0;
  std::memcpy(address->host, found->h_addr_list[0], sizeof address->host);
  return 1;
}

int gethostname(char* name, std::size_t size) {
  char whole[256];  // the system's limit
  if (::gethostname(whole, sizeof whole) != 0) return -1;
  const std::size_t length = std::min(std::strlen(whole), size - 1);
  std::memcpy(name, whole, length);
  name[length] = '\0';
  return 0;
}

}  // namespace zelvan::platform
