#include <zelvan/osh/detail/fixed_path.h>
#include <zelvan/osh/file_access.h>

#include <cerrno>
#include <climits>
#include <cstring>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/refusing_heap.h>
#include <unistd.h>

namespace {

int calls_until_failure = 0;  // 0: none fails
int failure = 0;              // what the failing call leaves in `errno`
int answer_to_rename = 0;  // of the file system, to a first rename that may not overwrite; 0: go on

bool fails_now() {
  if (calls_until_failure == 0 || --calls_until_failure != 0) return false;
  errno = failure;
  return true;
}

int descriptors_begin = 0;  // what `open` gives is that much higher than it is
int current_drive = 0;
std::string drive_roots;

}  // namespace

// The system calls. A signal cuts short only those that may wait.
#define FAILING(result, name, parameters, arguments, may_wait)        \
  result __real_##name parameters;                                    \
  result __wrap_##name parameters {                                   \
    const bool fails = (may_wait || failure != EINTR) && fails_now(); \
    return fails ? -1 : __real_##name arguments;                      \
  }
extern "C" {
FAILING(int, openat, (int at, const char* p, int flags, mode_t mode), (at, p, flags, mode), true)
FAILING(ssize_t, read, (int fd, void* buffer, std::size_t n), (fd, buffer, n), true)
FAILING(ssize_t, write, (int fd, const void* buffer, std::size_t n), (fd, buffer, n - n / 2), true)
FAILING(int, fchmod, (int fd, mode_t mode), (fd, mode), true)
FAILING(int, fsync, (int fd), (fd), true)
FAILING(int, renameat, (int a, const char* f, int b, const char* t), (a, f, b, t), false)
FAILING(int, unlink, (const char* path), (path), false)
FAILING(int, unlinkat, (int at, const char* path, int flags), (at, path, flags), false)

int __real_open(const char* path, int flags, mode_t mode);
int __wrap_open(const char* path, int flags, mode_t mode) {
  return fails_now() ? -1 : __real_open(path, flags, mode) + descriptors_begin;
}
int __real_close(int fd);
int __wrap_close(int fd) {
  return __real_close(fd - descriptors_begin) != 0 || fails_now() ? -1 : 0;
}

int __real_renameat2(int a, const char* from, int b, const char* to, unsigned flags);
int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
  const int answer = answer_to_rename;
  if (answer == EXDEV) answer_to_rename = 0;  // the copy is renamed within a file system
  if (answer == 0 && failure != EINTR && fails_now()) return -1;
  if (answer == 0) return __real_renameat2(a, from, b, to, flags);
  errno = answer;
  return -1;
}

int __wrap__ZN6zelvan8platform9_getdriveEv() { return current_drive; }
unsigned __wrap__ZN6zelvan8platform23GetLogicalDriveStringsAEjPc(unsigned size, char* roots) {
  if (drive_roots.size() < size) std::memcpy(roots, drive_roots.c_str(), drive_roots.size() + 1);
  return static_cast<unsigned>(drive_roots.size());
}
}

namespace {

using namespace std::string_literals;

// Whichever system call fails, the old files are whole, and what a signal interrupts succeeds.
TEST(FileTransfer, LosesNothingWhateverCallFails) {
  const auto rename = [] { return osh_rename("plain"_c, "new"_c) == 0; };
  const struct {
    bool (*done)();
    std::string after;
    int harmless;  // calls that may fail: to close what was read, and the folder
    int answer = 0;
  } operations[] = {
      {rename, "|12345|abc", 0},
      {rename, "|12345|abc", 2, EXDEV},
      {rename, "|12345|abc", 0, EINVAL},
      {[] { return osh_copyfile("other"_c, "plain"_c) != 0; }, "12345||12345", 2},
      {[] { return osh_copyfile("new"_c, "plain"_c) != 0; }, "12345|12345|abc", 2},
      {[] { return osh_cat("other"_c, "plain"_c) != 0; }, "12345||abc12345", 1},
  };
  for (const auto& operation : operations) {
    for (int why : {EINTR, EIO}) {
      int failed = 0;
      for (int n = 1, fired = 1; fired != 0 && n < 100; ++n) {
        SCOPED_TRACE(testing::Message() << operation.after << operation.answer << why << ' ' << n);
        World world;
        answer_to_rename = operation.answer;
        failure = why;
        calls_until_failure = n;
        const bool done = operation.done();
        fired = calls_until_failure == 0;
        calls_until_failure = 0;
        const std::string state = content("plain") + '|' + content("new") + '|' + content("other");
        EXPECT_TRUE(done ? state == operation.after : state.starts_with("12345||abc")) << state;
        failed += !done;
        EXPECT_LE(entries("."), 9) << "a draft stayed";
        EXPECT_TRUE(fired || failed == (why == EINTR ? 0 : n - 1 - operation.harmless)) << n;
      }
    }
  }
}

// A file system that can't be told to spare a target, and one that the move would leave.
TEST(FileTransfer, OverwritesNothingOnAnyFileSystem) {
  for (const int answer : {ENOSYS, EXDEV}) {
    World world;
    const auto rename = [=](char* from, char* to) {
      answer_to_rename = answer;
      return osh_rename(from, to);
    };
    EXPECT_EQ(rename("other"_c, "plain"_c) + rename("dir"_c, "plain"_c), -2);
    EXPECT_EQ(content("plain") + content("other"), "12345abc");
    EXPECT_EQ(rename("dir"_c, "new"_c), answer == ENOSYS ? 0 : -1);
    EXPECT_TRUE(fs::exists(answer == ENOSYS ? "new/inner" : "dir/inner"));
  }
  answer_to_rename = 0;
}

TEST(FileTransfer, LosesNothingWithoutMemory) {
  World world;
  const auto check = [](bool refused) { EXPECT_EQ(content("other"), refused ? "abc" : "12345"); };
  EXPECT_GT(support::refuse_each_request([] { osh_copyfile("other"_c, "plain"_c); }, check), 0);
}

TEST(FileAccess, RefusesDescriptorsThatDoNotFitShort) {
  World world;
  const int fd = osh_open_binary("plain"_c, 0, 0);
  descriptors_begin = SHRT_MAX - (fd + 1);
  EXPECT_EQ(osh_open_binary("plain"_c, 0, 0), SHRT_MAX);
  EXPECT_EQ(osh_close(SHRT_MAX), 0);
  ++descriptors_begin;
  EXPECT_EQ(osh_open_binary("plain"_c, 0, 0), -1);
  descriptors_begin = 0;
  EXPECT_EQ(osh_open_binary("plain"_c, 0, 0), fd + 1) << "it was refused but left open";
  EXPECT_EQ(osh_close(fd) + osh_close(fd + 1), 0);
}

// How a path without a drive finds one, on a platform that has them; the current drive is C.
TEST(FixPath, SearchesTheDrives) {
  const std::string fits = "\\" + std::string(1020, '/');
  const struct {
    std::string roots;
    std::vector<const char*> existing;
    std::string path, fixed;
  } rows[] = {
      {"C:\\\0D:\\\0"s, {"C:\\f", "D:\\f"}, "\\f", "C:\\f"},
      {"Z:\\\0E:\\\0D:\\\0"s, {"E:\\f", "D:\\f"}, "\\f", "E:\\f"},
      {"a:\\\0b:\\\0B:\\\0"s, {"a:\\f", "b:\\f", "B:\\f"}, "\\f", "B:\\f"},
      {"1:\\\0A:/\0c:\\\0"s, {"1:\\f", "A:\\f", "c:\\f"}, "\\f", "c:\\f"},
      {"D:\\\0\0E:\\\0"s, {"E:\\f", "\\f"}, "\\f", "\\f"},
      {std::string(1024, 'D'), {"D:\\f"}, "\\f", "\\f"},
      {std::string(1020, 'x') + "\0D:\\"s, {"D:\\f"}, "\\f", "\\f"},
      {"D:\\\0"s, {"C:\\\\f", "D:\\\\f"}, "\\\\f", "\\\\f"},
      {"D:\\\0"s, {"D:\\"}, fits, "D:" + fits},
      {"D:\\\0"s, {"D:\\"}, fits + '/', fits + '/'},
  };
  current_drive = 3;
  for (const auto& row : rows) {
    World world;
    for (const char* path : row.existing) fs::create_directory(path);
    drive_roots = row.roots;
    char fixed[zelvan::path_size];
    const short found = zelvan::osh1_fix_path(const_cast<char*>(row.path.c_str()), fixed, 0);
    EXPECT_EQ(fixed, row.fixed) << "row " << &row - rows;
    EXPECT_EQ(found, row.fixed[1] == ':') << "row " << &row - rows;
  }
  current_drive = 0;
}

}  // namespace
