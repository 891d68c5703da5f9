#include <zelvan/osh/system_services.h>
#include <zelvan/platform/clock.h>
#include <zelvan/platform/fonts.h>

#include "support/guarded_array.h"
#include "support/refusing_heap.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

namespace {
Strings chosen_folders;
zelvan::platform::LocalTime chosen_time;
}  // namespace

// The linker puts these in the place of the platform's own.
Strings wrapped_folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
Strings real_folders() asm("__real__ZN6zelvan8platform12font_foldersB5cxx11Ev");
void wrapped_time(zelvan::platform::LocalTime* now) asm(
    "__wrap__ZN6zelvan8platform12GetLocalTimeEPNS0_9LocalTimeE");
Strings wrapped_folders() { return chosen_folders; }
void wrapped_time(zelvan::platform::LocalTime* now) { *now = chosen_time; }

namespace {

struct FontList : testing::Test {
  FontList() {
    char name[] = "/tmp/zelvan_fonts_XXXXXX";
    root = ::mkdtemp(name);
    chosen_folders = {root + "/second", root + "/missing", root + "/first"};
  }
  ~FontList() override { fs::remove_all(root); }

  void put(const std::string& path) const {
    fs::create_directories(fs::path(root + path).parent_path());
    std::ofstream file(root + path);
  }

  std::string root;
};

TEST_F(FontList, HoldsTheFontFilesOfAllFoldersInOrder) {
  const Strings expected = {"/second/B.TTF",   "/second/a b.ttc",    "/second/old.tar.tTx",
                            "/second/A/z.ttf", "/second/a/link.ttf", "/first/.ttf"};
  for (const std::string& path : expected) put(path);
  for (const char* path : {"/first/ttf", "/first/a.tt", "/first/a.ttff", "/first/a.otf",
                           "/first/a.ttf.gz", "/first/a.t.tf"}) {
    put(path);
  }
  const fs::path first = root + "/first";
  fs::create_directory(first / "folder.ttf");
  fs::create_symlink("missing", first / "dangling.ttf");
  fs::create_symlink(root + "/second", first / "link");
  fs::create_directory_symlink("..", first / "loop");
  fs::remove(root + "/second/a/link.ttf");
  fs::create_symlink("../B.TTF", root + "/second/a/link.ttf");
  chosen_folders.push_back(root + "/second/a");  // searched already

  int count = -1;
  char** list = osh_GetFontFileListCount(&count);
  ASSERT_NE(list, nullptr);
  Strings found(list, std::find(list, list + 1201, nullptr));
  EXPECT_EQ(count, static_cast<int>(found.size()));
  for (std::string& path : found) path.erase(0, root.size());
  EXPECT_EQ(found, expected);
  osh_FreeFontFileList(&list);
  EXPECT_EQ(list, nullptr);
}

TEST_F(FontList, EndsAt1200FilesAnd16FoldersDeep) {
  std::string deep = "/first";
  for (int depth = 1; depth <= 17; ++depth) deep += "/d";
  put(deep + "/too_deep.ttf");
  int count = -1;
  EXPECT_EQ(osh_GetFontFileListCount(&count), nullptr);
  EXPECT_EQ(count, -1) << "untouched where there is no list";
  put(deep.substr(0, deep.size() - 2) + "/deepest.ttf");
  for (const int files : {1198, 1199, 1300}) {
    for (int i = 0; i < files; ++i) put("/second/" + std::to_string(i) + ".ttf");
    char** list = osh_GetFontFileListCount(&count);
    EXPECT_EQ(count, std::min(files + 1, 1200));
    EXPECT_EQ(list[count], nullptr);
    osh_FreeFontFileList(&list);
  }
}

TEST_F(FontList, IsNullWhereTheHeapRefuses) {
  for (const char* path : {"/second/a.ttf", "/second/b/c.ttf", "/first/d.ttf"}) put(path);
  int count = -1;
  char** list = nullptr;
  const int refusals =
      support::refuse_each_request([&] { list = osh_GetFontFileListCount(&count); },
                                   [&](bool refused) {
                                     EXPECT_EQ(list == nullptr, refused);
                                     EXPECT_EQ(count, refused ? -1 : 3);
                                     if (list != nullptr) osh_FreeFontFileList(&list);
                                   });
  EXPECT_GT(refusals, 10);
}

TEST_F(FontList, LooksWhereTheEnvironmentPoints) {
  const struct {
    const char *home, *data;
    Strings folders;
  } rows[] = {
      {"", "", {}},
      {"relative", "relative", {}},
      {"/h", "", {"/h/.local/share/fonts", "/h/.fonts"}},
      {"/h", "relative", {"/h/.local/share/fonts", "/h/.fonts"}},
      {"/h", "/d", {"/d/fonts", "/h/.fonts"}},
      {"", "/d", {"/d/fonts"}},
  };
  for (const auto& row : rows) {
    ::setenv("HOME", row.home, 1);
    ::setenv("XDG_DATA_HOME", row.data, 1);
    Strings expected = {"/usr/share/fonts", "/usr/local/share/fonts"};
    expected.insert(expected.end(), row.folders.begin(), row.folders.end());
    EXPECT_EQ(real_folders(), expected) << row.home << ", " << row.data;
  }
}

TEST(SystemServices, OrderStringsByTheirBytes) {
  const char* const ordered[] = {"", "Z", "a", "ab", "b", "z", "\xe9"};
  for (const char* const& a : ordered) {
    for (const char* const& b : ordered) {
      EXPECT_EQ(osh_qsort_compare_strings(&a, &b), (&a > &b) - (&a < &b)) << a << ", " << b;
    }
  }
}

TEST(SystemServices, StampTheTimeInTwoDigitsEach) {
  support::GuardedArray<char> stamp(14);
  chosen_time = {2026, 2, 3, 9, 5, 7};
  EXPECT_EQ(osh_get_time_stamp(stamp.data()), 13);
  EXPECT_STREQ(stamp.data(), "260203.090507");
  chosen_time = {1999, 12, 31, 23, 59, 60};
  EXPECT_EQ(osh_get_time_stamp(stamp.data()), 13);
  EXPECT_STREQ(stamp.data(), "991231.235960");
}

TEST(SystemServices, NameTheHostInAnyRoom) {
  EXPECT_EQ(osh_gethostname(nullptr, -1), 0);
  for (int size = 0; size <= 20; ++size) {
    support::GuardedArray<char> name(size);
    EXPECT_EQ(osh_gethostname(name.data(), size), 0);
    const char expected[21] = "localhost";
    EXPECT_EQ(std::memcmp(name.data(), expected, size), 0) << size;
  }
}

TEST(SystemServices, SetTheEnvironment) {
  const std::string long_value(5000, 'v');
  char variable[] = "ZELVAN_TEST";
  const struct {
    const char *name, *value;
    int result;
    const char* after;
  } rows[] = {
      {variable, "a=b", 0, "a=b"}, {nullptr, "x", -1, "a=b"},
      {"", "x", -1, "a=b"},        {"=ZELVAN_TEST", "x", -1, "a=b"},
      {variable, nullptr, 0, ""},  {variable, long_value.c_str(), 0, long_value.c_str()},
      {variable, "", 0, ""},       {"ZELVAN_TEST=c", "d", 0, "c=d"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(osh_setenv(const_cast<char*>(row.name), const_cast<char*>(row.value)), row.result);
    EXPECT_STREQ(std::getenv(variable), row.after);
  }
  int result = 0;
  char value[] = "a value too long for the string's own room";
  const int refusals =
      support::refuse_each_request([&] { result = osh_setenv(variable, value); },
                                   [&](bool refused) {
                                     EXPECT_EQ(result, refused ? -1 : 0);
                                     EXPECT_STREQ(std::getenv(variable), refused ? "c=d" : value);
                                   });
  EXPECT_GT(refusals, 0);
}

TEST(SystemServices, SayWhetherACommandWasStarted) {
  const struct {
    const char* command;
    int result;
  } rows[] = {{"exit 7", 0}, {"", 0}, {"/missing/program", 2}, {"no_such_program x", 2}, {"/", 5}};
  for (const auto& row : rows) {
    EXPECT_EQ(osh_system(1, const_cast<char*>(row.command)), row.result) << row.command;
  }
  EXPECT_EQ(osh_system_type(), 8);
}

}  // namespace
