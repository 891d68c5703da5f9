#include <zelvan/osh/file_access.h>

#include <string>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <process.h>
#include <windows.h>

namespace {

DWORD replace_error, flush_error, undo_error, delete_error;  // each is 0 to make the real call
int deletes_to_fail;

}  // namespace

// A program calls an imported function through a pointer named __imp_ and the function. --wrap
// makes the library use these pointers, whose functions can fail as documented.
extern "C" {
extern decltype(&::ReplaceFileW) __real___imp_ReplaceFileW;
extern decltype(&::MoveFileExW) __real___imp_MoveFileExW;
extern decltype(&::DeleteFileW) __real___imp_DeleteFileW;
extern decltype(&::FlushFileBuffers) __real___imp_FlushFileBuffers;

decltype(&::ReplaceFileW) __wrap___imp_ReplaceFileW =
    [](LPCWSTR target, LPCWSTR copy, LPCWSTR backup, DWORD flags, LPVOID a, LPVOID b) -> BOOL {
  if (replace_error == 0) return __real___imp_ReplaceFileW(target, copy, backup, flags, a, b);
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

const std::string others = "dir=inner empty= locked=safe (read-only) ";
const std::string before = others + "other=abc plain=12345 ";

TEST(Copies, LoseNothingWhenTheyCannotTakeTheirPlace) {
  const auto expect = [](DWORD error, DWORD no_undo, const std::string& after) {
    SCOPED_TRACE(error);
    const World world;
    replace_error = error;
    undo_error = no_undo;
    errno = 0;
    EXPECT_EQ(osh_copyfile("other"_c, "plain"_c) != 0, error == 0);
    EXPECT_EQ(errno != 0, error != 0);
    undo_error = 0;
    EXPECT_EQ(files(), after);
  };
  expect(0, 0, others + "other=12345 plain=12345 ");
  expect(ERROR_ACCESS_DENIED, 0, before);
  expect(ERROR_UNABLE_TO_MOVE_REPLACEMENT_2, 0, before);
  const std::string draft = ".zelvan-" + std::to_string(_getpid()) + "-0";
  expect(ERROR_UNABLE_TO_MOVE_REPLACEMENT_2, ERROR_ACCESS_DENIED,
         draft + ".old=abc " + draft + "=12345 " + others + "plain=12345 ");
}

TEST(Moves, ToAnotherDriveReachTheDiskBeforeTheSourceGoes) {
  const std::string gone = "dir=inner empty= other=abc plain=12345 ";
  const std::string moved = "moved=safe (read-only) ";
  const auto expect = [&](DWORD no_flush, DWORD no_delete, int deletes, const std::string& here,
                          const std::string& there, const char* why) {
    SCOPED_TRACE(why);
    const World world;
    fs::create_directory("Q:\\folder");
    flush_error = no_flush;
    delete_error = no_delete;
    deletes_to_fail = deletes;
    EXPECT_EQ(osh_rename("locked"_c, "Q:\\folder\\moved"_c), here == gone ? 0 : -1);
    flush_error = 0;
    deletes_to_fail = 0;
    EXPECT_EQ(files(), here);
    EXPECT_EQ(files("Q:\\folder"), there);
    osh_chmod("Q:\\folder\\moved"_c, 0200);
    fs::remove_all("Q:\\folder");
  };
  expect(0, 0, 0, gone, moved, "nothing fails");
  expect(ERROR_DISK_FULL, 0, 0, before, "", "the content does not reach the disk");
  expect(0, ERROR_SHARING_VIOLATION, 1, before, "", "somebody has the source open");
  expect(0, ERROR_ACCESS_DENIED, 2, before, "moved=safe ",
         "nor can the copy be deleted, now writable");
  expect(0, ERROR_FILE_NOT_FOUND, 1, gone, moved, "the source goes, the answer is lost");
}

}  // namespace
