#include <zelvan/osh/file_access.h>

#include <set>
#include <string>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <process.h>
#include <windows.h>

namespace {

DWORD replace_error, undo_error;  // 0: the system's own answer

}  // namespace

// What a program imports it calls through a pointer of this kind, and the linker passes these to
// the library. Each plays a failure as the system's documentation tells it.
extern "C" {
extern decltype(&::ReplaceFileW) __real___imp_ReplaceFileW;
extern decltype(&::MoveFileExW) __real___imp_MoveFileExW;

decltype(&::ReplaceFileW) __wrap___imp_ReplaceFileW =
    [](LPCWSTR target, LPCWSTR copy, LPCWSTR backup, DWORD flags, LPVOID a, LPVOID b) -> BOOL {
  if (replace_error == 0) return __real___imp_ReplaceFileW(target, copy, backup, flags, a, b);
  if (replace_error == ERROR_UNABLE_TO_MOVE_REPLACEMENT && backup == nullptr) {
    ::DeleteFileW(target);
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
}

namespace {

/// Every file with what is in it, in order, the process's number left out.
std::string files() {
  std::set<std::string> lines;
  const std::string id = "-" + std::to_string(_getpid());
  for (const auto& entry : fs::directory_iterator(".")) {
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

}  // namespace
