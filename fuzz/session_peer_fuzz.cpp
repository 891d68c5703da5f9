// The first input byte chooses one of two tests:
//
// - reads from a session whose peer has sent any bytes, in any pieces, on both channels, and has
//   then left. The channels are sockets that keep the pieces apart, so each call receives one
//   piece.
// - opens a session while `zelvan_set_local_sessions_only` is on and peers connect from several
//   addresses. Some of the peers leave at once.
//
// The library's pauses take no time.

#include <zelvan/platform/clock.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "bytes.h"

#include <functional>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

std::function<void()> on_pause = [] {};

}  // namespace

void zelvan::platform::GetLocalTime(LocalTime*) {}
void zelvan::platform::Sleep(std::uint64_t) { on_pause(); }

namespace {

using fuzz::require;

/// One channel, with everything that the peer sent before it left.
class Channel {
 public:
  Channel() { require(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends_) == 0); }
  ~Channel() { close(ends_[1]); }
  Channel(const Channel&) = delete;

  int socket() const { return ends_[0]; }
  const std::string& sent() const { return sent_; }
  int pieces() const { return pieces_; }

  void send(const std::string& piece) {
    if (piece.empty() || pieces_ == 16) return;
    const auto n = ::send(ends_[1], piece.data(), piece.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (n < 0) return;
    ++pieces_;
    sent_ += piece;
  }
  void leave() { shutdown(ends_[1], SHUT_WR); }

 private:
  int ends_[2];
  int pieces_ = 0;
  std::string sent_;
};

/// Reads messages until none can be left, and returns their texts joined together.
template <class Read>
std::string read_all(const Channel& channel, Read read) {
  std::string all;
  char buffer[4003];
  // A message ends at a NUL or with its piece.
  const std::size_t most = channel.sent().size() + static_cast<std::size_t>(channel.pieces()) + 1;
  for (std::size_t i = 0; i < most; ++i) {
    buffer[4002] = '\1';
    const int length = read(buffer, 4002);
    require(buffer[4002] == '\1' && length >= -1 && length <= 4001);
    if (length < 0) break;
    if (length > 0) require(std::strlen(buffer) == static_cast<std::size_t>(length));
    all.append(buffer, static_cast<std::size_t>(length));
  }
  return all;
}

std::string without_nuls(std::string text) {
  std::erase(text, '\0');
  return text;
}

/// Returns a socket at 127.0.0.`last` that has begun to connect to a port of this machine. Closing
/// it resets the connection, so that its own port is free at once.
int connect_from(int last, int port) {
  const auto loopback = [](int number, int port_there) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port_there));
    address.sin_addr.s_addr = htonl(0x7F000000U + static_cast<unsigned>(number));
    return address;
  };
  const int peer = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
  require(peer >= 0);
  const linger at_once{1, 0};
  setsockopt(peer, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  const sockaddr_in own = loopback(last, 0);
  const sockaddr_in there = loopback(1, port);
  require(bind(peer, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0);
  connect(peer, reinterpret_cast<const sockaddr*>(&there),
          sizeof there);  // fails if nothing listens
  return peer;
}

/// Lets peers connect from 127.0.0.1 to 127.0.0.3. Requires that both channels of the session, if
/// one is opened, are connections from 127.0.0.1.
void open_among_others(fuzz::Bytes& bytes) {
  char host[] = "127.0.0.1";
  char module[] = "none";
  char* local_host = nullptr;
  int ports[2];
  int is_local = 0;
  zelvan_set_local_sessions_only(1);
  wipc_set_connect_timeout(4);
  require(wipc_open_connection(host, module, &local_host, &ports[0], &ports[1], &is_local) == 1);
  std::vector<int> peers;
  on_pause = [&] {
    const int code = bytes.byte();
    if (code % 4 == 0) return;  // no peer connects
    const int peer = connect_from(code % 4, ports[code / 4 % 2]);
    const bool leaves = code / 8 % 4 == 3;
    if (leaves) {
      close(peer);
    } else {
      peers.push_back(peer);
    }
  };
  void* session = wipc_accept_connection();
  for (const int socket : {wipc_sid(session), wipc_status_sid(session)}) {
    zelvan::platform::SocketAddress peer{};
    if (session == nullptr) break;
    require(zelvan::platform::getpeername(socket, &peer) == 0);  // fails for a peer that has left
    require(std::memcmp(peer.host, zelvan::platform::loopback.host, sizeof peer.host) == 0);
  }
  for (const int peer : peers) close(peer);
  wipc_close_session(session);
  zelvan::wipc_release_bind_sessions();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const int kind = bytes.below(3);
  if (kind == 2) {
    open_among_others(bytes);
    return 0;
  }
  const bool is_primary = kind == 0;
  Channel channels[2];  // data and status
  while (bytes.left() > 0) {
    const int code = bytes.byte();
    std::string piece = bytes.text(static_cast<std::size_t>(code / 8));
    // Makes a long piece out of few input bytes, by repeating its first byte: 3991 to 4000 bytes.
    // One read of the library takes at most 4000.
    const bool is_long = code % 8 == 4 || code % 8 == 7;
    if (is_long && !piece.empty()) {
      piece.insert(0, std::min<std::size_t>(3990, 4000 - piece.size()), piece.front());
    } else if (code % 8 == 6) {
      piece = "SessionClosed" + piece.substr(0, 1);
    }
    channels[code % 2].send(piece);
  }
  for (Channel& channel : channels) channel.leave();

  zelvan::wipc_session* session = zelvan::wipc_new_session(
      channels[0].socket(), is_primary ? zelvan::primary_end : zelvan::secondary_end);
  require(session != nullptr);
  session->status_sid = channels[1].socket();
  bool is_dead = false;
  const std::string status =
      read_all(channels[1], [&](char* to, int n) { return wipc_read_status(session, to, n); });
  const std::string text = read_all(channels[0], [&](char* to, int n) {
    const int length = wipc_read(session, to, n);
    is_dead = length < 0;
    return length;
  });
  require(is_primary ? !is_dead : status.empty());
  // If texts joined to one message have more than 4001 bytes, the library delivers an empty message
  // in their place. So all text must arrive only if the peer has sent no more than that.
  if (is_primary && channels[1].sent().size() <= 4001) {
    require(status == without_nuls(channels[1].sent()));
  }
  if (!is_dead && channels[0].sent().size() <= 4001) {
    require(text == without_nuls(channels[0].sent()));
  }
  if (!is_dead) wipc_close_session(session);
  if (!is_primary) {  // the end of a session closes no sockets at the secondary
    for (const Channel& channel : channels) close(channel.socket());
  }
  return 0;
}
