// A machine with drives of the test's own making: the source is compiled here once more, in a
// namespace whose platform is the one below.
#define zelvan machine_with_drives
#include <zelvan/osh/detail/fixed_path.cpp>
#undef zelvan

#include <set>
#include <string>

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

TEST(Drives, AreSearchedForARootedPath) {
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
  for (const auto& row : rows) {
    platform::drive = row.drive;
    platform::roots = roots;
    platform::roots_length = row.roots_length;
    platform::existing = {row.existing};
    platform::asked.clear();
    char fixed[path_size] = "#";
    const std::string& expected = row.fixed.empty() ? row.path : row.fixed;
    EXPECT_EQ(osh1_fix_path(const_cast<char*>(row.path.c_str()), fixed, 0), !row.fixed.empty());
    EXPECT_EQ(platform::asked, row.asked);
    EXPECT_EQ(fixed, expected);
    for (const int fd : {-1, 32767, 32768}) {
      platform::asked.clear();
      platform::opened = fd;
      errno = 0;
      EXPECT_EQ(osh1_open(const_cast<char*>(row.path.c_str()), 5, 6), fd > 32767 ? -1 : fd);
      EXPECT_EQ(platform::asked,
                row.asked + "open " + expected + "56" + (fd > 32767 ? " close 32768" : ""));
      EXPECT_EQ(errno, fd > 32767 ? EMFILE : 0);
    }
    platform::asked.clear();
    char mode[] = " mode";
    osh1_fopen(const_cast<char*>(row.path.c_str()), mode);
    EXPECT_EQ(platform::asked, row.asked + expected + mode);
  }
  platform::asked.clear();
  std::string too_long(1024, 'x');
  for (char* path : {static_cast<char*>(nullptr), too_long.data()}) {
    char fixed[path_size] = "#";
    EXPECT_EQ(osh1_fix_path(path, fixed, 0) + osh1_open(path, 0, 0), -1);
    EXPECT_EQ(fixed + std::to_string(errno), std::to_string(path ? ENAMETOOLONG : EINVAL));
  }
  EXPECT_EQ(platform::asked, "");
}

}  // namespace
