#include <zelvan/platform/file_transfer.h>
#include <zelvan/platform/windows/handle.h>
#include <zelvan/platform/windows/last_error.h>
#include <zelvan/platform/windows/system_path.h>

#include <cwchar>
#include <new>
#include <string>

#include <process.h>

namespace zelvan::platform {
namespace {

constexpr int most_names_tried = 10'000;

bool refuse(DWORD why) {
  ::SetLastError(why);
  return false;
}

/// Opens the file that the path leads to; links are followed.
HANDLE open_existing(const wchar_t* path, DWORD access) {
  return ::CreateFileW(path, access, share_all, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

/// Fails for a device or pipe: the source and the target of a copy must be files on a disk.
bool check_on_disk(HANDLE file) {
  return ::GetFileType(file) == FILE_TYPE_DISK || refuse(ERROR_INVALID_PARAMETER);
}

bool is_read_only(const wchar_t* path) {
  const DWORD attributes = ::GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool make_writable(const std::wstring& path) {
  return ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

bool is_there(const std::wstring& path) {
  return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Deletes a file, even a read-only one. Keeps the reason of an earlier failure.
void remove(const std::wstring& path) {
  const DWORD why = ::GetLastError();
  make_writable(path);
  ::DeleteFileW(path.c_str());
  ::SetLastError(why);
}

/// Returns the absolute path of an open file, with links resolved; empty on failure.
std::wstring path_of(HANDLE file) {
  std::wstring path(::GetFinalPathNameByHandleW(file, nullptr, 0, 0), L'\0');
  const auto size = static_cast<DWORD>(path.size());
  path.resize(size != 0 ? ::GetFinalPathNameByHandleW(file, path.data(), size, 0) : 0);
  return path;
}

/// A complete copy of a file under a temporary name, in the directory of `target`, which it is to
/// replace. If it has not replaced or become the target, the destructor deletes it.
class Replacement {
 public:
  /// Copies the source to a free name, since other threads and processes create such files as well.
  /// The name of the backup must be free, too: a file of that name would be lost.
  Replacement(const wchar_t* source, const std::wstring& target) : target_(target) {
    const std::wstring folder = target_.substr(0, target_.rfind(L'\\') + 1);
    for (int i = 0; i < most_names_tried; ++i) {
      own_name_ = folder + L".zelvan-" + std::to_wstring(::_getpid()) + L'-' + std::to_wstring(i);
      if (is_there(backup())) continue;
      has_own_name_ = ::CopyFileW(source, own_name_.c_str(), TRUE);
      if (has_own_name_ || ::GetLastError() != ERROR_FILE_EXISTS) return;
    }
  }

  ~Replacement() {
    if (has_own_name_) remove(own_name_);
  }

  bool is_complete() const { return has_own_name_; }

  /// Sends the content to the disk. Clears the copy's attributes first, since a read-only file
  /// could not be opened for that.
  bool send_to_disk() {
    if (!make_writable(own_name_)) return false;
    const Handle file(open_existing(own_name_.c_str(), GENERIC_WRITE));
    return file.is_open() && ::FlushFileBuffers(file.get());
  }

  bool set_attributes(DWORD attributes) {
    return ::SetFileAttributesW(own_name_.c_str(), attributes);
  }

  /// Replaces an existing target and takes over its permissions.
  bool replace_target() {
    // If the new name reached the disk before the content, a power failure would lose both
    // contents.
    if (!send_to_disk()) return false;
    if (::ReplaceFileW(target_.c_str(), own_name_.c_str(), backup().c_str(),
                       REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
      has_own_name_ = false;
      remove(backup());
      return true;
    }
    put_target_back();
    return false;
  }

  /// Renames the copy to the target, which must not exist unless the flags allow it.
  bool become_target(DWORD flags) {
    has_own_name_ = !::MoveFileExW(own_name_.c_str(), target_.c_str(), flags);
    return !has_own_name_;
  }

 private:
  /// Returns the name that the target gets before the copy replaces it. Without a backup the system
  /// deletes the target; if the second step then failed, both files would be lost.
  std::wstring backup() const { return own_name_ + L".old"; }

  /// Undoes a replacement that failed between its two steps. If that fails as well, both files keep
  /// their present names: either may be the only one with its content.
  void put_target_back() {
    const DWORD why = ::GetLastError();
    if (!is_there(target_) && !::MoveFileExW(backup().c_str(), target_.c_str(), 0)) {
      has_own_name_ = false;
    }
    ::SetLastError(why);
  }

  const std::wstring target_;
  std::wstring own_name_;
  bool has_own_name_ = false;
};

bool copy_file(const wchar_t* from, const wchar_t* to) {
  const Handle source(open_existing(from, GENERIC_READ));
  if (!source.is_open() || !check_on_disk(source.get())) return false;
  if (is_read_only(to)) return refuse(ERROR_ACCESS_DENIED);
  std::wstring target;
  {
    // The right to delete is asked for so that this fails if others have the file open in a mode in
    // which it can't be replaced.
    const Handle old(open_existing(to, GENERIC_WRITE | DELETE));
    if (!old.is_open()) {
      if (::GetLastError() != ERROR_FILE_NOT_FOUND) return false;
      // A link that leads nowhere would be replaced by a file: refuse it.
      if (::GetFileAttributesW(to) != INVALID_FILE_ATTRIBUTES) return refuse(ERROR_FILE_NOT_FOUND);
      Replacement copy(from, to);
      return copy.is_complete() && copy.become_target(MOVEFILE_REPLACE_EXISTING);
    }
    if (!check_on_disk(old.get())) return false;
    if (is_same_file(source.get(), old.get())) return refuse(ERROR_INVALID_PARAMETER);
    target = path_of(old.get());
  }
  if (target.empty()) return false;
  Replacement copy(from, target);
  return copy.is_complete() && copy.replace_target();
}

bool move_to_other_drive(const wchar_t* from, const wchar_t* to) {
  const DWORD attributes = ::GetFileAttributesW(from);
  if (attributes == INVALID_FILE_ATTRIBUTES) return false;
  if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) != 0) {
    return refuse(ERROR_NOT_SAME_DEVICE);
  }
  Replacement copy(from, to);
  if (!copy.is_complete() || !copy.send_to_disk() || !copy.set_attributes(attributes) ||
      !copy.become_target(MOVEFILE_WRITE_THROUGH)) {
    return false;
  }
  if (make_writable(from) && ::DeleteFileW(from)) return true;
  const DWORD why = ::GetLastError();
  if (is_there(from)) {
    ::SetFileAttributesW(from, attributes);
    remove(to);  // removes the copy, since the source could not be deleted
    return refuse(why);
  }
  // On a network the answer to a deletion can get lost. Unless the source is gone, both names stay.
  return ::GetLastError() == ERROR_FILE_NOT_FOUND || refuse(why);
}

bool move_file(const wchar_t* from, const wchar_t* to) {
  // The system treats a file's own name as free, so that its case can be changed.
  if (std::wcscmp(from, to) == 0) return refuse(ERROR_ALREADY_EXISTS);
  if (::MoveFileExW(from, to, 0)) return true;
  return ::GetLastError() == ERROR_NOT_SAME_DEVICE && move_to_other_drive(from, to);
}

}  // namespace

int CopyFileA(const char* from, const char* to) try {
  return with_errno(copy_file(SystemPath(from).get(), SystemPath(to).get()));
} catch (const std::bad_alloc&) {
  errno = ENOMEM;
  return 0;
}

int MoveFileA(const char* from, const char* to) try {
  return with_errno(move_file(SystemPath(from).get(), SystemPath(to).get()));
} catch (const std::bad_alloc&) {
  errno = ENOMEM;
  return 0;
}

}  // namespace zelvan::platform
