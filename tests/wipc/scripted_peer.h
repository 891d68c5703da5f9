/// A session whose peer is the test. Each text that the peer sends arrives as a chunk of its own.
#pragma once

#include <zelvan/wipc/detail/session.h>
#include <zelvan/zelvan.h>

#include <algorithm>

#include <gtest/gtest.h>
#include <support/heap.h>
#include <sys/socket.h>
#include <unistd.h>

struct ScriptedPeer {
  explicit ScriptedPeer(char end) {
    socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, data);
    socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, status);
    session = zelvan::wipc_new_session(data[0], end);
    session->status_sid = status[0];
  }
  ~ScriptedPeer() {
    if (session != nullptr) zelvan::release_session(session);
    for (const int socket : {data[0], data[1], status[0], status[1]}) close(socket);
  }

  int data[2], status[2];  ///< the session's end and the peer's
  zelvan::wipc_session* session;
};

/// Returns what an operation prints while failures are reported.
template <class Operation>
std::string printed(Operation operation) {
  wipc_set_debug(1);
  testing::internal::CaptureStdout();
  operation();
  wipc_set_debug(0);
  return testing::internal::GetCapturedStdout();
}

/// Returns what has arrived at a socket.
inline std::string arrived(int socket) {
  char text[9000];
  const auto length = recv(socket, text, sizeof text, MSG_DONTWAIT);
  return std::string(text, length > 0 ? length : 0);
}
