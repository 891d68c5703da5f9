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

/// Lets the process have so many descriptors while it lives.
class Limit {
 public:
  explicit Limit(rlim_t descriptors) {
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit limit{descriptors, before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  ~Limit() { setrlimit(RLIMIT_NOFILE, &before_); }

 private:
  rlimit before_;
};

// With no standard stream open, so that each number below 3 is free, and up to three above them.
TEST(PosixSockets, KeepOffTheStandardStreams) {
  const auto made_below = [](int limit) {
    for (int fd = 0; fd < 64; ++fd) close(fd);
    const Limit few(static_cast<rlim_t>(limit));
    int made = 0;
    while (platform::socket() == made + 3) ++made;
    for (int fd = 0; fd < 3; ++fd) made += 100 * (fcntl(fd, F_GETFD) != -1);
    _exit(made);
  };
  for (const int limit : {0, 1, 2, 3, 4, 5, 6}) {
    EXPECT_EXIT(made_below(limit), testing::ExitedWithCode(std::max(0, limit - 3)), "");
  }
}

TEST(PosixSockets, SendAtOnceAndHaveAnyNumber) {
  const Limit many(2000);
  const int made = platform::socket();
  int at_once = 0;
  socklen_t size = sizeof at_once;
  EXPECT_EQ(getsockopt(made, IPPROTO_TCP, TCP_NODELAY, &at_once, &size), 0);
  EXPECT_EQ(at_once, 1);
  const int high = fcntl(made, F_DUPFD, 1500);
  EXPECT_EQ(platform::listen(high, 1) + platform::select(high), 0);
  for (const int socket : {made, high}) platform::closesocket(socket);
}

}  // namespace
