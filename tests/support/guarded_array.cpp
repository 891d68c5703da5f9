#include "support/guarded_array.h"

#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace support {

GuardedBlock::GuardedBlock(std::size_t size, Flush flush) {
  const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t usable = (size + page - 1) / page * page;
  pages_size_ = usable + page;
  pages_ = mmap(nullptr, pages_size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (pages_ == MAP_FAILED) std::abort();
  std::memset(pages_, 0xA5, pages_size_);
  char* const first = static_cast<char*>(pages_);
  char* const guard = flush == Flush::at_end ? first + usable : first;
  data_ = flush == Flush::at_end ? guard - size : guard + page;
  if (mprotect(guard, page, PROT_NONE) != 0) std::abort();
}

GuardedBlock::~GuardedBlock() { munmap(pages_, pages_size_); }

}  // namespace support
