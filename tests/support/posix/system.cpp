#include "support/system.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t page = 0x10000;  // or the largest that there is

std::size_t whole_pages(std::size_t size) { return (size + page - 1) / page * page; }

/// In memory where there is some: tests ask much of a disk. Programs must be able to run there.
std::string make_folder() {
  struct statvfs memory;
  const bool in_memory = getenv("TMPDIR") == nullptr && statvfs("/dev/shm", &memory) == 0 &&
                         (memory.f_flag & ST_NOEXEC) == 0;
  const fs::path parent = in_memory ? "/dev/shm" : fs::temp_directory_path();
  std::string name = fs::canonical(parent) / "zelvan-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) std::abort();
  return name;
}

}  // namespace

namespace support {

TemporaryFolder::TemporaryFolder() : path(make_folder()) { fs::current_path(path); }

TemporaryFolder::~TemporaryFolder() {
  fs::current_path("/");
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (fs::is_directory(entry.symlink_status())) {
      fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add);
    }
  }
  fs::remove_all(path);
}

bool make_link(const char* target, const char* name) { return symlink(target, name) == 0; }

bool make_read_only(const char* directory) { return chmod(directory, 0555) == 0; }

int open_descriptors() {
  return static_cast<int>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

std::size_t heap_in_use() { return mallinfo2().uordblks; }

bool is_inherited(int fd) { return (fcntl(fd, F_GETFD) & FD_CLOEXEC) == 0; }

void set_environment(const char* name, const char* value) {
  value != nullptr ? setenv(name, value, 1) : unsetenv(name);
}

int set_time_zone(int hours_east) {
  set_environment("TZ", ("HERE" + std::to_string(-hours_east)).c_str());
  return hours_east;
}

std::string language() { return {}; }

const char* const log_prefix = "/tmp/logQelt-";

void for_every_user(const std::function<void()>& check) {
  check();
  if (geteuid() != 0) return;
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    EXPECT_EQ(setgid(nobody) + setuid(nobody), 0);
    check();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure());
  }
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << "failed for the other user";
}

std::string own_path() { return fs::read_symlink("/proc/self/exe"); }

char* guarded_pages(std::size_t size) {
  const std::size_t usable = whole_pages(size);
  void* const pages =
      mmap(nullptr, usable + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (pages == MAP_FAILED) std::abort();
  char* const guard = static_cast<char*>(pages) + usable;
  if (mprotect(guard, page, PROT_NONE) != 0) std::abort();
  return guard;
}

void release_guarded_pages(char* guard, std::size_t size) {
  munmap(guard - whole_pages(size), whole_pages(size) + page);
}

}  // namespace support
