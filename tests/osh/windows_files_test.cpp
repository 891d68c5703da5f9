// What is so on Windows alone. Drive Q lies on another disk: `windows` in ../../dev makes it.
#include <zelvan/osh/file_access.h>
#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>

#include <set>

#include <gtest/gtest.h>
#include <mbctype.h>
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
  const int held = osh_open_binary("other"_c, 0, 0);  // so that it can't be replaced
  EXPECT_EQ(osh_copyfile("other"_c, "plain"_c), 0);
  osh_close(held);
  EXPECT_EQ(content("other") + std::to_string(std::distance(fs::directory_iterator("."), {})),
            "abc4");
  EXPECT_EQ(osh_chmod("Q:\\new"_c, 0200) + osh_unlink("Q:\\new"_c) + osh_unlink("Q:\\taken"_c), 1);
}

TEST(WindowsFiles, AreOpenedWithTheFlagsOfTheRuntime) {
  World world;
  const int fd = osh_open_binary("new"_c, 0x142, 0600);  // and one that deletes it at the end
  EXPECT_EQ(osh_write(fd, "x"_c, 1) + osh_file_exists("new"_c), 2);
  EXPECT_EQ(osh_close(fd) + osh_file_exists("new"_c), 0);
}

TEST(WindowsFiles, HaveNamesOfManyForms) {
  World world;
  char form[1024], path[] = "a\\b\x81\\c", file[9];
  put("a long name.text");
  EXPECT_EQ(osh_alternate_pathname("a long name.text"_c, form) + osh_file_exists(form), 2);
  EXPECT_EQ(osh_alternate_pathname("PLAIN"_c, form), 0);
  EXPECT_EQ(osh_alternate_pathname("missing"_c, form), -1);
  EXPECT_STREQ(form, "missing");
  EXPECT_EQ(osh_get_working_dir(form), 1);
  EXPECT_EQ(form, world.path);
  for (const std::string& name : {std::string("..\\x/"), std::string(5000, 'y')}) {
    char* absolute = osh_find_exec_path(given(name));
    EXPECT_EQ(absolute, fs::absolute(name).lexically_normal().string());
    std::free(absolute);
  }
  ASSERT_EQ(_setmbcp(932), 0);  // whose characters of two bytes may end in a backslash
  EXPECT_EQ(osh_truncate_path(path, path, file), 1);
  EXPECT_EQ(path + std::string("|") + file, "a|b\x81\\c");
  _setmbcp(_MB_CP_ANSI);
}

std::set<std::string> fonts() {
  char** list = osh_GetFontFileList();
  std::set<std::string> paths;
  for (char** path = list; list != nullptr && *path != nullptr; ++path) paths.insert(*path);
  if (list != nullptr) osh_FreeFontFileList(&list);
  return paths;
}

TEST(WindowsFiles, HaveFontsInTheShellsFolder) {
  const std::string start = std::getenv("windir") + std::string("\\Fonts\\zelvan");
  std::set<std::string> expected = fonts();
  expected.insert({start + ".ttf", start + ".TTC", start + ".x.tty"});
  for (const char* end : {".ttf", ".TTC", ".x.tty", ".ttfx", ".tt", ".otf"}) put(start + end);
  EXPECT_EQ(fonts(), expected);
  for (int i = 0; i < 1300; ++i) put(start + std::to_string(i) + ".ttf");
  EXPECT_EQ(fonts().size(), 1200);
  for (const auto& entry : fs::directory_iterator(fs::path(start).parent_path())) {
    if (entry.path().filename().string().starts_with("zelvan")) fs::remove_all(entry);
  }
}

}  // namespace
