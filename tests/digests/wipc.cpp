// Sessions over a platform that is played here, linked in the place of the real one. It tells each
// of its calls, and nothing waits.
#include <zelvan/platform/clock.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/processes.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/connection.h>
#include <zelvan/wipc/detail/heap_text.h>
#include <zelvan/wipc/detail/session.h>

#include "digests/group.h"
#include "digests/printed.h"
#include "support/heap.h"

#include <algorithm>
#include <cerrno>

namespace {

using namespace zelvan;
using namespace std::string_literals;

constexpr int data_socket = 0x7001, status_socket = 0x7002, first_socket = 40000, deaf_port = 9;

struct Played {
  std::vector<std::string> data, status;  // to come on each channel; a receive takes one
  bool is_gone = false;                   // the peer
  int refused_call = 0, calls = 0;        // this one of those that can fail does, from 1
  int none = -1;                          // what is no socket
  int looks_in_vain = 0;                  // until a connection is there
  int ports[2] = {1, 65535}, bound = 0;   // of the bound sockets, in turn
  int made = 0;                           // sockets
  bool listens[128] = {};

  std::vector<std::string>& pieces(int socket) { return socket == data_socket ? data : status; }
} played;

/// Tells a call and whether it fails.
bool fails(std::string_view call, const auto&... arguments) {
  if (printed != nullptr) (*printed)(call, arguments...);
  return ++played.calls == played.refused_call;
}
int make() { return first_socket + played.made++; }
int made_unless(bool fails) { return fails ? played.none : make(); }

}  // namespace

namespace zelvan::platform {

int is_there(const char* path, int mode) asm("__wrap__ZN6zelvan8platform7_accessEPKci");
int is_there(const char* path, int mode) {
  errno = ENOENT;
  return -(fails("access", path, mode) || !existing.contains(std::string_view(path)));
}
unsigned attributes(const char* path) asm("__wrap__ZN6zelvan8platform18GetFileAttributesAEPKc");
unsigned attributes(const char* path) {
  return fails("attributes", path) || !existing.contains(std::string_view(path))
             ? INVALID_FILE_ATTRIBUTES
             : 0;
}

int WSAStartup() { return fails("startup"); }
void WSACleanup() { fails("cleanup"); }

int socket() { return made_unless(fails("socket")); }
void closesocket(int socket) { fails("close", socket); }
int bind(int socket, const SocketAddress& own) {
  return -fails("bind", socket, own.host, own.port);
}
int getsockname(int socket, SocketAddress* own) {
  own->port = htons(static_cast<std::uint16_t>(played.ports[played.bound++ % 2]));
  return -fails("address", socket);
}
int listen(int socket, int backlog) {
  played.listens[socket % 128] = true;
  return -fails("listen", socket, backlog);
}
int accept(int socket) { return made_unless(fails("accept", socket)); }
int connect(int socket, const SocketAddress& peer) {
  return -(fails("connect", socket, peer.host, peer.port) || ntohs(peer.port) == deaf_port);
}
int select(int socket) {
  if (fails("look", socket) || played.is_gone) return -1;
  if (!played.listens[socket % 128]) return !played.pieces(socket).empty();
  return played.looks_in_vain-- <= 0;
}
int recv(int socket, char* bytes, int count) {
  std::vector<std::string>& pieces = played.pieces(socket);
  if (fails("receive", socket, count) || played.is_gone || pieces.empty()) return -played.is_gone;
  const std::string piece = std::move(pieces.front());  // without the heap
  pieces.erase(pieces.begin());
  return static_cast<int>(piece.copy(bytes, count));
}
int send(int socket, const char* bytes, int count) {
  return fails("send", socket, std::string_view(bytes, count)) || played.is_gone ? -1 : count;
}
int _write_socket(int socket, const char* bytes, unsigned n) { return send(socket, bytes, n); }

int gethostbyname(const char* name, SocketAddress* address) {
  return *address = {{9, 8, 7, 6}, 0}, !fails("find", name);
}
int gethostname(char* name, std::size_t size) {
  return std::strcpy(name, "here"), -fails("own name", size);
}
// Not their own inverse, so that one in the place of the other shows.
std::uint16_t htons(std::uint16_t port) { return static_cast<std::uint16_t>(port + 3); }
std::uint16_t ntohs(std::uint16_t port) { return static_cast<std::uint16_t>(port - 3); }

void Sleep(std::uint64_t time) { fails("sleep", time); }
int _getpid() { return 77; }
int CreateProcessA(const char* line) { return !fails("run", line); }
int WinExec(const char* command) { return fails("run", command), std::atoi(command); }

}  // namespace zelvan::platform

namespace {

const int at_first[] = {wipc_connect_timeout, wipc_debug, wipc_nostart, wipc_error_text[0]};
char local[] = "localhost", other[] = "LOCALHOST", here[] = "here", empty[] = "", *null = nullptr;
char module[] = "m", path[] = "/bin/m", missing[] = "x/y", root[] = "/m", *host;
int ports[2], is_local;

char* letters(int n) {  // as the heap is not to be asked
  static std::string most(9000, 'x');
  return most.data() + most.size() - n;
}

// A session's record is released; its sockets are never closed.
void take(Digest& digest, void* handle) {
  auto* const session = static_cast<wipc_session*>(handle);
  digest(session != nullptr);
  if (session == nullptr) return;
  digest(session->session_type, session->sid, session->status_sid);
  release_session(session);
}
void take_connection(Digest& digest, char* on, char* program) {
  digest(wipc_open_connection(on, program, &host, &ports[0], &ports[1], &is_local), host, ports,
         is_local);
}
void take_path(Digest& digest, char* program) {
  const HeapText found(wipc_find_module(program));
  const char* const text = found.get();
  digest(text);
}

wipc_session* new_session(char type) {
  wipc_session* const session = wipc_new_session(data_socket, type);
  if (session != nullptr) session->status_sid = status_socket;
  return session;
}

/// Each operation with the first call refused, the second and so on until none is, and then so with
/// what it asks of the heap: first each request alone and then together with all behind it. A
/// socket that is refused is 0 or less.
void take(Digest& digest, std::initializer_list<void (*)(Digest&)> operations) {
  printed = &digest;
  for (const auto operation : operations) {
    enum { call, call_for_0, request, all_requests };
    for (const auto refused : {call, call_for_0, request, all_requests}) {
      bool was_refused = true;
      for (int nth = 1; was_refused; ++nth) {
        const bool is_call = refused <= call_for_0;
        played = Played();
        played.none = refused == call_for_0 ? 0 : -1;
        played.data = played.status = {"one\0two\0end"s};
        played.refused_call = is_call ? nth : 0;
        host = empty;
        wipc_set_debug(1), wipc_set_nostart(0), wipc_set_connect_timeout(1);
        heap::refuse(is_call ? 0 : nth, refused == all_requests);
        operation(digest);
        wipc_release_bind_sessions();
        was_refused = heap::grant_all() || (is_call && played.calls >= nth);
        digest(heap::blocks_left());
      }
    }
  }
}

const Group opening("wipc.opening", [](Digest& digest) {
  digest(at_first);
  existing = {"/bin/m"};
  char variable[] = "PATH";
  for (std::string value : {"/none:/bin", "/bin/:", ":/bin", "::/bin", "", ":", "a:::/bin:/"}) {
    osh_setenv(variable, value.data());
    take(digest, {[](Digest& d) { take_path(d, module), take_connection(d, local, module); }});
  }
  take(digest,
       {[](Digest& d) { take(d, wipc_open_session(local, module)); },
        [](Digest& d) {
          take_connection(d, local, path), take(d, wipc_accept_connection());
          take(d, wipc_accept_connection());
        },
        [](Digest& d) {
          take(d, wipc_connect_session(other, 1, 65535)), d(wipc_connect_port(local, deaf_port));
          for (const int looks : {0, 1, 2, 3}) {
            wipc_set_connect_timeout(looks > 1 ? 1 : -1), played.looks_in_vain = looks;
            d(wipc_wait_accept(make()));
          }
        },
        [](Digest& d) {  // the longest line, which somebody else can start, and one too long
          wipc_set_debug(0), wipc_set_nostart(-1), d(wipc_connect_timeout);
          for (const int n : {1000, 1001}) {
            take(d, wipc_open_session(local, letters(n))), d(wipc_last_error());
          }
        },
        [](Digest& d) {
          for (const int last : {0, 1}) {
            played.ports[last] = 0, take(d, wipc_open_session(local, module));
            played.ports[last] = 7, take(d, wipc_connect_session(local, last, -last));
            take(d, wipc_connect_session(local, -last, 1));
            d(wipc_wait_accept(last - 1), wipc_poll_socket(last - 1));
          }
          for (const int n : {-1, 0, 3}) d(wipc_check_sockets(n));
        },
        [](Digest& d) {
          for (char* on : {here, other}) take_connection(d, on, path), take_connection(d, on, root);
          for (char* program : {path, missing, root, null, empty}) take_path(d, program);
        },
        [](Digest& d) {
          for (char* none : {null, empty}) {
            take(d, wipc_open_session(none, none)), take(d, wipc_open_session(local, none));
            take_connection(d, none, none), take_connection(d, local, none);
            take(d, wipc_connect_session(none, 1, 1));
          }
          d(wipc_open_connection(local, module, nullptr, ports, ports, ports));
          d(wipc_open_connection(local, module, &host, nullptr, ports, ports));
          d(wipc_open_connection(local, module, &host, ports, nullptr, ports));
          d(wipc_open_connection(local, module, &host, ports, ports, nullptr));
          wipc_bind_primary = wipc_create_bind(ports), take(d, wipc_accept_connection());
          std::swap(wipc_bind_primary, wipc_bind_secondary), take(d, wipc_accept_connection());
        },
        [](Digest& d) {  // of each type; the heap sees to it that there is none, too
          for (const char type : {'P', 'S', 'B'}) {
            wipc_session* const session = new_session(type);
            for (const auto write : {wipc_write, wipc_write_status}) {
              d(write(session, nullptr));
              for (const int n : {0, 1, 3999, 4000, 4001, 9000}) d(write(session, letters(n)));
            }
            d(wipc_sid(session), wipc_status_sid(session), wipc_poll_session(session));
            for (const auto read : {wipc_read, wipc_read_status}) {
              char text[] = "text";
              for (const int length : {-1, 0, 4, 4, 4, 4}) d(read(session, text, length), text);
              d(read(session, nullptr, 4));
            }
            wipc_close_session(session);
            if (type == 'B' && session != nullptr) release_session(session);
          }
        }});
});

// Texts in pieces of about the size that fills a receive, with zeros next to their ends, run
// together and cut, on both channels and at both ends, until the peer has gone or says the end.
const Group messages("wipc.messages", [](Digest& digest) {
  Random random(1);
  printed = &digest;
  wipc_set_debug(1);
  for (int i = 0; i < 1500; ++i) {
    played = Played();
    wipc_session* session = new_session("PSPSPSPB"[i % 8]);
    for (const int socket : {data_socket, status_socket}) {
      for (int n = random.below(6); n > 0; --n) {
        const int size = random.below(3) == 0 ? 3996 + random.below(5) : 1 + random.below(9);
        std::string piece(size, "ab"[random.below(2)]);
        for (int k = random.below(3); k > 0; --k) piece[size - 1 - random.below(size) % 5] = '\0';
        played.pieces(socket).push_back(random.below(20) == 0 ? "SessionClosed" : piece);
      }
    }
    const int lengths[] = {0, 1, 2, 9, 4000, 4001, 4002};
    for (int n = 0; n < 12 && session != nullptr; ++n) {
      played.is_gone = random.below(40) == 0;
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
    if (i % 8 == 7) release_session(session);
  }
});

}  // namespace
