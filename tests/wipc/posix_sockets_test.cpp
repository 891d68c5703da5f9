#include <zelvan/platform/sockets.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace platform = zelvan::platform;

// In a process of its own, where the standard streams are open or not. It ends with how many
// sockets it could make: the next number from 3 each, as far as the limit goes.
TEST(PosixSockets, KeepOffTheStandardStreamsAndMayHaveAnyNumber) {
  const auto make_sockets = [](int open, rlim_t descriptors) {
    const rlimit wide{2000, 2000}, narrow{descriptors, descriptors};
    setrlimit(RLIMIT_NOFILE, &wide);
    const int high = fcntl(platform::socket(), F_DUPFD, 1500);
    int made = platform::listen(high, 1) + platform::select(high);  // none yet
    for (int fd = open; fd < 64; ++fd) close(fd);
    setrlimit(RLIMIT_NOFILE, &narrow);
    while (platform::socket() == made + 3) ++made;
    for (int fd = open; fd < 3; ++fd) made += 100 * (fcntl(fd, F_GETFD) != -1);
    _exit(made);
  };
  for (const int n : {0, 1, 2, 3, 4, 5, 6}) {
    for (const int open : {0, 3}) {
      EXPECT_EXIT(make_sockets(open, n), testing::ExitedWithCode(n < 3 ? 0 : n - 3), "");
    }
  }
}
