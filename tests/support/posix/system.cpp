#include "support/system.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <sys/mman.h>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t page = 0x10000;  // a multiple of all page sizes

std::size_t whole_pages(std::size_t size) { return (size + page - 1) / page * page; }

}  // namespace

namespace support {

int open_descriptors() {
  return static_cast<int>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

bool is_inherited(int fd) { return (fcntl(fd, F_GETFD) & FD_CLOEXEC) == 0; }

void set_environment(const char* name, const char* value) {
  value != nullptr ? setenv(name, value, 1) : unsetenv(name);
}

std::string language() { return {}; }

std::string own_path() {
#ifdef START_EMULATED
  set_environment("EMULATED", program_invocation_name);  // the whole path, as ctest passes it
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
