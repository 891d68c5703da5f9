// A machine whose drives the test chooses: the search for a drive is compiled here once more, in a
// namespace with a platform of its own.
#define zelvan machine_with_drives
#include <zelvan/osh/detail/fixed_path.cpp>
#undef zelvan

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace machine_with_drives::platform {

int drive;
std::string roots;               // of all drives
std::set<std::string> existing;  // the paths that are there

int _access(const char* path, int) { return existing.contains(path) ? 0 : -1; }
int _getdrive() { return drive; }
unsigned GetLogicalDriveStringsA(unsigned, char* list) {
  if (roots.size() < path_size) std::memcpy(list, roots.c_str(), roots.size() + 1);
  return static_cast<unsigned>(roots.size());
}
int _open(const char*, int, int) { return -1; }
int _close(int) { return 0; }
std::FILE* fopen(const char*, const char*) { return nullptr; }

}  // namespace machine_with_drives::platform

using namespace std::string_literals;
namespace machine = machine_with_drives;

TEST(Drives, AreSearchedInTheirOrderAfterTheCurrentOne) {
  const std::string roots = "C:\\\0D:\\\0a:\\\0B:\\\0"s;
  const std::string longest = '\\' + std::string(1021, 'x'), on_c = "C:" + longest;
  const struct {
    int drive;
    std::string roots;
    std::set<std::string> existing;
    std::string fixed;
    int is_found;
    const char* why;
  } rows[] = {
      {4, roots, {"C:\\x", "D:\\x"}, "D:\\x", 1, "the current drive comes first"},
      {4, roots, {"C:\\x", "B:\\x"}, "C:\\x", 1, "then the first of the list"},
      {0, roots, {"D:\\x", "\\x"}, "D:\\x", 1, "on a share no drive is the current one"},
      {0, roots, {"\\x"}, "\\x", 0, "where there are drives only they count"},
      {3, roots, {"a:\\x"}, "\\x", 0, "a small a is passed over"},
      {3, "1:\\\0c?\\\0c:?\0"s, {"1:\\x", "c:\\x"}, "\\x", 0, "no roots of drives"},
      {3, "[:\\\0{:\\\0b:\\\0"s, {"[:\\x", "{:\\x", "b:\\x"}, "\\x", 0, "nor these, nor a small b"},
      {3, std::string(1024, 'D'), {"D:\\x"}, "\\x", 0, "a list of 1024 bytes is too long"},
      {3, roots, {on_c.substr(0, 1023)}, longest, 0, "with a drive it has 1024 bytes"},
      {3, "", {"D:\\x"}, "\\x", 0, "the list can't be had"},
      {3, roots, {"C:x"}, "x", 0, "a path without a backslash at its start"},
      {3, roots, {"C:\\\\x"}, "\\\\x", 0, "a name on the network"},
      {-1, roots, {"\\x"}, "\\x", 1, "without drives it is a file of that name"},
  };
  for (const auto& row : rows) {
    machine::platform::drive = row.drive;
    machine::platform::roots = row.roots;
    machine::platform::existing = row.existing;
    std::string path = row.is_found ? "\\x" : row.fixed;  // a path that is not found stays as it is
    char fixed[machine::path_size];
    EXPECT_EQ(machine::osh1_fix_path(path.data(), fixed, 0), row.is_found) << row.why;
    EXPECT_EQ(fixed, row.fixed) << row.why;
  }
}
