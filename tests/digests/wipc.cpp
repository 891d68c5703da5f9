// The messages of sessions whose sockets are played here, linked in the place of the real ones.
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/session.h>

#include "digests/group.h"
#include "digests/printed.h"

#include <algorithm>

namespace {

constexpr int data_socket = 0x7001, status_socket = 0x7002;

struct Peer {
  std::vector<std::string> data, status;  // to come on each channel; a receive takes one
  bool is_gone = false;
  Digest* digest = nullptr;

  std::vector<std::string>& pieces(int socket) { return socket == data_socket ? data : status; }
} peer;

}  // namespace

namespace zelvan::platform {

int recv(int socket, char* bytes, int count) {
  (*peer.digest)(socket, count);
  std::vector<std::string>& pieces = peer.pieces(socket);
  if (peer.is_gone || pieces.empty()) return peer.is_gone ? -1 : 0;
  const std::string piece = pieces.front();
  pieces.erase(pieces.begin());
  return static_cast<int>(piece.copy(bytes, count));
}
int select(int socket) { return peer.is_gone ? -1 : !peer.pieces(socket).empty(); }
int send(int socket, const char* bytes, int count) {
  (*peer.digest)(socket, std::string_view(bytes, count));
  return peer.is_gone ? -1 : count;
}
int _write_socket(int socket, const char* bytes, unsigned n) { return send(socket, bytes, n); }
void closesocket(int socket) { (*peer.digest)(socket); }

// No workload opens a session.
int WSAStartup() { return -1; }
void WSACleanup() {}
int socket() { return -1; }
int bind(int, const SocketAddress&) { return -1; }
int getsockname(int, SocketAddress*) { return -1; }
int listen(int, int) { return -1; }
int accept(int) { return -1; }
int connect(int, const SocketAddress&) { return -1; }
int gethostbyname(const char*, SocketAddress*) { return 0; }
int gethostname(char*, std::size_t) { return -1; }
std::uint16_t htons(std::uint16_t port) { return port; }
std::uint16_t ntohs(std::uint16_t port) { return port; }

}  // namespace zelvan::platform

namespace {

/// A session at the primary or the secondary end, one that is only being opened, or none ('0').
zelvan::wipc_session* new_session(Digest& digest, char type) {
  peer = Peer();
  peer.digest = printed = &digest;
  wipc_set_debug(1);
  if (type == '0') return nullptr;
  zelvan::wipc_session* const session = zelvan::wipc_new_session(data_socket, type);
  session->status_sid = status_socket;
  return session;
}

// Texts in pieces of about the size that fills a receive, with zeros next to their ends, run
// together and cut, on both channels and at both ends, until the peer has gone or says the end.
const Group messages("wipc.messages", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 1500; ++i) {
    zelvan::wipc_session* session = new_session(digest, "PSPSPSPB"[i % 8]);
    for (const int socket : {data_socket, status_socket}) {
      for (int n = random.below(6); n > 0; --n) {
        const int size = random.below(3) == 0 ? 3996 + random.below(5) : 1 + random.below(9);
        std::string piece(size, "ab"[random.below(2)]);
        for (int k = random.below(3); k > 0; --k) piece[size - 1 - random.below(size) % 5] = '\0';
        peer.pieces(socket).push_back(random.below(20) == 0 ? "SessionClosed" : piece);
      }
    }
    const int lengths[] = {0, 1, 2, 9, 4000, 4001, 4002};
    for (int n = 0; n < 12 && session != nullptr; ++n) {
      peer.is_gone = random.below(40) == 0;
      digest(wipc_poll_session(session));
      for (const auto read : {wipc_read_status, wipc_read}) {
        const int length = lengths[random.below(7)];
        std::string buffer(length + 1, '~');  // with a byte behind it
        const int result = read(session, buffer.data(), length);
        digest(result, buffer);
        // At the end of the session its record is released.
        if (read == wipc_read && result < 0 && i % 8 != 7) session = nullptr;
      }
      int queued = 0;
      for (auto* m = session ? session->data_tail : nullptr; m != nullptr; m = m->prev) ++queued;
      digest(queued);
    }
    wipc_close_session(session);
    if (i % 8 == 7) zelvan::release_session(session);
  }
});

const Group writes("wipc.writes", [](Digest& digest) {
  for (const char type : {'P', 'S', 'B', '0'}) {
    for (const bool is_gone : {false, true}) {
      zelvan::wipc_session* const session = new_session(digest, type);
      peer.is_gone = is_gone;
      for (const auto write : {wipc_write, wipc_write_status}) {
        digest(write(session, nullptr));
        for (const int n : {0, 1, 3999, 4000, 4001, 9000}) {
          digest(write(session, std::string(n, 'x').data()));
        }
      }
      digest(wipc_sid(session), wipc_status_sid(session), wipc_poll_session(session));
      for (const auto read : {wipc_read, wipc_read_status}) {
        char text[] = "text";
        for (const int length : {-1, 0, 4}) digest(read(session, text, length), text);
        digest(read(session, nullptr, 4));
      }
      wipc_close_session(session);
      if (type == 'B') zelvan::release_session(session);
    }
  }
});

}  // namespace
