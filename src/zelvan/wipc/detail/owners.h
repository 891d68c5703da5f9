/// Owners of the resources of a session that is being opened. Destructors release what was not
/// passed on.
#pragma once

#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/session.h>

#include <memory>
#include <utility>

namespace zelvan {

/// Owns a socket, or none, and closes it unless it is passed on.
class OwnedSocket {
 public:
  explicit OwnedSocket(int socket = -1) : socket_(socket) {}
  OwnedSocket(const OwnedSocket&) = delete;
  OwnedSocket& operator=(const OwnedSocket&) = delete;
  ~OwnedSocket() {
    if (is_open()) platform::closesocket(socket_);
  }

  bool is_open() const { return socket_ > 0; }
  int get() const { return socket_; }
  int pass_on() { return std::exchange(socket_, -1); }
  void open() { socket_ = platform::socket(); }  // requires that it owns none

 private:
  int socket_;
};

/// Prepares the use of sockets; the destructor undoes that unless `keep` was called.
class SocketStartup {
 public:
  SocketStartup() : is_usable_(wipc_startup() != 0), is_undone_(is_usable_) {}
  SocketStartup(const SocketStartup&) = delete;
  SocketStartup& operator=(const SocketStartup&) = delete;
  ~SocketStartup() {
    if (is_undone_) platform::WSACleanup();
  }

  bool is_usable() const { return is_usable_; }
  void keep() { is_undone_ = false; }

 private:
  bool is_usable_;
  bool is_undone_;  // at the end
};

struct ReleaseBindSession {
  void operator()(wipc_session* session) const { release_bind_session(session); }
};

/// Owns a bind session (see `wipc_session`): the destructor closes the listening socket and
/// releases the record.
using BindSession = std::unique_ptr<wipc_session, ReleaseBindSession>;

}  // namespace zelvan
