#include <zelvan/osh/file_access.h>

#include <set>
#include <string>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <process.h>
#include <windows.h>

namespace {

DWORD replace_error, flush_error, undo_error, delete_error;  // each is 0 to make the real call
int deletes_to_fail;

}  // namespace

// A program calls an imported function through a pointer named __imp_ and the function. The
// linker's option --wrap makes the library use these pointers, whose functions can fail as
// documented.
extern "C" {
extern decltype(&::ReplaceFileW) __real___imp_ReplaceFileW;
extern decltype(&::MoveFileExW) __real___imp_MoveFileExW;
extern decltype(&::DeleteFileW) __real___imp_DeleteFileW;
extern decltype(&::FlushFileBuffers) __real___imp_FlushFileBuffers;

decltype(&::ReplaceFileW) __wrap___imp_ReplaceFileW =
    [](LPCWSTR target, LPCWSTR copy, LPCWSTR backup, DWORD flags, LPVOID a, LPVOID b) -> BOOL {
  if (replace_error == 0) return __real___imp_ReplaceFileW(target, copy, backup, flags, a, b);
  if (replace_error == ERROR_UNABLE_TO_MOVE_REPLACEMENT && backup == nullptr) {
    __real___imp_DeleteFileW(target);
  }
  if (replace_error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) {
    __real___imp_MoveFileExW(target, backup != nullptr ? backup : L"elsewhere", 0);
  }
  ::SetLastError(replace_error);
  return FALSE;
};

decltype(&::MoveFileExW) __wrap___imp_MoveFileExW = [](LPCWSTR from, LPCWSTR to, DWORD flags) {
  ::SetLastError(undo_error);
  return undo_error == 0 ? __real___imp_MoveFileExW(from, to, flags) : FALSE;
};

decltype(&::DeleteFileW) __wrap___imp_DeleteFileW = [](LPCWSTR path) {
  const bool fails = deletes_to_fail > 0 && deletes_to_fail-- > 0;
  // With this error, the file is deleted, but the call still reports failure.
  const bool deletes = !fails || delete_error == ERROR_FILE_NOT_FOUND;
  const BOOL done = deletes && __real___imp_DeleteFileW(path);
  if (fails) ::SetLastError(delete_error);
  return fails ? FALSE : done;
};

decltype(&::FlushFileBuffers) __wrap___imp_FlushFileBuffers = [](HANDLE file) {
  ::SetLastError(flush_error);
  return flush_error == 0 ? __real___imp_FlushFileBuffers(file) : FALSE;
};
}

namespace {

/// Returns the sorted files of a folder with their content, without the process's number.
std::string files(const std::string& folder = ".") {
  std::set<std::string> lines;
  const std::string id = "-" + std::to_string(_getpid());
  for (const auto& entry : fs::directory_iterator(folder)) {
    std::string name = entry.path().filename().string();
    if (name.starts_with(".zelvan" + id)) name.erase(7, id.size());
    if (entry.is_regular_file()) lines.insert(name + '=' + content(entry.path().string()));
  }
  std::string all;
  for (const std::string& line : lines) all += line + ' ';
  return all;
}

TEST(Copies, LoseNothingWhenTheyCannotTakeTheirPlace) {
  const std::string before = "locked=safe other=abc plain=12345 ";
  const struct {
    DWORD error, undo_error;
    std::string after;
  } rows[] = {
      {0, 0, "locked=safe other=12345 plain=12345 "},
      {ERROR_ACCESS_DENIED, 0, before},
      {ERROR_UNABLE_TO_REMOVE_REPLACED, 0, before},
      {ERROR_UNABLE_TO_MOVE_REPLACEMENT, 0, before},
      {ERROR_UNABLE_TO_MOVE_REPLACEMENT_2, 0, before},
      {ERROR_UNABLE_TO_MOVE_REPLACEMENT_2, ERROR_ACCESS_DENIED,
       ".zelvan-0.old=abc .zelvan-0=12345 locked=safe plain=12345 "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.error);
    World world;
    replace_error = row.error;
    undo_error = row.undo_error;
    errno = 0;
    EXPECT_EQ(osh_copyfile("other"_c, "plain"_c) != 0, row.error == 0);
    EXPECT_EQ(errno != 0, row.error != 0);
    replace_error = 0;
    undo_error = 0;
    EXPECT_EQ(files(), row.after);
  }
}

TEST(Moves, ToAnotherDriveReachTheDiskBeforeTheSourceGoes) {
  const std::string before = "locked=safe other=abc plain=12345 ", moved = "other=abc plain=12345 ";
  const struct {
    DWORD flush_error, delete_error;
    int deletes_to_fail;
    std::string here, there;
    const char* why;
  } rows[] = {
      {0, 0, 0, moved, "moved=safe ", "nothing fails"},
      {ERROR_DISK_FULL, 0, 0, before, "", "the content does not reach the disk"},
      {0, ERROR_SHARING_VIOLATION, 1, before, "", "somebody has the source open"},
      {0, ERROR_ACCESS_DENIED, 2, before, "moved=safe ", "the copy can't be deleted either"},
      {0, ERROR_FILE_NOT_FOUND, 1, moved, "moved=safe ", "the source goes, the answer is lost"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    World world;
    fs::create_directory("Q:\\folder");
    flush_error = row.flush_error;
    delete_error = row.delete_error;
    deletes_to_fail = row.deletes_to_fail;
    EXPECT_EQ(osh_rename("locked"_c, "Q:\\folder\\moved"_c), row.here == moved ? 0 : -1);
    flush_error = 0;
    deletes_to_fail = 0;
    EXPECT_EQ(files(), row.here);
    EXPECT_EQ(files("Q:\\folder"), row.there);
    char* const still_read_only = row.here == moved ? "Q:\\folder\\moved"_c : "locked"_c;
    EXPECT_EQ(osh_file_access(still_read_only, 1) - osh_file_access(still_read_only, 2), 1);
    osh_chmod("Q:\\folder\\moved"_c, 0200);
    fs::remove_all("Q:\\folder");
  }
}

}  // namespace
