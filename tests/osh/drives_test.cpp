// A machine with drives of the test's own making: the source is compiled here once more, in a
// namespace whose platform is the one below.
#define zelvan machine_with_drives
#include <zelvan/osh/detail/fixed_path.cpp>
#undef zelvan

#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace machine_with_drives::platform {

int drive, opened;
unsigned roots_length;
std::string roots;
std::set<std::string> existing;
std::string asked;  // all that the platform was asked for

int _access(const char* path, int mode) {
  asked += path + std::string(mode + 1, ' ');
  return existing.contains(path) ? 0 : -1;
}
int _getdrive() { return drive; }
unsigned GetLogicalDriveStringsA(unsigned size, char* list) {
  asked += std::to_string(size) + ' ';
  std::memcpy(list, roots.c_str(), roots.size() + 1);
  return roots_length != 0 ? roots_length - 1 : static_cast<unsigned>(roots.size());
}
bool IsCharAlphaA(char c) { return (c | 32) >= 'a' && (c | 32) <= 'z'; }
int _open(const char* path, int flags, int mode) {
  asked += "open " + std::string(path) + std::to_string(10 * flags + mode);
  return opened;
}
int _close(int fd) { return asked += " close " + std::to_string(fd), 0; }
std::FILE* fopen(const char* path, const char* mode) {
  return asked += std::string(path) + mode, nullptr;
}

}  // namespace machine_with_drives::platform

namespace {

using namespace machine_with_drives;

TEST(Drives, AreSearchedForARootedPathAndItsFileIsOpened) {
  using namespace std::string_literals;
  const std::string roots = "1:\\\0C:\\\0a:\\\0b:\\\0c|\\\0e:/\0B:\\\0D:\\\0z:\\\0"s;
  const std::string fitting = '\\' + std::string(1020, 'x'), longer = fitting + 'x';
  const std::string everywhere = "C:\\x 1024 C:\\x B:\\x D:\\x z:\\x ";
  const struct {
    int drive;
    unsigned roots_length;  // 0: of the roots as they are, else one less
    std::string path, existing, fixed, asked;
  } rows[] = {
      {3, 0, "\\x", "C:\\x", "C:\\x", "C:\\x "},
      {26, 0, "\\x", "C:\\x", "C:\\x", "Z:\\x 1024 C:\\x "},
      {3, 0, "\\x", "D:\\x", "D:\\x", "C:\\x 1024 C:\\x B:\\x D:\\x "},
      {3, 0, "\\x", "z:\\x", "z:\\x", everywhere},
      {3, 0, "\\x", "a:\\x", "", everywhere},
      {3, 0, "\\x", "\\x", "", everywhere},
      {3, 1, "\\x", "D:\\x", "", "C:\\x 1024 "},
      {3, 1024, "\\x", "B:\\x", "B:\\x", "C:\\x 1024 C:\\x B:\\x "},
      {3, 1025, "\\x", "B:\\x", "", "C:\\x 1024 "},
      {3, 0, fitting, "C:" + fitting, "C:" + fitting, "C:" + fitting + ' '},
      {3, 0, longer, "C:" + longer.substr(0, 1021), "", "1024 "},
      {3, 0, "\\\\host\\x", "\\\\host\\x", "\\\\host\\x", "\\\\host\\x "},
      {3, 0, "x", "C:x", "", "x "},
      {0, 0, "\\x", "\\x", "\\x", "\\x "},
  };
  platform::roots = roots;
  char mode[] = " mode", too_long[1025] = "";
  std::memset(too_long, 'x', 1024);
  for (const auto& [drive, length, path, existing, fixed, asked] : rows) {
    platform::drive = drive;
    platform::roots_length = length;
    platform::existing = {existing};
    char found[path_size] = "#", *given = const_cast<char*>(path.c_str());
    const auto expect_asked = [&asked = asked](const std::string& also) {
      EXPECT_EQ(std::exchange(platform::asked, ""), asked + also);
    };
    EXPECT_EQ(osh1_fix_path(given, found, 0), !fixed.empty());
    EXPECT_EQ(found, fixed.empty() ? path : fixed);
    expect_asked("");
    for (const int fd : {-1, 32767, 32768}) {
      platform::opened = fd;
      errno = 0;
      EXPECT_EQ(osh1_open(given, 5, 6), fd > 32767 ? -1 : fd);
      EXPECT_EQ(errno, fd > 32767 ? EMFILE : 0);
      expect_asked("open " + std::string(found) + (fd > 32767 ? "56 close 32768" : "56"));
    }
    osh1_fopen(given, mode);
    expect_asked(found + std::string(mode));
  }
  for (char* unusable : {static_cast<char*>(nullptr), +too_long}) {
    char fixed[path_size] = "#";
    EXPECT_EQ(osh1_fix_path(unusable, fixed, 0) + osh1_open(unusable, 0, 0), -1);
    EXPECT_EQ(fixed + std::to_string(errno), std::to_string(unusable ? ENAMETOOLONG : EINVAL));
  }
  EXPECT_EQ(platform::asked, "");
}

}  // namespace
