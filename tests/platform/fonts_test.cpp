#include <zelvan/osh/system_services.h>
#include <zelvan/platform/fonts.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <unistd.h>

// What the library takes for all folders. The linker puts this in the place of its own answer.
using Strings = std::vector<std::string>;
Strings played_folders;
Strings play_folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
Strings play_folders() { return played_folders; }
Strings font_folders() asm("__real__ZN6zelvan8platform12font_foldersB5cxx11Ev");

namespace {

using zelvan::platform::find_font_files;

TEST(Fonts, AreInTheFoldersOfTheSystemAndOfTheUser) {
  const std::tuple<const char*, const char*, Strings> rows[] = {
      {"/h", "/d", {"/d/fonts", "/h/.fonts"}},
      {"/h", "d", {"/h/.local/share/fonts", "/h/.fonts"}},
      {"h", "/d", {"/d/fonts"}},
      {"h", "", {}}};
  for (const auto& [home, data, own] : rows) {
    setenv("HOME", home, 1);
    setenv("XDG_DATA_HOME", data, 1);
    Strings all = {"/usr/share/fonts", "/usr/local/share/fonts"};
    all.insert(all.end(), own.begin(), own.end());
    EXPECT_EQ(font_folders(), all);
  }
}

TEST(Fonts, AreFoundInOrder) {
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
  const Strings folders = {"f", "missing", "again", "links", "f"};
  close(0);  // the next descriptor, and one like any other
  for (std::size_t limit = 0; limit <= 9; ++limit) {
    const auto end = fonts.begin() + static_cast<long>(std::min(limit, fonts.size()));
    EXPECT_EQ(find_font_files(folders, limit), Strings(fonts.begin(), end));
  }
  open("/dev/null", O_RDONLY);
  for (int i = 1; i <= 1201; ++i) put("f/" + std::to_string(i) + ".ttf");
  played_folders = {"f"};
  int count = 0;
  char** lists[] = {osh_GetFontFileListCount(&count), osh_GetFontFileList()};
  EXPECT_EQ(count, 1200);
  for (char**& list : lists) {
    EXPECT_EQ(Strings(list, list + 1200), find_font_files({"f"}, 1200));
    EXPECT_EQ(list[1200], nullptr);
    osh_FreeFontFileList(&list);
    EXPECT_EQ(list, nullptr);
  }
}

}  // namespace
