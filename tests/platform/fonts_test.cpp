#include <zelvan/osh/system_services.h>

#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>

// Replaces the library's list of font folders: --wrap redirects `font_folders` to `play_folders`.
using Strings = std::vector<std::string>;
Strings played_folders;
Strings play_folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
Strings play_folders() { return played_folders; }
Strings font_folders() asm("__real__ZN6zelvan8platform12font_foldersB5cxx11Ev");

TEST(FontFolders, AreTheSystemsAndThoseOfTheUser) {
  const auto expect = [](const char* home, const char* data, const Strings& of_user,
                         const char* why) {
    support::set_environment("HOME", home);
    support::set_environment("XDG_DATA_HOME", data);
    Strings wanted = {"/usr/share/fonts", "/usr/local/share/fonts"};
    wanted.insert(wanted.end(), of_user.begin(), of_user.end());
    EXPECT_EQ(font_folders(), wanted) << why;
  };
  expect("/h", "/d", {"/d/fonts", "/h/.fonts"}, "both variables");
  expect("/h", "d", {"/h/.local/share/fonts", "/h/.fonts"}, "not an absolute path");
  expect("h", nullptr, {}, "no absolute path");
}

TEST(GetFontFileList, ListsFontsOfEachFolderBeforeThoseOfItsFolders) {
  const support::TemporaryFolder folder;
  const std::string deep = "f/d/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/";
  for (const char* name : {"ttf", "a.tt", "a.ttff", "a.otf", "a.tof", "folder.ttf/a"})
    put("f/" + std::string(name));
  const Strings fonts = {"f/.ttf",    "f/B.TTF",   "f/a b.ttc",    "f/old.tar.tTx",
                         "f/A/z.ttf", "f/a/x.ttf", deep + "a.ttf", "links/link.ttf"};
  for (const std::string& font : fonts) put(font);
  put(deep + "17/a.ttf");
  // A link to a font counts, no other link does, and no folder is searched twice.
  fs::remove("links/link.ttf");
  fs::create_symlink("../f/B.TTF", "links/link.ttf");
  fs::create_symlink("f/a", "again");
  fs::create_symlink("nowhere", "links/gone.ttf");
  fs::create_symlink("../f/a", "links/folder.ttf");
  int count = 0;
  played_folders = {"f", "missing", "again", "links", "f"};
  char** list = osh_GetFontFileListCount(&count);
  EXPECT_EQ(Strings(list, list + count), fonts);
  EXPECT_EQ(list[count], nullptr);
  osh_FreeFontFileList(&list);
  EXPECT_EQ(list, nullptr);
  for (int i = 1; i <= 1201; ++i) put("f/" + std::to_string(i) + ".ttf");
  list = osh_GetFontFileListCount(&count);
  EXPECT_EQ(count, 1200) << "more are left out";
  osh_FreeFontFileList(&list);
}
