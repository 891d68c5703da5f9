#include <zelvan/platform/sockets.h>

#include "support/system.h"

#include <string>

#include <gtest/gtest.h>

namespace {

namespace platform = zelvan::platform;

/// A listening socket of the loopback, and where it is.
int listening(platform::SocketAddress* own) {
  const int socket = platform::socket();
  *own = {};
  EXPECT_EQ(platform::bind(socket, *own) + platform::getsockname(socket, own), 0);
  *own = {{127, 0, 0, 1}, own->port};
  return socket;
}

TEST(Sockets, MeetNobodyWhereNobodyIs) {
  platform::SocketAddress address;
  const int lonely = listening(&address);
  EXPECT_EQ(platform::connect(lonely, address), -1);  // to itself
  platform::closesocket(lonely);
  const int other = platform::socket();
  EXPECT_EQ(platform::connect(other, address), -1);
  EXPECT_EQ(platform::select(other + 1), -1);
  platform::closesocket(other);
}

TEST(Sockets, HaveNamesAndAddresses) {
  platform::SocketAddress address{};
  EXPECT_EQ(platform::gethostbyname("localhost", &address), 1);
  EXPECT_EQ(address.host[0] + address.host[3], 128);
  EXPECT_EQ(platform::gethostbyname(std::string(300, 'x').c_str(), &address), 0);
  char whole[300], cut[] = "~~~~";
  EXPECT_EQ(platform::gethostname(whole, 300) + platform::gethostname(cut, 3), 0);
  EXPECT_EQ(cut, std::string(whole).substr(0, 2));
  EXPECT_EQ(cut[3], '~');
  EXPECT_EQ(platform::htons(0x102), platform::ntohs(0x102));
  EXPECT_EQ(platform::htons(0x102), 0x201);
}

}  // namespace
