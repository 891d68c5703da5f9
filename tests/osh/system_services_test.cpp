#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/clock.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>

// The linker puts these in the place of the platform's own.
using Strings = std::vector<std::string>;
Strings chosen_folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
Strings chosen_folders() { return {"second", "missing", "first", "second/a"}; }
void set_time(zelvan::platform::LocalTime*) asm(
    "__wrap__ZN6zelvan8platform12GetLocalTimeEPNS0_9LocalTimeE");
void set_time(zelvan::platform::LocalTime* now) { *now = {1999, 2, 3, 9, 5, 7}; }
int start(const char*) asm("__wrap__ZN6zelvan8platform7WinExecEPKc");
int start(const char* command) { return std::atoi(command); }

namespace {

TEST(FontList, HoldsTheFontFilesOfAllFoldersInOrder) {
  if (fs::path::preferred_separator != '/') GTEST_SKIP() << "fonts have one folder on Windows";
  World world;
  int count = -1;
  EXPECT_TRUE(osh_GetFontFileListCount(&count) == nullptr && count == -1);
  const std::string deep = "first/1/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/";
  const Strings expected = {"second/B.TTF",   "second/a b.ttc",    "second/old.tar.tTx",
                            "second/A/z.ttf", "second/a/link.ttf", "second/a/x.ttf",
                            "first/.ttf",     deep + "a.ttf"};
  for (const std::string& path : expected) {
    if (path != "second/a/link.ttf") put(path);
  }
  for (const char* path : {"first/ttf", "first/a.tt", "first/a.ttff", "first/a.otf", "first/a.tof",
                           "first/a.t.tf", "first/folder.ttf/a", "elsewhere/a.ttf",
                           "first/1/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/17/a.ttf"}) {
    put(path);
  }
  // Links count to a file, but not to nothing and to a folder.
  EXPECT_TRUE(support::make_link("../B.TTF", "second/a/link.ttf") &&
              support::make_link("nowhere", "first/dangling.ttf") &&
              support::make_link("../elsewhere", "first/link.ttf"));
  char** list = osh_GetFontFileListCount(&count);
  EXPECT_EQ(Strings(list, std::find(list, list + 1201, nullptr)), expected);
  EXPECT_EQ(count, static_cast<int>(expected.size()));
  osh_FreeFontFileList(&list);
  EXPECT_EQ(list, nullptr);
  for (int i = 1; i <= 1200; ++i) put("second/" + std::to_string(i) + ".ttf");
  list = osh_GetFontFileList();
  EXPECT_EQ(std::find(list, list + 1300, nullptr) - list, 1200);
  osh_FreeFontFileList(&list);
}

TEST(SystemServices, KeepTheirConventions) {
  char stamp[14];
  EXPECT_EQ(osh_get_time_stamp(stamp), 13);
  EXPECT_STREQ(stamp, "990203.090507");
  EXPECT_EQ(osh_system(1, "2"_c) + osh_system(0, "31"_c) + osh_system(1, "32"_c), 33);
}

}  // namespace
