// What is so on Windows alone. Drive Q lies on another disk: `windows` in ../../dev makes it.
#include <zelvan/osh/file_access.h>

#include <gtest/gtest.h>
#include <osh/world.h>

namespace {

TEST(WindowsFiles, AreFoundOnTheFirstDriveThatHasThem) {
  World world;  // on drive C
  char* const path = "\\zelvan-test"_c;
  EXPECT_EQ(osh_filesize(path), -1);
  put("Q:\\zelvan-test", "q");
  EXPECT_EQ(osh_filesize(path), 1);
  put("C:\\zelvan-test", "cc");
  EXPECT_EQ(osh_filesize(path), 2);
  fs::current_path("Q:\\");
  EXPECT_EQ(osh_filesize(path), 1);
  EXPECT_EQ(osh_unlink(path) + osh_unlink(path) + osh_file_exists(path), 0);
}

TEST(WindowsFiles, OpenWithTheRuntimesOwnFlags) {
  World world;
  const short deleted_when_closed = 0x40;
  const int fd = osh_open_binary("new"_c, 0x101 | deleted_when_closed, 0200);
  EXPECT_EQ(osh_close(fd), 0);
  EXPECT_FALSE(fs::exists("new"));
}

}  // namespace
