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

// A character set with two-byte characters from 0x81 on, and with 0xff for no character. The
// linker puts it in the place of the locale's own.
std::size_t decode(wchar_t*, const char*, std::size_t, mbstate_t*) asm("__wrap_mbrtowc");
std::size_t decode(wchar_t*, const char* text, std::size_t count, mbstate_t*) {
  const auto byte = static_cast<unsigned char>(*text);
  return byte == 0xff ? -1 : byte < 0x81 ? 1 : count < 2 ? -2 : 2;
}

namespace {

namespace fs = std::filesystem;
using Text = support::GuardedArray<char>;

char* given(const std::string& text) { return const_cast<char*>(text.c_str()); }
void put(const std::string& path) { std::ofstream file(path); }

/// What `osh_find_exec_path` gives, or "refused" for null; without a request to the heap.
const char* absolute(const char* path) {
  static char kept[8192];
  char* text = osh_find_exec_path(const_cast<char*>(path));
  std::strcpy(kept, text != nullptr ? text : "refused");
  std::free(text);
  return kept;
}

/// A current directory with one file, `plain`.
struct Paths : testing::Test {
  Paths() {
    char name[] = "/tmp/zelvan_paths_XXXXXX";
    root = mkdtemp(name);
    fs::current_path(root);
    put("plain");
  }
  ~Paths() override {
    fs::current_path("/");
    fs::remove_all(root);
  }
  std::string root;
};

TEST_F(Paths, HaveOneFormEachAndAreNeverCut) {
  fs::create_symlink("nowhere", "dangling");
  struct Row {
    std::string path, absolute;
    int alternate;
  };
  std::vector<Row> rows = {{"plain", "/plain", 0},      {"dangling", "/dangling", -1},
                           {".//./plain", "/plain", 0}, {"plain/../x", "/plain/../x", -1},
                           {"\\plain", "/\\plain", -1}, {"...", "/...", -1}};
  for (const std::size_t length : {1023, 1024, 5000}) {
    std::string padded = length % 2 != 0 ? "plain" : ".//plain";
    while (padded.size() < length) padded.insert(0, "./");
    const std::string missing(length, 'x');
    rows.insert(rows.end(),
                {{padded, "/plain", length < 1024 ? 0 : -1}, {missing, '/' + missing, -1}});
  }
  Text out(1024);
  for (const Row& row : rows) {
    const std::string& path = row.path;
    const std::string kept = path.size() < 1024 ? path : "";
    EXPECT_EQ(osh_alternate_pathname(given(path), out.data()), row.alternate);
    EXPECT_EQ(out.data(), kept);
    EXPECT_EQ(utl_unique_filename(given(path), given("A"), out.data()),
              path.size() < 1023 ? 0 : -1);
    const char* found = "";
    support::refuse_each_request(
        [&] { found = absolute(path.c_str()); },
        [&](bool refused) {
          EXPECT_TRUE(found == (refused ? "refused" : root + row.absolute) ||
                      (refused && *found == '\0'));
        });
    Text joined(2 * path.size() + 2), directory(path.size() + 1), file(path.size() + 1);
    osh_append_path(given(path), given(path), joined.data());
    EXPECT_EQ(joined.data(), path + (path[0] == '\\' ? "" : "\\") + path);
    EXPECT_EQ(osh_truncate_path(given(path), directory.data(), file.data()), 1);
    EXPECT_EQ(file.data(), path.substr(path.find_last_of("/\\") + 1));
  }
}

TEST_F(Paths, JoinSplitAndShowTheirExtension) {
  const struct {
    std::string first, second, joined, directory, file, extension;
  } rows[] = {{"a", "b", "a\\b", "a", "b", ""},
              {"a.b", "\\.c.d", "a.b\\.c.d", "a.b", ".c.d", ".c.d"},
              {"a\\", "\\c.", "a\\\\c.", "a\\", "c.", "."},
              {"a/", "b.c/d", "a/\\b.c/d", "a/\\b.c", "d", ""},
              {"", "b.tar.gz", "\\b.tar.gz", "", "b.tar.gz", ".tar.gz"},
              {"/a.b", "", "/a.b\\", "/a.b", "", ""},
              {"a", "b\x81\\c", "a\\b\x81\\c", "a", "b\x81\\c", ""},
              {"a", "\xff/\x81", "a\\\xff/\x81", "a\\\xff", "\x81", ""}};
  for (const auto& row : rows) {
    for (const bool onto_first : {true, false}) {
      Text text(row.joined.size() + 1);
      std::strcpy(text.data(), (onto_first ? row.first : row.second).c_str());
      EXPECT_EQ(osh_append_path(onto_first ? text.data() : given(row.first),
                                onto_first ? given(row.second) : text.data(), text.data()),
                1);
      EXPECT_EQ(text.data(), row.joined);
    }
    Text directory(row.directory.size() + 1), file(row.file.size() + 1);
    EXPECT_EQ(osh_truncate_path(given(row.joined), directory.data(), file.data()), 1);
    EXPECT_EQ(directory.data(), row.directory);
    EXPECT_EQ(file.data(), row.file);
    Text onto_directory(row.joined + '\0'), onto_file(row.joined + '\0');
    osh_truncate_path(onto_directory.data(), onto_directory.data(), file.data());
    EXPECT_EQ(onto_directory.data() + ('|' + row.file), row.directory + '|' + file.data());
    osh_truncate_path(onto_file.data(), directory.data(), onto_file.data());
    EXPECT_EQ(directory.data() + ('|' + row.file), row.directory + '|' + onto_file.data());
    EXPECT_EQ(osh_truncate_path(nullptr, directory.data(), file.data()), 0);
    EXPECT_EQ(osh_truncate_path(given(row.joined), nullptr, file.data()), 0);
    EXPECT_EQ(osh_truncate_path(given(row.joined), directory.data(), nullptr), 0);
    EXPECT_EQ(utl_file_extension(given(row.joined)), row.extension);
  }
  EXPECT_STREQ(utl_file_extension(given(".profile")), ".profile");
}

TEST_F(Paths, FindTheNextFreeName) {
  const std::pair<const char*, const char*> rows[] = {
      {"AAZ", "ABA"}, {"AZZ", "BAA"}, {"ZZZ", nullptr}, {"A1", "B1"},    {"MMM", "MMN"},
      {"Y", "Z"},     {"", nullptr},  {"AZ-Z", "BA-A"}, {"a@", nullptr}, {"A9Z[", "B9A["}};
  for (const auto& [taken, next] : rows) {
    const std::string prefix = "AA.";  // which no carry reaches
    put(prefix + taken);
    char result[1024] = "AA.";
    errno = 77;
    EXPECT_EQ(utl_unique_filename(result, given(taken), result), next ? 0 : -1);
    EXPECT_TRUE(next == nullptr || errno == 77) << errno;
    EXPECT_EQ(result, prefix + (next ? next : taken));
    std::strcpy(result, taken);
    EXPECT_EQ(utl_unique_filename(given(prefix), result, result), next ? 0 : -1);
    EXPECT_EQ(result, prefix + (next ? next : taken)) << "in the place of the letters";
    fs::remove(prefix + taken);
  }
}

TEST_F(Paths, EndWhereTheCurrentDirectoryDoes) {
  for (const std::size_t length : {1023, 1024}) {
    std::string path = root;
    while (path.size() < 800) path += '/' + std::string(200, 'd');
    path += '/' + std::string(length - path.size() - 1, 'd');
    fs::create_directories(path);
    fs::current_path(path);
    Text directory(std::vector<char>(1024, 'u'));
    EXPECT_EQ(osh_get_working_dir(directory.data()), length < 1024);
    EXPECT_EQ(std::string(directory.data(), 1023), length < 1024 ? path : std::string(1023, 'u'));
    EXPECT_EQ(absolute("x"), path + "/x") << "which has no limit";
    fs::remove(path);
    EXPECT_EQ(osh_get_working_dir(directory.data()), 0);
    EXPECT_STREQ(absolute("x"), "");
    EXPECT_STREQ(absolute("/x"), "/x");
  }
}

}  // namespace
