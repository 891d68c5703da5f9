#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/clock.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/guarded_array.h>
#include <support/refusing_heap.h>

// The linker puts these in the place of the platform's own.
using Strings = std::vector<std::string>;
Strings chosen_folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
Strings real_folders() asm("__real__ZN6zelvan8platform12font_foldersB5cxx11Ev");
Strings chosen_folders() { return {"second", "missing", "first", "second/a"}; }
void set_time(zelvan::platform::LocalTime*) asm(
    "__wrap__ZN6zelvan8platform12GetLocalTimeEPNS0_9LocalTimeE");
void set_time(zelvan::platform::LocalTime* now) { *now = {1999, 2, 3, 9, 5, 7}; }

namespace {

TEST(FontList, HoldsTheFontFilesOfAllFoldersInOrder) {
  World world;
  int count = -1;
  EXPECT_EQ(osh_GetFontFileListCount(&count), nullptr);
  EXPECT_EQ(count, -1) << "untouched where there is no list";

  const std::string deep = "first/1/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/";
  const Strings expected = {"second/B.TTF",   "second/a b.ttc",    "second/old.tar.tTx",
                            "second/A/z.ttf", "second/a/link.ttf", "first/.ttf",
                            deep + "a.ttf"};
  fs::create_directories("second/a");
  fs::create_symlink("../B.TTF", "second/a/link.ttf");
  for (const std::string& path : expected) put(path);
  for (const char* path : {"first/ttf", "first/a.tt", "first/a.ttff", "first/a.otf", "first/a.t.tf",
                           "first/folder.ttf/a", "elsewhere/a.ttf"}) {
    put(path);
  }
  put(deep + "too_deep/a.ttf");
  fs::create_symlink("nowhere", "first/dangling.ttf");
  fs::create_symlink("../elsewhere", "first/link.ttf");
  char** list = nullptr;
  const auto check = [&](bool refused) {
    EXPECT_EQ(list == nullptr, refused);
    if (list == nullptr) return;
    EXPECT_EQ(Strings(list, std::find(list, list + 1201, nullptr)), expected);
    EXPECT_EQ(count, static_cast<int>(expected.size()));
    osh_FreeFontFileList(&list);
    EXPECT_EQ(list, nullptr);
  };
  const auto ask = [&] { list = osh_GetFontFileListCount(&count); };
  EXPECT_GT(support::refuse_each_request(ask, check), 20);

  for (int i = 1; i <= 1200; ++i) put("second/" + std::to_string(i) + ".ttf");
  ask();
  EXPECT_EQ(count, 1200);
  osh_FreeFontFileList(&list);
}

TEST(FontList, LooksInTheFoldersOfTheUser) {
  setenv("HOME", "/h", 1);
  for (const char* data : {"relative", "/d"}) {
    setenv("XDG_DATA_HOME", data, 1);
    EXPECT_EQ(real_folders()[2], *data == '/' ? "/d/fonts" : "/h/.local/share/fonts");
    EXPECT_EQ(real_folders()[3], "/h/.fonts");
  }
}

TEST(SystemServices, KeepTheirConventions) {
  const char* words[] = {"z", "\xe9", "ab", "", "Z", "a"};
  std::qsort(words, 6, sizeof *words, osh_qsort_compare_strings);
  EXPECT_EQ(Strings(words, words + 6), (Strings{"", "Z", "a", "ab", "z", "\xe9"}));
  EXPECT_EQ(osh_qsort_compare_strings(&words[5], &words[1]), 1);
  support::GuardedArray<char> stamp(14);
  EXPECT_EQ(osh_get_time_stamp(stamp.data()), 13);
  EXPECT_STREQ(stamp.data(), "990203.090507");
  for (int size = -1; size <= 20; ++size) {
    support::GuardedArray<char> name(std::max(size, 0));
    EXPECT_EQ(osh_gethostname(name.data(), size), 0);
    EXPECT_TRUE(std::equal(name.begin(), name.end(), "localhost\0\0\0\0\0\0\0\0\0\0"));
  }
  for (const auto& [command, result] : {std::pair("exit 7", 0), {"/missing", 2}, {"/", 5}}) {
    EXPECT_EQ(osh_system(1, given(command)), result) << command;
  }
  short parameters[10];
  osh_get_file_parms(parameters);
  EXPECT_TRUE(std::equal(parameters, parameters + 10, osh_get_sys_parms()));
  EXPECT_EQ(osh_system_type(), 8);
}

TEST(SystemServices, SetTheEnvironment) {
  const std::string longest(5000, 'v');
  const struct {
    const char *name, *value;
    int result;
    const char* after;
  } rows[] = {{"ZELVAN", "a=b", 0, "a=b"}, {nullptr, "x", -1, "a=b"},
              {"=ZELVAN", "x", -1, "a=b"}, {"ZELVAN", nullptr, 0, ""},
              {"ZELVAN=c", "d", 0, "c=d"}, {"ZELVAN", longest.c_str(), 0, longest.c_str()},
              {"ZELVAN", "", 0, ""}};
  for (const auto& row : rows) {
    int result = 0;
    const auto call = [&] {
      result = osh_setenv(const_cast<char*>(row.name), const_cast<char*>(row.value));
    };
    const auto check = [&](bool refused) { EXPECT_EQ(result, refused ? -1 : row.result); };
    support::refuse_each_request(call, check);
    EXPECT_STREQ(std::getenv("ZELVAN"), row.after);
  }
}

}  // namespace
