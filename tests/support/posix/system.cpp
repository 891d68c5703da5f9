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

}  // namespace

namespace support {

fs::path parent_of_folders() {  // where programs must be able to run
  struct statvfs memory;
  const bool in_memory = getenv("TMPDIR") == nullptr && statvfs("/dev/shm", &memory) == 0 &&
                         (memory.f_flag & ST_NOEXEC) == 0;
  return fs::canonical(in_memory ? "/dev/shm" : fs::temp_directory_path());
}

bool make_link(const char* target, const char* name) { return symlink(target, name) == 0; }

bool make_read_only(const char* directory) { return chmod(directory, 0555) == 0; }

int open_descriptors() {
  return static_cast<int>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

std::size_t heap_in_use() {
#ifdef __GLIBC__
  return mallinfo2().uordblks;
#else
  return static_cast<unsigned>(mallinfo().uordblks);
#endif
}

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

std::string own_path() {
#ifdef START_EMULATED
  set_environment("EMULATED", program_invocation_name);  // whole, as ctest has it
  return START_EMULATED;
#else
  return fs::read_symlink("/proc/self/exe");
#endif
}

char* guarded_pages(std::size_t size) {
  void* const pages = mmap(nullptr, whole_pages(size) + page, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  char* const guard = static_cast<char*>(pages) + whole_pages(size);
  if (mprotect(guard, page, PROT_NONE) != 0) std::abort();
  return guard;
}

void release_guarded_pages(char* guard, std::size_t size) {
  munmap(guard - whole_pages(size), whole_pages(size) + page);
}

}  // namespace support
