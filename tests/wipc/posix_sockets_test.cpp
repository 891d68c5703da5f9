#include <zelvan/platform/sockets.h>

#include <algorithm>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

namespace platform = zelvan::platform;

void limit(rlim_t descriptors) {
  const rlimit both{descriptors, descriptors};
  setrlimit(RLIMIT_NOFILE, &both);
}

// In a process of its own, where those are open or none is. It ends with how many sockets it could
// make: the next number from 3 each, as far as the limit goes.
TEST(PosixSockets, KeepOffTheStandardStreams) {
  const auto make_sockets = [](int open, int descriptors) {
    for (int fd = open; fd < 64; ++fd) close(fd);
    limit(descriptors);
    int made = 0;
    while (platform::socket() == made + 3) ++made;
    for (int fd = open; fd < 3; ++fd) made += 100 * (fcntl(fd, F_GETFD) != -1);
    _exit(made);
  };
  for (const int n : {0, 1, 2, 3, 4, 5, 6}) {
    for (const int open : {0, 3}) {
      EXPECT_EXIT(make_sockets(open, n), testing::ExitedWithCode(std::max(0, n - 3)), "");
    }
  }
}

TEST(PosixSockets, MayHaveAnyNumber) {
  const auto look = [] {
    limit(2000);
    const int high = fcntl(platform::socket(), F_DUPFD, 1500);
    _exit(7 + platform::listen(high, 1) + platform::select(high));
  };
  EXPECT_EXIT(look(), testing::ExitedWithCode(7), "");
}

}  // namespace
