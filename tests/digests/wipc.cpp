// The messages of sessions whose sockets are played here.
#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "digests/group.h"
#include "digests/heap.h"
#include "support/random.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace {

using support::Random;

constexpr int data_socket = 7, status_socket = 8;

struct Peer {
  std::vector<std::string> pieces[9];  // to come on each socket; a receive takes one
  std::size_t taken[9] = {};
  bool is_gone = false;
  Digest* digest = nullptr;
} peer;

}  // namespace

int play_recv(int socket, char* bytes, int count) asm("__wrap__ZN6zelvan8platform4recvEiPci");
int play_recv(int socket, char* bytes, int count) {
  (*peer.digest)(socket, count);
  if (peer.is_gone) return -1;
  if (peer.taken[socket] == peer.pieces[socket].size()) return 0;
  const std::string& piece = peer.pieces[socket][peer.taken[socket]++];
  return static_cast<int>(piece.copy(bytes, static_cast<std::size_t>(count)));
}
int play_select(int socket) asm("__wrap__ZN6zelvan8platform6selectEi");
int play_select(int socket) {
  if (peer.is_gone) return -1;
  return peer.taken[socket] != peer.pieces[socket].size();
}
int play_send(int socket, const char* bytes, int n) asm("__wrap__ZN6zelvan8platform4sendEiPKci");
int play_send(int socket, const char* bytes, int n) {
  (*peer.digest)(socket, std::string_view(bytes, static_cast<std::size_t>(n)));
  return peer.is_gone ? -1 : n;
}
int play_write(int socket, const char* bytes,
               unsigned n) asm("__wrap__ZN6zelvan8platform13_write_socketEiPKcj");
int play_write(int socket, const char* bytes, unsigned n) {
  return play_send(socket, bytes, static_cast<int>(n));
}
void play_closesocket(int socket) asm("__wrap__ZN6zelvan8platform11closesocketEi");
void play_closesocket(int socket) { (*peer.digest)(socket); }

namespace {

void begin(Digest& digest) {
  peer = Peer();
  peer.digest = &digest;
}

zelvan::wipc_session* new_session(char type) {
  zelvan::wipc_session* const session = zelvan::wipc_new_session(data_socket, type);
  session->status_sid = status_socket;
  return session;
}

/// Takes a read into a buffer with a byte behind it, and what is queued by then. Gives the result.
int take_read(Digest& digest, decltype(wipc_read) read, zelvan::wipc_session* session, int length) {
  std::string buffer(static_cast<std::size_t>(std::max(length, 0)) + 1, '~');
  const int result = read(session, buffer.data(), length);
  digest(result, buffer);
  return result;
}

// Texts in pieces of about the size that fills a receive, with zeros next to their ends, run
// together and cut, on both channels and at both ends, until the peer has gone or says the end.
const Group messages("wipc.messages", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 1500; ++i) {
    begin(digest);
    zelvan::wipc_session* const session = new_session("PSB"[i % 8 == 0 ? 2 : i % 2]);
    for (const int socket : {data_socket, status_socket}) {
      for (int n = random.below(6); n > 0; --n) {
        const int size = random.below(3) == 0 ? 3996 + random.below(5) : random.below(9);
        std::string piece(static_cast<std::size_t>(size), "ab"[random.below(2)]);
        for (int zeros = random.below(3); zeros > 0 && size > 0; --zeros) {
          piece[static_cast<std::size_t>(std::max(0, size - 1 - random.below(5)))] = '\0';
        }
        if (random.below(20) == 0) piece = "SessionClosed";
        peer.pieces[socket].push_back(piece);
      }
    }
    const int lengths[] = {-1, 0, 1, 2, 9, 4000, 4001, 4002};
    bool is_over = false;
    for (int n = 0; n < 12 && !is_over; ++n) {
      peer.is_gone = random.below(40) == 0;
      digest(wipc_poll_session(session), wipc_sid(session), wipc_status_sid(session));
      take_read(digest, wipc_read_status, session, lengths[random.below(8)]);
      const int length = lengths[random.below(8)];
      const bool is_usable = session->session_type != 'B';
      is_over = take_read(digest, wipc_read, session, length) < 0 && is_usable;
      if (is_over) break;
      int queued = 0;
      for (auto* m = session->data_tail; m != nullptr; m = m->prev) ++queued;
      for (auto* m = session->status_head; m != nullptr; m = m->next) queued += 100;
      digest(queued);
    }
    if (is_over) continue;  // the session is released
    wipc_close_session(session);
    if (i % 8 == 0) zelvan::release_session(session);
  }
});

const Group writes("wipc.writes", [](Digest& digest) {
  for (const char type : {'P', 'S', 'B', '0'}) {
    for (const bool is_gone : {false, true}) {
      begin(digest);
      peer.is_gone = is_gone;
      zelvan::wipc_session* const session = type == '0' ? nullptr : new_session(type);
      char text[9];
      for (const auto write : {wipc_write, wipc_write_status}) {
        digest(write(session, nullptr));
        for (const int n : {0, 1, 3999, 4000, 4001, 9000}) {
          digest(write(session, std::string(static_cast<std::size_t>(n), 'x').data()));
        }
      }
      digest(wipc_sid(session), wipc_status_sid(session), wipc_poll_session(session),
             wipc_read(session, nullptr, 9), wipc_read_status(session, nullptr, 9),
             wipc_read(session, text, 9), wipc_read_status(session, text, 9));
      wipc_close_session(session);
      if (type == 'B') zelvan::release_session(session);
    }
  }
});

// A message that the heap has no room for is lost, and no other.
const Group refusals("wipc.refusals", [](Digest& digest) {
  const long blocks = heap::blocks;
  begin(digest);
  peer.pieces[data_socket] = {std::string("one\0two\0three", 13), "four"};
  heap::refuse_each([&] {
    zelvan::wipc_session* const session = zelvan::wipc_new_session(data_socket, 'S');
    digest(session == nullptr);
    if (session == nullptr) return;
    peer.taken[data_socket] = 0;
    for (int i = 0; i < 5; ++i) {
      char text[6] = "~~~~~";
      digest(wipc_read(session, text, 5), text);
    }
    wipc_close_session(session);
  });
  begin(digest);
  digest(heap::blocks - blocks);
});

}  // namespace
