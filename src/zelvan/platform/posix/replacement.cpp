#include <zelvan/platform/posix/replacement.h>
#include <zelvan/platform/posix/retry_interrupted.h>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

constexpr int most_names_tried = 10'000;
constexpr int size_of_link = 40;

/// Writes the path under which the system shows an open file.
void write_link_of(int fd, char (&path)[size_of_link]) {
  std::snprintf(path, sizeof path, "/proc/self/fd/%d", fd);
}

int open_folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
  constexpr int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
  return retry_interrupted([&] { return ::open(folder.c_str(), flags); });
}

}  // namespace

Replacement::Replacement(const std::string& target, mode_t mode)
    : name_(target.substr(target.rfind('/') + 1)),
      folder_(open_folder_of(target)),
      file_(folder_.is_open() ? create(mode) : -1) {
  if (file_.is_open()) ::fstat(file_.get(), &made_);
}

Replacement::~Replacement() {
  const int why = errno;
  if (has_own_name_) ::unlinkat(folder_.get(), own_name_, 0);
  errno = why;
}

/// Calls `make` with one name after the other until one is free, since other threads and processes
/// create such files as well. Returns the result of the last call.
template <typename Make>
int Replacement::make_under_own_name(Make make) {
  int result = -1;
  for (int i = 0; i < most_names_tried; ++i) {
    std::snprintf(own_name_, sizeof own_name_, ".zelvan-%d-%d", ::getpid(), i);
    result = retry_interrupted([&] { return make(own_name_); });
    if (result >= 0 || errno != EEXIST) break;
  }
  has_own_name_ = result >= 0;
  return result;
}

int Replacement::create(mode_t mode) {
  const int nameless = create_nameless(mode);
  if (nameless >= 0) return nameless;
  constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  return make_under_own_name(
      [&](const char* name) { return ::openat(folder_.get(), name, flags, mode); });
}

/// Creates a file without a name. Returns -1 if the file system requires names, or the file
/// couldn't get one later.
int Replacement::create_nameless(mode_t mode) const {
  constexpr int flags = O_WRONLY | O_TMPFILE | O_CLOEXEC;
  Descriptor file(retry_interrupted([&] { return ::openat(folder_.get(), ".", flags, mode); }));
  if (!file.is_open()) return -1;
  char link[size_of_link];
  write_link_of(file.get(), link);
  return ::faccessat(AT_FDCWD, link, F_OK, 0) == 0 ? file.release() : -1;
}

bool Replacement::take_own_name() {
  if (has_own_name_) return true;
  char link[size_of_link];
  write_link_of(file_.get(), link);
  return make_under_own_name([&](const char* name) {
           return ::linkat(AT_FDCWD, link, folder_.get(), name, AT_SYMLINK_FOLLOW);
         }) == 0;
}

bool Replacement::replace_target() {
  if (!take_own_name() || !file_.close()) return false;
  if (::renameat(folder_.get(), own_name_, folder_.get(), name_.c_str()) != 0) {
    const int why = errno;
    const bool is_renamed = look_for(target(), made_) == Found::same;  // see `remove_old_name`
    errno = why;
    if (!is_renamed) return false;
  }
  has_own_name_ = false;
  return true;
}

bool Replacement::become_target() {
  if (!take_own_name() || !file_.close()) return false;
  has_own_name_ = !rename_to_free_name(own(), target());
  return !has_own_name_;
}

bool Replacement::send_name_to_disk() const {
  constexpr int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  const Descriptor readable(retry_interrupted([&] { return ::openat(folder_.get(), ".", flags); }));
  // EINVAL: the folder doesn't support syncing; treated as success.
  if (readable.is_open()) return send_to_disk(readable.get()) || errno == EINVAL;
  ::sync();
  return true;
}

void Replacement::take_back(Name old_name, const struct stat& source) const {
  platform::take_back(target(), made_, old_name, source);
}

bool send_to_disk(int fd) {
  return retry_interrupted([=] { return ::fsync(fd); }) == 0;
}

}  // namespace zelvan::platform
