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

TEST(WindowsFiles, MoveToAnotherDriveAndLoseNothing) {
  World world;
  put("Q:\\taken", "q");
  EXPECT_EQ(osh_rename("plain"_c, "Q:\\taken"_c) + osh_rename("dir"_c, "Q:\\new"_c), -2);
  EXPECT_EQ(content("plain") + content("Q:\\taken"), "12345q");
  EXPECT_EQ(osh_rename("locked"_c, "Q:\\new"_c), 0);
  EXPECT_EQ(content("Q:\\new") + std::to_string(osh_file_exists("locked"_c)), "safe0");
  EXPECT_EQ(osh_file_access("Q:\\new"_c, 2) + osh_unlink("Q:\\new"_c), 1) << "still read-only";
  EXPECT_EQ(osh_chmod("Q:\\new"_c, 0200) + osh_unlink("Q:\\new"_c) + osh_unlink("Q:\\taken"_c), 1);
}

}  // namespace
