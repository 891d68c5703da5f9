#include <zelvan/osh/paths.h>

#include <cerrno>
#include <cstring>
#include <cwchar>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/guarded_array.h>
#include <support/refusing_heap.h>

// A character set with two-byte characters from 0x81 on, and with 0xff for no character. The
// linker puts it in the place of the locale's own.
std::size_t decode(wchar_t*, const char*, std::size_t, mbstate_t*) asm("__wrap_mbrtowc");
std::size_t decode(wchar_t*, const char* text, std::size_t count, mbstate_t*) {
  const auto byte = static_cast<unsigned char>(*text);
  return byte == 0xff ? -1 : byte < 0x81 ? 1 : count < 2 ? -2 : 2;
}

namespace {

using Text = support::GuardedArray<char>;

void expect_absolute(const std::string& path, const std::string& absolute) {
  char* text = nullptr;
  const auto check = [&](bool refused) {
    EXPECT_TRUE(text != nullptr || refused);
    EXPECT_EQ(text != nullptr ? text : "", refused ? "" : absolute);
    std::free(text);
  };
  support::refuse_each_request([&] { text = osh_find_exec_path(given(path)); }, check);
}

TEST(Paths, HaveOneFormEachAndAreNeverCut) {
  World world;
  std::vector<std::tuple<std::string, std::string, int>> rows = {
      {"plain", "/plain", 0},      {"dangling", "/dangling", -1},
      {".//./plain", "/plain", 0}, {"plain/../x", "/plain/../x", -1},
      {"\\plain", "/\\plain", -1}, {"...", "/...", -1}};
  for (const std::size_t length : {1023, 1024, 5000}) {
    rows.emplace_back(padded("plain", length), "/plain", length < 1024 ? 0 : -1);
    rows.emplace_back(std::string(length, 'x'), '/' + std::string(length, 'x'), -1);
  }
  Text out(1024);
  for (const auto& [path, absolute, alternate] : rows) {
    EXPECT_EQ(osh_alternate_pathname(given(path), out.data()), alternate);
    EXPECT_EQ(out.data(), path.size() < 1024 ? path : "");
    EXPECT_EQ(utl_unique_filename(given(path), "A"_c, out.data()), path.size() < 1023 ? 0 : -1);
    expect_absolute(path, world.path + absolute);
    Text joined(path.size() + 3), file(path.size() + 1);
    osh_append_path("d"_c, given(path), joined.data());
    EXPECT_EQ(osh_truncate_path(joined.data(), joined.data(), file.data()), 1);
    EXPECT_EQ(file.data(), path.substr(path.find_last_of("/\\") + 1));
  }
}

TEST(Paths, AreJoinedAndSplitInTheirOwnPlace) {
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
    for (const bool first : {true, false}) {
      Text text(row.joined.size() + 1), other((first ? row.file : row.directory).size() + 1);
      char* const place = std::strcpy(text.data(), given(first ? row.first : row.second));
      osh_append_path(first ? place : given(row.first), first ? given(row.second) : place, place);
      EXPECT_EQ(place, row.joined);
      EXPECT_EQ(utl_file_extension(place), row.extension);
      char* const directory = first ? place : other.data();
      char* const file = first ? other.data() : place;
      EXPECT_EQ(osh_truncate_path(place, directory, file), 1);
      EXPECT_EQ(directory + ('|' + row.file), row.directory + '|' + file);
    }
  }
  char name[] = ".pro.file", file[10];  // which has no separator
  EXPECT_EQ(utl_file_extension(name), std::string(".pro.file"));
  EXPECT_EQ(osh_truncate_path(nullptr, name, file) + osh_truncate_path(name, nullptr, file) +
                osh_truncate_path(name, name, nullptr) + osh_truncate_path(name, name, file),
            1);
  EXPECT_EQ(*name + std::string(file), '\0' + std::string(".pro.file"));
}

TEST(Paths, FindTheNextFreeName) {
  World world;
  const std::pair<const char*, const char*> rows[] = {
      {"AAZ", "ABA"}, {"AZZ", "BAA"}, {"ZZZ", nullptr}, {"A1", "B1"},    {"MMM", "MMN"},
      {"Y", "Z"},     {"", nullptr},  {"AZ-Z", "BA-A"}, {"a@", nullptr}, {"A9Z[", "B9A["}};
  for (const auto& [taken, next] : rows) {
    const std::string prefix = "AA.";  // which no carry reaches
    put(prefix + taken);
    for (const bool onto_prefix : {true, false}) {
      char result[1024];
      std::strcpy(result, onto_prefix ? "AA." : taken);
      char* const start = onto_prefix ? result : given(prefix);
      char* const letters = onto_prefix ? const_cast<char*>(taken) : result;
      errno = 77;
      EXPECT_EQ(utl_unique_filename(start, letters, result), next ? 0 : -1);
      EXPECT_TRUE(next == nullptr || errno == 77) << errno;
      EXPECT_EQ(result, prefix + (next ? next : taken));
    }
    fs::remove(prefix + taken);
  }
}

TEST(Paths, EndWhereTheCurrentDirectoryDoes) {
  World world;
  for (const std::size_t length : {1023, 1024}) {
    std::string path = world.path;
    while (path.size() < 800) path += '/' + std::string(200, 'd');
    path += '/' + std::string(length - path.size() - 1, 'd');
    fs::create_directories(path);
    fs::current_path(path);
    Text directory(std::string(1024, 'u'));
    EXPECT_EQ(osh_get_working_dir(directory.data()), length < 1024);
    EXPECT_EQ(std::string(directory.data(), 1023), length < 1024 ? path : std::string(1023, 'u'));
    expect_absolute("x", path + "/x");
    fs::remove(path);
    EXPECT_EQ(osh_get_working_dir(directory.data()), 0);
    expect_absolute("x", "");
    expect_absolute("/x", "/x");
  }
}

}  // namespace
