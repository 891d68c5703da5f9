/// The platform below the sessions as tests play it, linked in the place of the real one. Sockets
/// are numbers beyond 16 bits, what peers send stands written down, and nothing waits.
///
/// Each call is told on standard output, sockets as letters in the order of their making.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>

struct FakeSocket {
  bool is_open = false;
  int looks_in_vain = -1;            ///< until a connection is there; below 0: none can be
  std::deque<std::string> arriving;  ///< pieces; a receive gives what is left of one
};

struct FakePlatform {
  bool tells = true;
  int refused_call = 0;   ///< this one of those that can fail does, from 1; told behind "\n!"
  int looks_in_vain = 0;  ///< at each listening socket
  int deaf_port = 0;      ///< connections to it are refused
  std::uint16_t ports[2] = {1, 65535};  ///< of the bound sockets, in turn
  int calls = 0, bound = 0, made = 0;
  std::array<FakeSocket, 26> sockets{};

  int make() { return sockets.at(made).is_open = true, 40000 + made++; }
  FakeSocket& at(int socket) { return sockets.at(socket - 40000); }
  char letter(int socket) { return 'A' + (&at(socket) - sockets.data()); }
};
inline FakePlatform fake;
