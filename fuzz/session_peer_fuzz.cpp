// A session whose peer sends any bytes, in any pieces, on both channels, and is gone afterwards.
// The channels are sockets that keep the pieces apart, so that each is one read off the wire.

#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "bytes.h"

#include <sys/socket.h>
#include <unistd.h>

namespace {

using fuzz::require;

/// What a peer has sent on one channel before it left.
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

/// Takes messages until there can be none left, and gives their texts in a row.
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const bool is_primary = bytes.below(2) == 0;
  Channel channels[2];  // data and status
  while (bytes.left() > 0) {
    const int code = bytes.byte();
    std::string piece = bytes.text(static_cast<std::size_t>(code / 8));
    // Pieces about as long as the reader's buffer, out of few bytes.
    if (code % 8 == 7 && !piece.empty()) {
      piece.insert(0, 3990 - 2 * piece.size(), piece.front());
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
  // Texts that are too long together are lost, so only little of it has to be there whole.
  if (is_primary && channels[1].sent().size() <= 4001) {
    require(status == without_nuls(channels[1].sent()));
  }
  if (!is_dead && channels[0].sent().size() <= 4001) {
    require(text == without_nuls(channels[0].sent()));
  }
  if (!is_dead) wipc_close_session(session);
  if (!is_primary) {  // the secondary's sockets stay open
    for (const Channel& channel : channels) close(channel.socket());
  }
  return 0;
}
