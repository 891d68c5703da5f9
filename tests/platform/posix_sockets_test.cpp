#include <zelvan/platform/sockets.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace platform = zelvan::platform;

// In a process of its own, whose standard streams are closed. It ends with how many sockets it
// could make: the next number from 3 each, as far as the limit goes.
TEST(PosixSockets, KeepOffTheStandardStreamsAndMayHaveAnyNumber) {
  const auto make_sockets = [](rlim_t descriptors) {
    const rlimit wide{2000, 2000}, narrow{descriptors, descriptors};
    setrlimit(RLIMIT_NOFILE, &wide);
    const int high = fcntl(platform::socket(), F_DUPFD, 1500);
    int made = platform::listen(high, 1) + platform::select(high);  // none yet
    for (int fd = 0; fd < 64; ++fd) close(fd);
    setrlimit(RLIMIT_NOFILE, &narrow);
    while (platform::socket() == made + 3) ++made;
    int wrong = 0;
    for (int fd = 0; fd < made + 3; ++fd) wrong += fcntl(fd, F_GETFD) != (fd < 3 ? -1 : FD_CLOEXEC);
    _exit(made + 100 * wrong);
  };
  for (const int n : {0, 1, 2, 3, 4, 5, 6}) {
    EXPECT_EXIT(make_sockets(n), testing::ExitedWithCode(n < 3 ? 0 : n - 3), "");
  }
}
