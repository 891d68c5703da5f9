#include <zelvan/osh/file_access.h>

#include <cerrno>
#include <functional>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/refusing_heap.h>
#include <unistd.h>

namespace {

int calls_until_failure = 0;  // 0: none fails
int failure = 0;              // what the failing call leaves in `errno`
int answer_to_rename = 0;  // of the file system, to a first rename that may not overwrite; 0: go on

/// A signal cuts short only those calls that may wait.
bool fails_now(bool may_wait = true) {
  if (failure == EINTR && !may_wait) return false;
  if (calls_until_failure == 0 || --calls_until_failure != 0) return false;
  errno = failure;
  return true;
}

}  // namespace

// The linker puts these in the place of the system calls.
#define FAILING(result, name, parameters, arguments, may_wait) \
  result __real_##name parameters;                             \
  result __wrap_##name parameters { return fails_now(may_wait) ? -1 : __real_##name arguments; }
extern "C" {
FAILING(int, open, (const char* p, int flags, mode_t mode), (p, flags, mode), true)
FAILING(int, openat, (int at, const char* p, int flags, mode_t mode), (at, p, flags, mode), true)
FAILING(ssize_t, read, (int fd, void* buffer, std::size_t n), (fd, buffer, n), true)
FAILING(ssize_t, write, (int fd, const void* buffer, std::size_t n), (fd, buffer, n - n / 2), true)
FAILING(int, fchmod, (int fd, mode_t mode), (fd, mode), true)
FAILING(int, fsync, (int fd), (fd), true)
FAILING(int, renameat, (int a, const char* f, int b, const char* t), (a, f, b, t), false)
FAILING(int, unlink, (const char* path), (path), false)
FAILING(int, unlinkat, (int at, const char* path, int flags), (at, path, flags), false)

int __real_close(int fd);
int __wrap_close(int fd) { return __real_close(fd) != 0 || fails_now() ? -1 : 0; }
int __real_renameat2(int a, const char* from, int b, const char* to, unsigned flags);
int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
  const int answer = answer_to_rename;
  if (answer == EXDEV) answer_to_rename = 0;  // the copy is renamed within a file system
  if (answer == 0) return fails_now(false) ? -1 : __real_renameat2(a, from, b, to, flags);
  errno = answer;
  return -1;
}
}

namespace {

// Whichever system call fails, the old files are whole, and what a signal interrupts succeeds.
TEST(FileTransfer, LosesNothingWhateverCallFails) {
  struct Operation {
    char *from, *to;
    std::string after;  // what is in `plain`, in `new` and in `other`
    int harmless;       // calls that may fail: to close what was read, and the folder
    int answer = 0;
    std::function<bool(char*, char*)> done = [](char* f, char* t) { return osh_rename(f, t) == 0; };
  };
  const Operation operations[] = {
      {"plain"_c, "new"_c, "|12345|abc", 0},
      {"plain"_c, "new"_c, "|12345|abc", 2, EXDEV},
      {"plain"_c, "new"_c, "|12345|abc", 0, EINVAL},
      {"dir"_c, "new"_c, "12345|inner|abc", 0, ENOSYS},
      {"other"_c, "plain"_c, "", 0, ENOSYS},
      {"dir"_c, "plain"_c, "", 0, ENOSYS},
      {"other"_c, "plain"_c, "", 0, EXDEV},
      {"dir"_c, "new"_c, "", 0, EXDEV},
      {"link"_c, "new"_c, "", 0, EXDEV},
      {"other"_c, "plain"_c, "12345||12345", 2, 0, osh_copyfile},
      {"new"_c, "plain"_c, "12345|12345|abc", 2, 0, osh_copyfile},
      {"other"_c, "plain"_c, "12345||abc12345", 1, 0, osh_cat},
  };
  for (const Operation& operation : operations) {
    for (const int why : {EINTR, EIO}) {
      int failed = 0;
      for (int n = 1, fired = 1; fired != 0 && n < 100; ++n) {
        SCOPED_TRACE(testing::Message() << &operation - operations << ' ' << why << ' ' << n);
        World world;
        answer_to_rename = operation.answer;
        failure = why;
        calls_until_failure = n;
        const bool done = operation.done(operation.from, operation.to);
        fired = calls_until_failure == 0;
        calls_until_failure = answer_to_rename = 0;
        const std::string state = content("plain") + '|' + content("new") + '|' + content("other");
        EXPECT_TRUE(done ? state == operation.after : state.starts_with("12345||abc")) << state;
        EXPECT_LE(entries("."), 9) << "a draft stayed";
        failed += !done;
        const int expected = why == EINTR ? 0 : n - 1 - operation.harmless;
        EXPECT_TRUE(fired || operation.after.empty() || failed == expected) << failed;
      }
    }
  }
}

TEST(FileTransfer, LosesNothingWithoutMemory) {
  World world;
  const auto check = [](bool refused) { EXPECT_EQ(content("other"), refused ? "abc" : "12345"); };
  EXPECT_GT(support::refuse_each_request([] { osh_copyfile("other"_c, "plain"_c); }, check), 0);
}

}  // namespace
