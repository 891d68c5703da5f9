#include "common/file.h"

#include "common/error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include <unistd.h>

namespace example {

namespace {

struct Closer {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

[[noreturn]] void fail(const std::string& path, const char* what) {
  throw Error(path + ": " + what + ": " + std::strerror(errno));
}

bool put(const std::string& path, const std::string& bytes) {
  File file(std::fopen(path.c_str(), "wbx"));
  if (file == nullptr) return false;
  const bool is_written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  return std::fclose(file.release()) == 0 && is_written;  // a full disk may show only here
}

}  // namespace

std::string read_file(const std::string& path) {
  File file(std::fopen(path.c_str(), "rb"));
  if (file == nullptr) fail(path, "can't be opened");
  std::string bytes;
  std::size_t got;
  char buffer[1 << 16];
  while ((got = std::fread(buffer, 1, sizeof buffer, file.get())) > 0) bytes.append(buffer, got);
  if (std::ferror(file.get())) fail(path, "can't be read");
  return bytes;
}

void write_file(const std::string& path, const std::string& bytes) {
  const std::string beside = path + "." + std::to_string(getpid()) + ".part";
  if (put(beside, bytes) && std::rename(beside.c_str(), path.c_str()) == 0) return;
  const int reason = errno;
  std::remove(beside.c_str());
  errno = reason;
  fail(path, "can't be written");
}

}  // namespace example
