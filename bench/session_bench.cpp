// Measures messages between two processes: round trips and bytes per second through a session,
// compared with bare TCP sockets on the loopback.
//
// The far end is a forked process that sends back what it receives. A session keeps the boundaries
// of texts only if each is answered before the next is sent. The bare sockets do the same, so both
// make the same number of round trips.

#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

char localhost[] = "localhost";

// A pair of processes that echoes through a session.
class SessionPair {
 public:
  SessionPair() {
    char module[] = "/bin/sh";  // must exist, but is not started: the fork below is the secondary
    char* local_host = nullptr;
    int data = 0, status = 0, is_local = 0;
    if (wipc_open_connection(localhost, module, &local_host, &data, &status, &is_local) == 0) {
      throw std::runtime_error("no connection");
    }
    far_end_ = fork();
    if (far_end_ == 0) echo(wipc_connect_session(localhost, data, status));
    session_ = wipc_accept_connection();
    if (session_ == nullptr) throw std::runtime_error("no session");
  }
  ~SessionPair() {
    wipc_close_session(session_);
    waitpid(far_end_, nullptr, 0);
  }

  bool round_trip(std::string& text) {
    if (wipc_write(session_, text.data()) == 0) return false;
    for (std::size_t got = 0; got < text.size();) {
      const int n = wipc_read(session_, buffer_, sizeof buffer_);
      if (n <= 0) return false;
      got += static_cast<std::size_t>(n);
    }
    return text.compare(0, text.size(), buffer_) == 0;
  }

 private:
  [[noreturn]] static void echo(void* session) {
    char text[WIPC_MAX_MESSAGE + 2];
    while (wipc_read(session, text, sizeof text) > 0) wipc_write(session, text);
    _exit(0);
  }

  pid_t far_end_;
  void* session_;
  char buffer_[WIPC_MAX_MESSAGE + 2];
};

// A pair of processes that echoes through bare sockets, with send and recv.
class BarePair {
 public:
  BarePair() {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any_address = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener, any_address, size) != 0 || listen(listener, 1) != 0 ||
        getsockname(listener, any_address, &size) != 0) {
      throw std::runtime_error("no listener");
    }
    far_end_ = fork();
    if (far_end_ == 0) echo(any_address, size);
    socket_ = accept(listener, nullptr, nullptr);
    close(listener);
  }
  ~BarePair() {
    close(socket_);
    waitpid(far_end_, nullptr, 0);
  }

  bool round_trip(std::string& text) {
    if (send(socket_, text.data(), text.size(), 0) < 0) return false;
    std::size_t got = 0;
    while (got < text.size()) {
      const ssize_t n = recv(socket_, buffer_ + got, sizeof buffer_ - got, 0);
      if (n <= 0) return false;
      got += static_cast<std::size_t>(n);
    }
    return text.compare(0, text.size(), buffer_, text.size()) == 0;
  }

 private:
  [[noreturn]] static void echo(const sockaddr* primary, socklen_t size) {
    const int peer = socket(AF_INET, SOCK_STREAM, 0);
    if (connect(peer, primary, size) != 0) _exit(1);
    char text[WIPC_MAX_MESSAGE + 2];
    for (ssize_t n; (n = recv(peer, text, sizeof text, 0)) > 0;) {
      if (send(peer, text, static_cast<std::size_t>(n), 0) < 0) _exit(1);
    }
    _exit(0);
  }

  pid_t far_end_;
  int socket_;
  char buffer_[WIPC_MAX_MESSAGE + 2];
};

template <class Pair>
void round_trips(benchmark::State& state) {
  Pair pair;
  std::string text(static_cast<std::size_t>(state.range(0)), 'z');
  for (auto _ : state) {
    if (!pair.round_trip(text)) return state.SkipWithError("the text didn't come back");
  }
  state.SetItemsProcessed(state.iterations());
  state.SetBytesProcessed(2 * state.range(0) * state.iterations());
}

// 3998 bytes are the longest text that the peer always delivers at once. The end of a longer one
// can be taken for a part of a text, and the reader waits for the rest.
BENCHMARK_TEMPLATE(round_trips, SessionPair)
    ->Name("round_trip/zelvan")
    ->ArgName("bytes")
    ->Arg(1)
    ->Arg(100)
    ->Arg(3998)
    ->UseRealTime();
BENCHMARK_TEMPLATE(round_trips, BarePair)
    ->Name("round_trip/bare socket")
    ->ArgName("bytes")
    ->Arg(1)
    ->Arg(100)
    ->Arg(3998)
    ->UseRealTime();

}  // namespace
