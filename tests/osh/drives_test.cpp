// On which drive a rooted path is found. The source is compiled here once more, in a namespace
// whose platform is a machine with drives of the test's own making.
#define zelvan machine_with_drives
#include <zelvan/osh/detail/fixed_path.cpp>
#undef zelvan

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace machine_with_drives::platform {

int drive;
std::string roots;
std::set<std::string> existing;

int _access(const char* path, int) { return existing.contains(path) ? 0 : -1; }
int _getdrive() { return drive; }
unsigned GetLogicalDriveStringsA(unsigned, char* list) {
  std::memcpy(list, roots.c_str(), roots.size() + 1);
  return static_cast<unsigned>(roots.size());
}
bool IsCharAlphaA(char c) { return (c | 32) >= 'a' && (c | 32) <= 'z'; }
int _open(const char*, int, int) { return -1; }
int _close(int) { return -1; }
std::FILE* fopen(const char*, const char*) { return nullptr; }

}  // namespace machine_with_drives::platform

namespace {

using namespace std::string_literals;
namespace machine = machine_with_drives;

TEST(Drives, AreSearchedInTheirOrderAfterTheCurrentOne) {
  const std::string roots = "C:\\\0D:\\\0a:\\\0B:\\\0"s;
  const struct {
    int drive;
    std::string roots;
    std::set<std::string> existing;
    std::string path, fixed;
    int is_found;
    const char* why;
  } rows[] = {
      {4, roots, {"C:\\x", "D:\\x"}, "\\x", "D:\\x", 1, "the current drive comes first"},
      {4, roots, {"C:\\x", "B:\\x"}, "\\x", "C:\\x", 1, "then the first of the list"},
      {0, roots, {"D:\\x", "\\x"}, "\\x", "D:\\x", 1, "on a share no drive is the current one"},
      {0, roots, {"\\x"}, "\\x", "\\x", 0, "where there are drives only they count"},
      {0, "", {"\\x"}, "\\x", "\\x", 0, "the drives can't be listed"},
      {3, roots, {"a:\\x"}, "\\x", "\\x", 0, "a small a is passed over"},
      {3, roots, {"B:\\x"}, "\\x", "B:\\x", 1, "a capital B is not"},
      {-1, roots, {"\\x"}, "\\x", "\\x", 1, "without drives it is a file of that name"},
      {3, roots, {"\\\\x", "C:\\\\x"}, "\\\\x", "\\\\x", 1, "a share names no drive"},
      {3, roots, {"x"}, "x", "x", 1, "not rooted"},
  };
  for (const auto& row : rows) {
    machine::platform::drive = row.drive;
    machine::platform::roots = row.roots;
    machine::platform::existing = row.existing;
    char path[8], fixed[machine::path_size];
    std::strcpy(path, row.path.c_str());
    EXPECT_EQ(machine::osh1_fix_path(path, fixed, 0), row.is_found) << row.why;
    EXPECT_EQ(fixed, row.fixed) << row.why;
  }
}

}  // namespace
