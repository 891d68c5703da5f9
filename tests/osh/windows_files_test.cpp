// What is so on Windows alone.
#include <zelvan/osh/file_access.h>

#include <gtest/gtest.h>
#include <osh/world.h>

TEST(WindowsFiles, OpenWithTheRuntimesOwnFlags) {
  World world;
  const short deleted_when_closed = 0x40;
  const int fd = osh_open_binary("new"_c, 0x101 | deleted_when_closed, 0200);
  EXPECT_EQ(osh_close(fd), 0);
  EXPECT_FALSE(fs::exists("new"));
}
