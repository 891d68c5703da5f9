#include <zelvan/platform/posix/access_list.h>

#include <cerrno>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace zelvan::platform {
namespace {

constexpr const char* attribute = "system.posix_acl_access";
constexpr std::size_t largest_attribute = 64 * 1024;  // the system's limit

// The format: a version of four bytes, then entries of eight bytes. An entry is a tag (2 bytes,
// lower first), permissions (2 bytes) and the number of a user or group (4 bytes).
constexpr std::size_t header_size = 4;
constexpr std::size_t entry_size = 8;
constexpr char owning_group = 0x04;  // a tag

/// Reads `errno` after a failed call: returns true if the file has no list, or the file system
/// supports none.
bool is_missing() { return errno == ENODATA || errno == EOPNOTSUPP || errno == ENOSYS; }

/// Reads a list by one of the system's calls.
template <typename Call>
bool read_by(Call call, std::string* bytes) {
  char buffer[largest_attribute];
  const ssize_t size = call(buffer, sizeof buffer);
  bytes->assign(buffer, size > 0 ? static_cast<std::size_t>(size) : 0);
  return size >= 0 || is_missing();
}

}  // namespace

bool AccessList::read(int fd) {
  return read_by([=](char* to, std::size_t room) { return ::fgetxattr(fd, attribute, to, room); },
                 &bytes_);
}

bool AccessList::read(const char* path) {
  return read_by([=](char* to, std::size_t room) { return ::getxattr(path, attribute, to, room); },
                 &bytes_);
}

bool AccessList::apply_to(int fd) const {
  if (bytes_.empty()) return ::fremovexattr(fd, attribute) == 0 || is_missing();
  return ::fsetxattr(fd, attribute, bytes_.data(), bytes_.size(), 0) == 0;
}

mode_t AccessList::mode_without_list(mode_t mode) const {
  mode_t group = S_IRWXG;
  for (std::size_t i = header_size; i + entry_size <= bytes_.size(); i += entry_size) {
    if (bytes_[i] == owning_group) group = static_cast<mode_t>(bytes_[i + 2] & 7) << 3;
  }
  return mode & (group | ~static_cast<mode_t>(S_IRWXG));
}

}  // namespace zelvan::platform
