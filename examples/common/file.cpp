#include "common/file.h"

#include <zelvan/osh/file_access.h>
#include <zelvan/osh/paths.h>

#include "common/error.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace example {

namespace {

constexpr std::size_t path_size = 1024;  // that utl_unique_filename requires
constexpr short from_start = 0;
constexpr short new_file = osh_open_write_only | osh_open_create | osh_open_exclusive;

struct Closer {
  void operator()(std::FILE* file) const { osh_fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

[[noreturn]] void fail(const std::string& path, const char* what) {
  throw Error(path + ": " + what + ": " + std::strerror(errno));
}

File open(std::string path, char mode) {
  char modes[] = {mode, '\0'};
  return File(osh_fopen_binary(path.data(), modes));
}

bool put(const std::string& path, const std::string& bytes) {
  File file = open(path, 'w');
  if (file == nullptr) return false;
  std::string_view rest = bytes;
  while (!rest.empty()) {
    // osh_fwrite takes a 32-bit count
    const std::size_t count = std::min<std::size_t>(rest.size(), 1 << 30);
    char* const block = const_cast<char*>(rest.data());  // osh_fwrite only reads it
    if (osh_fwrite(block, 1, static_cast<unsigned>(count), file.get()) != count) return false;
    rest.remove_prefix(count);
  }
  return osh_fclose(file.release()) == 0;  // may be the first to report a full disk
}

// Creates an empty file with a free name and returns the name; empty if that fails.
std::string claim(std::string prefix, std::string letters) {
  constexpr int for_all = 0666;  // without the permissions that the umask removes
  char name[path_size];
  while (utl_unique_filename(prefix.data(), letters.data(), name) == 0) {
    const int fd = osh_open_binary(name, new_file, for_all);
    if (fd >= 0 && osh_close(fd) == 0) return name;
    const int reason = errno;
    const bool is_taken = osh_file_exists(name) != 0;  // another program took the name
    errno = reason;
    if (!is_taken) return {};
  }
  errno = EEXIST;
  return {};
}

}  // namespace

std::string read_file(const std::string& path) {
  File file = open(path, 'r');
  if (file == nullptr) fail(path, "can't be opened");
  std::string bytes;
  std::size_t got;
  char buffer[1 << 16];
  while ((got = osh_fread(buffer, 1, sizeof buffer, file.get())) > 0) bytes.append(buffer, got);
  if (osh_feof(file.get()) == 0) fail(path, "can't be read");
  return bytes;
}

std::string read_file_part(const std::string& path, std::size_t offset, std::size_t size) {
  File file = open(path, 'r');
  if (file == nullptr) fail(path, "can't be opened");
  std::string bytes(size, '\0');
  if (osh_fseek(file.get(), static_cast<long>(offset), from_start) != 0) {
    fail(path, "can't be read again");
  }
  const auto count = static_cast<unsigned>(size);
  if (count != size || osh_fread(bytes.data(), 1, count, file.get()) != count) {
    throw Error(path + ": has changed while it was in use");
  }
  return bytes;
}

void write_file(const std::string& path, const std::string& bytes) {
  const HeldInterrupts held;
  std::string beside = claim(path + ".", "AAA.part");
  std::string target = path;
  const bool is_put = !beside.empty() && put(beside, bytes);
  if (is_put && osh_rename(beside.data(), target.data()) == 0) return;
  // osh_rename overwrites nothing. If there is a file of that name, osh_copyfile replaces it, so
  // that at any time it has the old content or the new one.
  const bool has_replaced = is_put && osh_copyfile(target.data(), beside.data()) != 0;
  const int reason = errno;
  if (!beside.empty()) osh_unlink(beside.data());
  errno = reason;
  if (!has_replaced) fail(path, "can't be written");
}

void finish_output() {
  if (std::fflush(stdout) != 0) fail("standard output", "can't be written");
  if (std::ferror(stdout) != 0) throw Error("standard output: can't be written");
}

HeldInterrupts::HeldInterrupts() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
  pthread_sigmask(SIG_BLOCK, &held, &before_);
}

HeldInterrupts::~HeldInterrupts() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

FreeName::FreeName(const std::string& prefix, const std::string& letters)
    : path_(claim(prefix, letters)) {
  if (path_.empty()) fail(prefix + letters, "can't be created, nor any name after it");
}

FreeName::~FreeName() {
  if (!is_kept_) osh_unlink(path_.data());
}

}  // namespace example
