#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/clock.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/guarded_array.h>

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
  const char* words[] = {"z", "\xe9", "ab", "", "Z", "a"};
  std::qsort(words, 6, sizeof *words, osh_qsort_compare_strings);
  EXPECT_EQ(Strings(words, words + 6), (Strings{"", "Z", "a", "ab", "z", "\xe9"}));
  for (int i = 0; i < 36; ++i) {
    EXPECT_EQ(osh_qsort_compare_strings(&words[i / 6], &words[i % 6]),
              (i / 6 > i % 6) - (i / 6 < i % 6));
  }
  support::GuardedArray<char> stamp(14);
  EXPECT_EQ(osh_get_time_stamp(stamp.data()), 13);
  EXPECT_STREQ(stamp.data(), "990203.090507");
  for (int size = -1; size <= 20; ++size) {
    support::GuardedArray<char> name(std::max(size, 0));
    EXPECT_EQ(osh_gethostname(name.data(), size), 0);
    EXPECT_TRUE(std::equal(name.begin(), name.end(), "localhost\0\0\0\0\0\0\0\0\0\0"));
  }
  EXPECT_EQ(osh_system(1, "2"_c) + osh_system(0, "31"_c) + osh_system(1, "32"_c), 33);
  short parameters[10], *shared = osh_get_sys_parms();
  osh_get_file_parms(parameters);
  for (const short* ten : {parameters, shared}) {
    EXPECT_EQ(std::vector(ten, ten + 10), (std::vector<short>{1, 2, 8, 2, 1, 1, 2, 4, 4, 8}));
  }
  shared[2] = 7;
  EXPECT_EQ(osh_get_sys_parms()[2] - osh_system_type() + osh_verify_file_name(), 0);
}

TEST(SystemServices, SetTheEnvironment) {
  const std::string longest(5000, 'v');
  const std::tuple<const char*, const char*, int, const char*> rows[] = {
      {"ZELVAN", "a=b", 0, "a=b"},
      {nullptr, "x", -1, "a=b"},
      {"=ZELVAN", "x", -1, "a=b"},
      {"", "x", -1, "a=b"},
      {"ZELVAN=c", "d", 0, "c=d"},
      {"ZELVAN", nullptr, 0, ""},
      {"ZELVAN", longest.c_str(), 0, longest.c_str()},
      {"ZELVAN", "", 0, ""}};
  for (const auto& [name, value, result, after] : rows) {
    EXPECT_EQ(osh_setenv(const_cast<char*>(name), const_cast<char*>(value)), result);
    EXPECT_STREQ(std::getenv("ZELVAN"), after);
  }
}

}  // namespace
