/// TCP over IPv4: sockets, names and addresses.
///
/// A socket is a number above 2: never one of the standard streams, not even where the process
/// has closed them, so nothing that is printed can get into a conversation, and 0 never names a
/// socket. Sockets are not inherited by started programs. They send what they are given at once
/// instead of waiting for more.
///
/// Signals never show: an interrupted call is taken up again, and a write to a peer that has
/// gone is a failure like any other and raises none. Failures return -1 unless a call says
/// otherwise. Every function may run on any thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvan::platform {

/// One end of a connection. All zero means any local address and a port of the system's choice.
struct SocketAddress {
  std::uint8_t host[4];
  std::uint16_t port;  ///< in the order of the network: see `htons`
};

/// The address by which a machine reaches itself and no other machine does.
constexpr SocketAddress loopback{{127, 0, 0, 1}, 0};

/// Makes the sockets usable. Returns 0 on success.
int WSAStartup();

/// Undoes one `WSAStartup`.
void WSACleanup();

/// A new TCP socket, for the caller to close.
int socket();

/// Takes the socket's own address, which nobody else may have.
int bind(int socket, const SocketAddress& address);

/// Stores the socket's own address, with the port that the system chose.
int getsockname(int socket, SocketAddress* address);

/// Stores the address of the other end of a connection.
int getpeername(int socket, SocketAddress* address);

/// Lets connections queue up, about `backlog` of them. May be repeated.
int listen(int socket, int backlog);

/// Takes the oldest connection off the queue, waiting for one, as a socket of the caller's.
int accept(int socket);

/// Connects, waiting for the answer; one that is refused fails at once, on Windows after the two
/// seconds in which the system asks again. A socket that failed is of no more use, and one that
/// met nobody but itself has failed.
int connect(int socket, const SocketAddress& address);

/// 1 if a read, or an accept on a listening socket, would not wait, which holds also when the
/// peer has gone; else 0. Never waits. A socket may have any number.
int select(int socket);

/// Sends `count` bytes, waiting for room. Returns the number sent, which is less only if the
/// connection broke midway. `_write_socket` is the same as a plain write to a descriptor, for a
/// channel that needs no more.
int send(int socket, const char* bytes, int count);
int _write_socket(int socket, const char* bytes, unsigned count);

/// Receives up to `count` bytes, waiting for the first. Returns their number, 0 once the peer has
/// ended the stream.
int recv(int socket, char* bytes, int count);

void closesocket(int socket);

/// Stores the first IPv4 address of a host in `address->host`. Returns 1, or 0 if there is none,
/// or no descriptor left to ask with.
int gethostbyname(const char* name, SocketAddress* address);

/// Stores the name of this machine, cut to `size` bytes with its terminator.
int gethostname(char* name, std::size_t size);

/// Between the order of the host and that of the network, and back.
std::uint16_t htons(std::uint16_t port);
std::uint16_t ntohs(std::uint16_t port);

}  // namespace zelvan::platform
