#include <zelvan/platform/sockets.h>

#include <algorithm>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace platform = zelvan::platform;

void limit_descriptors(rlim_t limit) {
  const rlimit both = {limit, limit};
  setrlimit(RLIMIT_NOFILE, &both);
}

// In a process of its own, whose standard streams are closed.
TEST(PosixSockets, KeepOffTheStandardStreams) {
  const auto count_sockets = [](int limit) {
    for (int fd = 0; fd < 64; ++fd) close(fd);
    limit_descriptors(static_cast<rlim_t>(limit));
    int made = 0;
    while (platform::socket() == made + 3) ++made;
    for (int fd = 0; fd < made + 3; ++fd) {
      if (fcntl(fd, F_GETFD) != (fd < 3 ? -1 : FD_CLOEXEC)) _exit(99);
    }
    _exit(made);
  };
  for (const int limit : {0, 2, 3, 4, 6}) {
    const int expected = std::max(limit - 3, 0);
    EXPECT_EXIT(count_sockets(limit), testing::ExitedWithCode(expected), "") << limit;
  }
}

TEST(PosixSockets, MayHaveAnyNumber) {
  const auto number_1500_waits = [] {
    limit_descriptors(2000);
    const int high = fcntl(platform::socket(), F_DUPFD, 1500);
    return high == 1500 && platform::listen(high, 1) == 0 && platform::select(high) == 0;
  };
  EXPECT_EXIT(_exit(number_1500_waits() ? 0 : 1), testing::ExitedWithCode(0), "");
}
