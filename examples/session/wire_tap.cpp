#include "session/wire_tap.h"

#include "common/error.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace example {

namespace {

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// Connects, with repeats: the primary listens for its second connection only after the first.
int connect_to(int port) {
  for (int attempt = 0; attempt < 60; ++attempt) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
      return socket;
    }
    close(socket);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return -1;
}

std::string escaped(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    char hexadecimal[8];
    std::snprintf(hexadecimal, sizeof hexadecimal, "\\x%02x", byte);
    const bool is_plain = byte >= 0x20 && byte < 0x7f && c != '\\';
    text += is_plain ? std::string(1, c) : hexadecimal;
  }
  return text;
}

// One direction of one stream.
struct Flow {
  int from;
  int to;
  const char* name;
};

// Relays one chunk. Returns false if no more can follow.
bool pass_on(const Flow& flow) {
  char chunk[4096];
  const ssize_t size = recv(flow.from, chunk, sizeof chunk, 0);
  if (size <= 0) {
    shutdown(flow.to, SHUT_WR);
    return false;
  }
  const std::string_view bytes(chunk, static_cast<std::size_t>(size));
  std::printf("%s %4zd bytes: %s\n", flow.name, size, escaped(bytes).c_str());
  std::fflush(stdout);
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t n = send(flow.to, chunk + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (n <= 0) return false;
    sent += static_cast<std::size_t>(n);
  }
  return true;
}

bool wait_for(int socket, int stop) {
  pollfd waited[] = {{socket, POLLIN, 0}, {stop, POLLIN, 0}};
  return poll(waited, std::size(waited), -1) > 0 && waited[1].revents == 0;
}

}  // namespace

WireTap::Listener WireTap::listen_on_loopback() {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  auto* const any_address = reinterpret_cast<sockaddr*>(&address);
  if (socket < 0 || bind(socket, any_address, size) != 0 || listen(socket, 1) != 0 ||
      getsockname(socket, any_address, &size) != 0) {
    throw Error(std::string("--raw: can't open a socket: ") + std::strerror(errno));
  }
  return {socket, ntohs(address.sin_port)};
}

WireTap::WireTap(int primary_data_port, int primary_status_port)
    : data_(listen_on_loopback()),
      status_(listen_on_loopback()),
      stop_(eventfd(0, EFD_CLOEXEC)),
      thread_([=, this] { run(primary_data_port, primary_status_port); }) {}

WireTap::~WireTap() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(stop_, &one, sizeof one);
  thread_.join();
  for (const int fd : {data_.socket, status_.socket, stop_}) close(fd);
}

void WireTap::run(int primary_data_port, int primary_status_port) {
  int far_end[2] = {-1, -1};   // connections with the secondary: data, status
  int near_end[2] = {-1, -1};  // connections with the primary
  const std::pair<const Listener&, int> roads[] = {{data_, primary_data_port},
                                                   {status_, primary_status_port}};
  for (int i = 0; i < 2; ++i) {
    if (!wait_for(roads[i].first.socket, stop_)) break;
    far_end[i] = accept4(roads[i].first.socket, nullptr, nullptr, SOCK_CLOEXEC);
    near_end[i] = connect_to(roads[i].second);
  }

  Flow flows[] = {{near_end[0], far_end[0], "data   primary -> secondary"},
                  {far_end[0], near_end[0], "data   secondary -> primary"},
                  {far_end[1], near_end[1], "status secondary -> primary"}};
  int open = near_end[1] < 0 ? 0 : 3;
  while (open > 0) {
    pollfd waited[4] = {{stop_, POLLIN, 0}};
    for (int i = 0; i < 3; ++i) waited[i + 1] = {flows[i].from, POLLIN, 0};
    if (poll(waited, std::size(waited), -1) < 0 || waited[0].revents != 0) break;
    for (int i = 0; i < 3; ++i) {
      if (waited[i + 1].revents == 0 || pass_on(flows[i])) continue;
      flows[i].from = -1;  // poll ignores negative descriptors
      --open;
    }
  }
  for (const int socket : {far_end[0], far_end[1], near_end[0], near_end[1]}) {
    if (socket >= 0) close(socket);
  }
}

}  // namespace example
