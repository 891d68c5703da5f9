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
  const auto expect = [](int drive, const std::string& roots, std::set<std::string> existing,
                         const std::string& fixed, int is_found, const char* why) {
    machine::platform::drive = drive;
    machine::platform::roots = roots;
    machine::platform::existing = existing;
    std::string path = is_found ? "\\x" : fixed;  // a path that is not found stays as it is
    char found[machine::path_size];
    EXPECT_EQ(machine::osh1_fix_path(path.data(), found, 0), is_found) << why;
    EXPECT_EQ(found, fixed) << why;
  };
  expect(4, roots, {"C:\\x", "D:\\x"}, "D:\\x", 1, "the current drive comes first");
  expect(4, roots, {"C:\\x", "B:\\x"}, "C:\\x", 1, "then the first of the list");
  expect(0, roots, {"D:\\x", "\\x"}, "D:\\x", 1, "on a share no drive is the current one");
  expect(0, roots, {"\\x"}, "\\x", 0, "where there are drives only they count");
  expect(3, roots, {"a:\\x"}, "\\x", 0, "a small a is passed over");
  expect(3, "1:\\\0c?\\\0c:?\0"s, {"1:\\x", "c:\\x"}, "\\x", 0, "no roots of drives");
  expect(3, "[:\\\0{:\\\0b:\\\0"s, {"[:\\x", "{:\\x", "b:\\x"}, "\\x", 0, "nor these, nor b");
  expect(3, std::string(1024, 'D'), {"D:\\x"}, "\\x", 0, "a list of 1024 bytes is too long");
  expect(3, roots, {on_c.substr(0, 1023)}, longest, 0, "with a drive it has 1024 bytes");
  expect(3, "", {"D:\\x"}, "\\x", 0, "the list can't be had");
  expect(3, roots, {"C:x"}, "x", 0, "a path without a backslash at its start");
  expect(3, roots, {"C:\\\\x"}, "\\\\x", 0, "a name on the network");
  expect(-1, roots, {"\\x"}, "\\x", 1, "without drives it is a file of that name");
}
