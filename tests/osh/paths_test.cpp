#include <zelvan/osh/paths.h>

#include "support/guarded_array.h"
#include "support/refusing_heap.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;

// A character set with two-byte characters, 0x81 to 0x9f being their first bytes, and with 0xff
// for no character. The linker puts it in the place of the locale's own.
std::size_t decode(wchar_t*, const char* text, std::size_t count,
                   std::mbstate_t*) asm("__wrap_mbrtowc");
std::size_t decode(wchar_t*, const char* text, std::size_t count, std::mbstate_t*) {
  const auto byte = static_cast<unsigned char>(*text);
  if (byte == 0xff) return static_cast<std::size_t>(-1);
  if (byte < 0x81 || byte > 0x9f) return 1;
  return count < 2 ? static_cast<std::size_t>(-2) : 2;
}

namespace {

char* given(const std::string& text) { return const_cast<char*>(text.c_str()); }
char* given(const char* text) { return const_cast<char*>(text); }

/// An empty current directory with one file, `plain`.
struct Paths : testing::Test {
  Paths() {
    char name[] = "/tmp/zelvan_paths_XXXXXX";
    root = ::mkdtemp(name);
    fs::current_path(root);
    put("plain");
  }
  ~Paths() override {
    fs::current_path("/");
    fs::remove_all(root);
  }
  static void put(const std::string& path) { std::ofstream file(path); }

  std::string root;
};

std::string absolute(const std::string& path) {
  char* text = osh_find_exec_path(given(path));
  std::string copy = text != nullptr ? text : "(null)";
  std::free(text);
  return copy;
}

TEST_F(Paths, HaveOneFormEachAndStayWhatTheyAre) {
  fs::create_symlink("plain", "link");
  fs::create_symlink("missing", "dangling");
  const struct {
    const char* path;
    int alternate;
    std::string absolute;
  } rows[] = {
      {"plain", 0, root + "/plain"},
      {"missing", -1, root + "/missing"},
      {"link", 0, root + "/link"},
      {"dangling", -1, root + "/dangling"},
      {".//./plain", 0, root + "/plain"},
      {"plain/", -1, root + "/plain"},
      {"link/..", -1, root + "/link/.."},
      {"\\plain", -1, root + "/\\plain"},
      {"...", -1, root + "/..."},
      {".x", -1, root + "/.x"},
      {".", 0, root},
      {"", -1, ""},
      {"/", 0, "/"},
      {"//x//", -1, "/x"},
  };
  for (const auto& row : rows) {
    support::GuardedArray<char> alternate(1024);
    EXPECT_EQ(osh_alternate_pathname(given(row.path), alternate.data()), row.alternate);
    EXPECT_STREQ(alternate.data(), row.path);
    EXPECT_EQ(absolute(row.path), row.absolute) << row.path;
  }
  EXPECT_EQ(osh_verify_file_name(), 0);
}

TEST_F(Paths, JoinSplitAndShowTheirExtension) {
  const struct {
    const char *first, *second, *joined, *directory, *file, *extension;
  } rows[] = {
      {"a", "b", "a\\b", "a", "b", ""},
      {"a\\", "b.c", "a\\b.c", "a", "b.c", ".c"},
      {"a.b", "\\c", "a.b\\c", "a.b", "c", ""},
      {"a\\", "\\.b.c", "a\\\\.b.c", "a\\", ".b.c", ".b.c"},
      {"a/", "x.", "a/\\x.", "a/", "x.", "."},
      {"", "b.tar.gz", "\\b.tar.gz", "", "b.tar.gz", ".tar.gz"},
      {"a.b/c", "", "a.b/c\\", "a.b/c", "", ""},
      {"a\\b", "c/d", "a\\b\\c/d", "a\\b\\c", "d", ""},
      {"a", "b\x81\\c", "a\\b\x81\\c", "a", "b\x81\\c", ""},
      {"a", "\xff/\x81", "a\\\xff/\x81", "a\\\xff", "\x81", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.joined);
    const std::string path = row.joined;
    support::GuardedArray<char> joined(path.size() + 1);
    EXPECT_EQ(osh_append_path(given(row.first), given(row.second), joined.data()), 1);
    EXPECT_EQ(joined.data(), path);
    for (const bool onto_first : {true, false}) {
      char text[40];
      std::strcpy(text, onto_first ? row.first : row.second);
      osh_append_path(onto_first ? text : given(row.first), onto_first ? given(row.second) : text,
                      text);
      EXPECT_EQ(text, path);
    }
    support::GuardedArray<char> directory(std::strlen(row.directory) + 1);
    support::GuardedArray<char> file(std::strlen(row.file) + 1);
    EXPECT_EQ(osh_truncate_path(joined.data(), directory.data(), file.data()), 1);
    EXPECT_STREQ(directory.data(), row.directory);
    EXPECT_STREQ(file.data(), row.file);
    EXPECT_STREQ(utl_file_extension(joined.data()), row.extension);
    char* arguments[3] = {joined.data(), directory.data(), file.data()};
    for (char*& argument : arguments) {
      char* whole = std::exchange(argument, nullptr);
      EXPECT_EQ(osh_truncate_path(arguments[0], arguments[1], arguments[2]), 0);
      argument = whole;
    }
    EXPECT_EQ(joined.data(), path);
    EXPECT_STREQ(file.data(), row.file);
  }
  char name[] = "name", directory[] = "unset", file[5];
  EXPECT_EQ(osh_truncate_path(name, directory, file), 1);
  EXPECT_STREQ(directory, "");
  EXPECT_STREQ(file, "name");
  EXPECT_STREQ(utl_file_extension(given(".profile")), ".profile");
  EXPECT_STREQ(utl_file_extension(given("")), "");
}

TEST_F(Paths, FindTheNextFreeName) {
  const struct {
    const char *taken, *next;
  } rows[] = {
      {"AAZ", "ABA"},   {"AZZ", "BAA"}, {"ZZZ", nullptr}, {"A1", "B1"},  {"MMM", "MMN"},
      {"AZ-Z", "BA-A"}, {"Y", "Z"},     {"a@", nullptr},  {"", nullptr}, {"A9Z[", "B9A["},
  };
  for (const auto& row : rows) {
    const std::string prefix = "AA.";  // which no carry reaches
    put(prefix + row.taken);
    char result[1024];
    std::strcpy(result, prefix.c_str());
    errno = 77;
    EXPECT_EQ(utl_unique_filename(result, given(row.taken), result), row.next ? 0 : -1);
    EXPECT_EQ(result, prefix + (row.next ? row.next : row.taken));
    EXPECT_TRUE(row.next == nullptr || errno == 77) << errno;
    fs::remove(prefix + row.taken);
  }
  char result[1024];
  for (char letter = 'A'; letter <= 'Z'; ++letter) put(std::string("A") + letter);
  EXPECT_EQ(utl_unique_filename(given(""), given("AA"), result), 0);
  EXPECT_STREQ(result, "BA");
}

TEST_F(Paths, AreNeverCut) {
  for (const std::size_t length : {1023, 1024, 5000}) {
    SCOPED_TRACE(length);
    const bool fits = length < 1024;
    std::string path = length % 2 != 0 ? "plain" : ".//plain";
    while (path.size() < length) path.insert(0, "./");
    support::GuardedArray<char> out(1024);
    EXPECT_EQ(osh_alternate_pathname(given(path), out.data()), fits ? 0 : -1);
    EXPECT_EQ(out.data(), fits ? path : "");
    const std::string missing(length, 'x');
    EXPECT_EQ(osh_alternate_pathname(given(missing), out.data()), -1);
    EXPECT_EQ(out.data(), fits ? missing : "");
    EXPECT_EQ(utl_unique_filename(given(path.substr(0, length - 2)), given("AA"), out.data()),
              fits ? 0 : -1);
    EXPECT_EQ(out.data(), fits ? path.substr(0, length - 2) + "AA" : "");
    EXPECT_EQ(absolute(missing), root + '/' + missing);
    support::GuardedArray<char> joined(2 * length + 2);
    osh_append_path(given(missing), given(path), joined.data());
    EXPECT_EQ(joined.data(), missing + '\\' + path);
    osh_append_path(given(missing), given("x"), joined.data());
    support::GuardedArray<char> directory(length + 1), file(2);
    EXPECT_EQ(osh_truncate_path(joined.data(), directory.data(), file.data()), 1);
    EXPECT_EQ(directory.data(), missing);
    EXPECT_EQ(utl_file_extension(given(missing)), missing.c_str() + length);
  }
}

TEST_F(Paths, EndWhereTheCurrentDirectoryDoes) {
  std::string path = root;
  const auto go_down = [&](std::size_t letters) {
    const std::string name(letters, 'd');
    fs::create_directory(name);
    ASSERT_EQ(::chdir(name.c_str()), 0);
    path += '/' + name;
  };
  while (path.size() < 800) go_down(199);
  go_down(1023 - path.size() - 1);
  support::GuardedArray<char> directory(1024);
  EXPECT_EQ(osh_get_working_dir(directory.data()), 1);
  EXPECT_EQ(directory.data(), path);
  ASSERT_EQ(::chdir(".."), 0);
  path = fs::path(path).parent_path();
  go_down(1024 - path.size() - 1);
  std::strcpy(directory.data(), "unset");
  EXPECT_EQ(osh_get_working_dir(directory.data()), 0);
  EXPECT_EQ(absolute("x"), path + "/x") << "which has no limit";
  fs::remove(path);
  EXPECT_EQ(osh_get_working_dir(directory.data()), 0);
  EXPECT_STREQ(directory.data(), "unset");
  EXPECT_EQ(absolute("x"), "");
  EXPECT_EQ(absolute("/x"), "/x");
}

TEST_F(Paths, AreNullOrEmptyWhereTheHeapRefuses) {
  char* result = nullptr;
  const int refusals =
      support::refuse_each_request([&] { result = osh_find_exec_path(given("plain")); },
                                   [&](bool refused) {
                                     const std::string text = result != nullptr ? result : "";
                                     EXPECT_EQ(text, refused ? "" : root + "/plain");
                                     std::free(result);
                                   });
  EXPECT_GT(refusals, 1);
}

TEST(Parameters, AreTenNumbersByTwoRoads) {
  const short expected[10] = {1, 2, 8, 2, 1, 1, 2, 4, 4, 8};
  support::GuardedArray<short> record(10);
  osh_get_file_parms(record.data());
  EXPECT_TRUE(std::equal(record.begin(), record.end(), expected));
  short* own = osh_get_sys_parms();
  own[2] = 0;
  EXPECT_EQ(osh_get_sys_parms(), own);
  EXPECT_TRUE(std::equal(own, own + 10, expected));
}

}  // namespace
