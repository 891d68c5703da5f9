#include <zelvan/osh/system_services.h>
#include <zelvan/platform/fonts.h>

#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>

// What the library takes for all folders. The linker puts this in the place of its own answer.
using Strings = std::vector<std::string>;
Strings played_folders;
Strings play_folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
Strings play_folders() { return played_folders; }
Strings font_folders() asm("__real__ZN6zelvan8platform12font_foldersB5cxx11Ev");

namespace {

TEST(FontFolders, AreTheSystemsAndTheUsers) {
  const struct {
    const char *home, *data;
    Strings own;
    const char* why;
  } rows[] = {{"/h", "/d", {"/d/fonts", "/h/.fonts"}, "both are set"},
              {"/h", "d", {"/h/.local/share/fonts", "/h/.fonts"}, "a relative one counts as unset"},
              {"h", "/d", {"/d/fonts"}, "no home"}};
  for (const auto& [home, data, own, why] : rows) {
    setenv("HOME", home, 1);
    setenv("XDG_DATA_HOME", data, 1);
    Strings all = {"/usr/share/fonts", "/usr/local/share/fonts"};
    all.insert(all.end(), own.begin(), own.end());
    EXPECT_EQ(font_folders(), all) << why;
  }
}

TEST(GetFontFileList, ListsFontsOfEachFolderBeforeThoseOfItsFolders) {
  const support::TemporaryFolder folder;
  const std::string deep = "f/d/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/";
  for (const char* name : {"ttf", "a.tt", "a.ttff", "a.otf", "a.tof", "a.t.tf", "folder.ttf/a"}) {
    put("f/" + std::string(name));
  }
  const Strings fonts = {"f/.ttf",    "f/B.TTF",   "f/a b.ttc",    "f/old.tar.tTx",
                         "f/A/z.ttf", "f/a/x.ttf", deep + "a.ttf", "links/link.ttf"};
  for (const std::string& font : fonts) put(font);
  put(deep + "17/a.ttf");
  // Links count to a file, but not to nothing and to a folder; no folder is searched twice.
  fs::remove("links/link.ttf");
  fs::create_symlink("../f/B.TTF", "links/link.ttf");
  fs::create_symlink("nowhere", "f/dangling.ttf");
  fs::create_symlink("../links", "f/link.ttf");
  fs::create_symlink("f/a", "again");
  played_folders = {"missing"};
  int count = 7;
  EXPECT_EQ(osh_GetFontFileListCount(&count), nullptr);
  EXPECT_EQ(count, 7) << "without fonts it stays as it is";
  played_folders = {"f", "missing", "again", "links", "f"};
  char** list = osh_GetFontFileListCount(&count);
  EXPECT_EQ(Strings(list, list + count), fonts);
  EXPECT_EQ(list[count], nullptr);
  osh_FreeFontFileList(&list);
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(zelvan::platform::find_font_files({"f"}, 6), Strings(fonts.begin(), fonts.begin() + 6));
  for (int i = 1; i <= 1201; ++i) put("f/" + std::to_string(i) + ".ttf");
  list = osh_GetFontFileList();
  EXPECT_EQ(Strings(list, list + 1200), zelvan::platform::find_font_files({"f"}, 1200));
  EXPECT_EQ(list[1200], nullptr);
  osh_FreeFontFileList(&list);
}

}  // namespace
