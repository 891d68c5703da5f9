#include <zelvan/platform/sockets.h>

#include <algorithm>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

namespace platform = zelvan::platform;

/// In a process of its own: no descriptor is open and these may be. Ends with how many sockets
/// could be made, each with the next number from 3, and fails if anything has a lower one.
[[noreturn]] void make_sockets(rlim_t descriptors) {
  for (int fd = 0; fd < 64; ++fd) close(fd);
  const rlimit limit{descriptors, descriptors};
  setrlimit(RLIMIT_NOFILE, &limit);
  int made = 0;
  while (platform::socket() == made + 3) ++made;
  for (int fd = 0; fd < 3; ++fd) made += 100 * (fcntl(fd, F_GETFD) != -1);
  _exit(made);
}

TEST(PosixSockets, KeepOffTheStandardStreams) {
  for (const int descriptors : {0, 1, 2, 3, 4, 5, 6}) {
    EXPECT_EXIT(make_sockets(descriptors), testing::ExitedWithCode(std::max(0, descriptors - 3)),
                "");
  }
}

TEST(PosixSockets, SendAtOnceAndHaveAnyNumber) {
  const rlimit many{2000, 2000};
  const int made = platform::socket();
  int at_once = 0;
  socklen_t size = sizeof at_once;
  EXPECT_EQ(getsockopt(made, IPPROTO_TCP, TCP_NODELAY, &at_once, &size), 0);
  EXPECT_EQ(at_once, 1);
  EXPECT_EXIT(
      {
        setrlimit(RLIMIT_NOFILE, &many);
        const int high = fcntl(made, F_DUPFD, 1500);
        _exit(platform::listen(high, 1) + platform::select(high) + 7);
      },
      testing::ExitedWithCode(7), "");
  platform::closesocket(made);
}

}  // namespace
