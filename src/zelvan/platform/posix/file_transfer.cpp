#include <zelvan/detail/heap_text.h>
#include <zelvan/platform/file_transfer.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/posix/access_list.h>
#include <zelvan/platform/posix/descriptor.h>
#include <zelvan/platform/posix/renames.h>
#include <zelvan/platform/posix/replacement.h>
#include <zelvan/platform/posix/retry_interrupted.h>
#include <zelvan/platform/posix/status.h>

#include <cerrno>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

constexpr mode_t all_mode_bits = 07777;
constexpr mode_t permission_bits = 0777;
constexpr mode_t private_file = S_IRUSR | S_IWUSR;

bool refuse(int why) {
  errno = why;
  return false;
}

bool check_regular(const struct stat& status) {
  if (S_ISREG(status.st_mode)) return true;
  return refuse(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
}

/// Opens a regular file to be copied. Returns -1 for anything else, without opening it: opening and
/// closing a FIFO would lose what others write into it. If another process has a lease on the file,
/// waits until it is released.
int open_source(const char* path, struct stat* status) {
  if (::stat(path, status) != 0 || !check_regular(*status)) return -1;
  Descriptor file(retry_interrupted([=] { return ::open(path, O_RDONLY | O_NOCTTY | O_CLOEXEC); }));
  const bool is_usable =
      file.is_open() && ::fstat(file.get(), status) == 0 && check_regular(*status);
  return is_usable ? file.release() : -1;
}

bool copy_content(int from, int to) {
#if defined(__linux__)
  // The kernel copies as much as it can. The loop below copies the rest, or fails with the reason.
  constexpr std::size_t most_at_once = std::size_t{1} << 30;
  while (::copy_file_range(from, nullptr, to, nullptr, most_at_once, 0) > 0) {
  }
#endif
  char buffer[64 * 1024];
  for (;;) {
    const int got = _read(from, buffer, sizeof buffer);
    if (got <= 0) return got == 0;
    if (_write(to, buffer, static_cast<unsigned>(got)) != got) return false;
  }
}

/// Returns `mode` with the group's rights reduced to those of others.
mode_t without_group(mode_t mode) {
  const mode_t rights_of_others = (mode & S_IRWXO) << 3;
  return mode & (rights_of_others | ~static_cast<mode_t>(S_IRWXG));
}

/// Sets a file's permissions and access list to `mode` and `list`, and its owner and group to those
/// of `other` if the system allows it.
///
/// The order matters: a new owner clears set-ID bits, and a list changes the permissions of the
/// group.
bool set_owner_and_permissions(int fd, const struct stat& other, mode_t mode,
                               const AccessList& list) {
  const auto set_owner = [&](uid_t owner) {
    return retry_interrupted([&] { return ::fchown(fd, owner, other.st_gid); }) == 0;
  };
  constexpr uid_t unchanged = static_cast<uid_t>(-1);
  const bool has_owner = set_owner(other.st_uid);
  const bool has_group = has_owner || set_owner(unchanged);
  // If the owner can't be set, set-ID bits would let programs run with the wrong identity, so they
  // are cleared. If the group can't be set, the file's group gets no more rights than others have.
  const mode_t kept = has_owner ? mode : mode & permission_bits;
  const mode_t allowed = has_group ? kept : without_group(kept);
  if (!list.apply_to(fd)) return false;
  if (retry_interrupted([&] { return ::fchmod(fd, allowed); }) == 0) return true;
  // On some file systems the mount sets the permissions of all files, and they can't be changed.
  // That is no failure if they are the wanted ones.
  const int why = errno;
  struct stat status;
  if (::fstat(fd, &status) == 0 && (status.st_mode & all_mode_bits) == allowed) return true;
  return refuse(why);
}

bool check_replaceable(const char* path, const struct stat& status, const struct stat& source) {
  if (is_same_file(status, source)) return refuse(EINVAL);
  if (!check_regular(status)) return false;
  if (is_read_only(status)) return refuse(EACCES);
  return ::faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) == 0;
}

bool copy_over(int from, const struct stat& source, const char* target, const struct stat& old) {
  AccessList list;
  if (!check_replaceable(target, old, source) || !list.read(target)) return false;
  Replacement copy(target, private_file);  // private until it has the permissions of the old file
  return copy.is_open() && copy_content(from, copy.file()) &&
         set_owner_and_permissions(copy.file(), old, old.st_mode & permission_bits, list) &&
         // If the rename reached the disk before the content, a power failure would lose both
         // contents.
         send_to_disk(copy.file()) && copy.replace_target();
}

bool copy_to_new_name(int from, const struct stat& source, const char* target) {
  AccessList list;
  if (!list.read(from)) return false;
  Replacement copy(target, list.mode_without_list(source.st_mode) & permission_bits);
  return copy.is_open() && copy_content(from, copy.file()) && copy.replace_target();
}

/// Copies the file, sends the copy and its name to the disk, and only then removes the source.
bool move_to_other_file_system(const char* from, const char* to) {
  struct stat status;
  if (::lstat(from, &status) != 0) return false;
  if (!S_ISREG(status.st_mode)) return refuse(EXDEV);
  const Descriptor in(open_source(from, &status));
  AccessList list;
  if (!in.is_open() || !list.read(in.get())) return false;
  Replacement copy(to, private_file);
  const timespec times[] = {status.st_atim, status.st_mtim};
  if (!copy.is_open() || !copy_content(in.get(), copy.file()) ||
      !set_owner_and_permissions(copy.file(), status, status.st_mode & all_mode_bits, list) ||
      ::futimens(copy.file(), times) != 0 || !send_to_disk(copy.file()) || !copy.become_target()) {
    return false;
  }
  const Name old_name = {AT_FDCWD, from};
  if (copy.send_name_to_disk() && remove_old_name(old_name, status)) return true;
  copy.take_back(old_name, status);
  return false;
}

}  // namespace

int CopyFileA(const char* from, const char* to) try {
  struct stat source;
  const Descriptor in(open_source(from, &source));
  if (!in.is_open()) return 0;
  struct stat old;
  if (::lstat(to, &old) != 0) return errno == ENOENT && copy_to_new_name(in.get(), source, to);
  if (!S_ISLNK(old.st_mode)) return copy_over(in.get(), source, to, old);
  const HeapText target(::realpath(to, nullptr));
  return target != nullptr && ::stat(target.get(), &old) == 0 &&
         copy_over(in.get(), source, target.get(), old);
} catch (const std::bad_alloc&) {
  return refuse(ENOMEM);
}

int MoveFileA(const char* from, const char* to) try {
  return rename_to_free_name({AT_FDCWD, from}, {AT_FDCWD, to}) ||
         (errno == EXDEV && move_to_other_file_system(from, to));
} catch (const std::bad_alloc&) {
  return refuse(ENOMEM);
}

}  // namespace zelvan::platform
