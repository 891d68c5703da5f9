/// TCP over IPv4: sockets, names and addresses.
///
/// A socket is a number above 2. It is never one of the standard streams, even if the process has
/// closed them, so printed text can't get into a connection, and 0 is never a socket. Started
/// programs don't inherit sockets. Sockets send data at once instead of waiting for more.
///
/// Signals have no effect: an interrupted call is resumed, and writing to a peer that has gone is
/// an ordinary failure that raises no signal. Failures return -1 unless a call says otherwise.
/// Every function may run on any thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvan::platform {

/// The address of one end of a connection. All zero means any local address and a port that the
/// system chooses.
struct SocketAddress {
  std::uint8_t host[4];
  std::uint16_t port;
  friend bool operator==(const SocketAddress&, const SocketAddress&) = default;
};

/// The address by which a machine reaches itself, and no other machine reaches it.
constexpr SocketAddress loopback{{127, 0, 0, 1}, 0};

/// Prepares the use of sockets. Returns 0 on success.
int WSAStartup();

/// Undoes one `WSAStartup`.
void WSACleanup();

/// Returns a new TCP socket; the caller closes it.
int socket();

/// Sets the socket's own address. Fails if another socket has that address.
int bind(int socket, const SocketAddress& address);

/// Stores the socket's own address, with the port that the system chose.
int getsockname(int socket, SocketAddress* address);

/// Stores the address of the peer.
int getpeername(int socket, SocketAddress* address);

/// Lets about `backlog` connections queue up. May be called again.
int listen(int socket, int backlog);

/// Waits for a connection and takes the oldest off the queue. Returns its socket; the caller closes
/// it.
int accept(int socket);

/// Connects, and waits for the answer. A refused connection fails at once, on Windows after two
/// seconds in which the system retries. After a failure the socket can't be used again. A
/// connection of a socket to itself is a failure.
int connect(int socket, const SocketAddress& address);

/// Returns 1 if a read, or an accept on a listening socket, would not wait, else 0. It is 1 as well
/// if the peer has gone. Never waits. The number of the socket is not limited.
int select(int socket);

/// Sends `count` bytes, waiting for room. Returns the number sent, which is less only if the
/// connection broke midway, or -1.
int send(int socket, const char* bytes, int count);

/// Receives up to `count` bytes, waiting for the first. Returns their number, 0 once the peer has
/// ended the stream.
int recv(int socket, char* bytes, int count);

void closesocket(int socket);

/// Stores the first IPv4 address of a host in `address->host`. Returns 1, or 0 if there is none or
/// no descriptor is left for the query.
int gethostbyname(const char* name, SocketAddress* address);

/// Stores the name of this machine, cut to `size` bytes including the terminator.
int gethostname(char* name, std::size_t size);

}  // namespace zelvan::platform
