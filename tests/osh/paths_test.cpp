#include <zelvan/osh/paths.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>

namespace {

/// All texts of so many of these bytes at most.
std::vector<std::string> short_texts(std::size_t most) {
  std::vector<std::string> all = {""};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (const char c : {'a', '.', '/', '\\'}) {
      if (all[i].size() < most) all.push_back(all[i] + c);
    }
  }
  return all;
}

// In each test an output lies in a place of its own or in that of an input.
TEST(Paths, AreSplitAtTheirLastSeparator) {
  for (const std::string& path : short_texts(5)) {
    const std::size_t file = path.find_last_of("/\\") + 1;  // 0 without a separator
    const std::string expected =
        path.substr(0, std::max<std::size_t>(file, 1) - 1) + '|' + path.substr(file);
    for (const char place : {'d', 'f', '-'}) {
      char text[8] = "", other[8] = "#######", third[8] = "#######";
      std::strcpy(text, path.c_str());
      EXPECT_EQ(utl_file_extension(text) - text, std::min(path.find('.', file), path.size()));
      char* const directory = place == 'd' ? text : other;
      char* const name = place == 'f' ? text : third;
      EXPECT_EQ(osh_truncate_path(text, directory, name), 1);
      EXPECT_EQ(directory + std::string("|") + name, expected);
      EXPECT_TRUE((place != '-' || text == path) &&
                  (place == 'd' || directory[std::strlen(directory) + 1] == '#') &&
                  (place == 'f' || name[std::strlen(name) + 1] == '#'))
          << path;
    }
  }
  char text[] = "a/b";
  EXPECT_EQ(osh_truncate_path(nullptr, text, text) + osh_truncate_path(text, nullptr, text) +
                osh_truncate_path(text, text, nullptr),
            std::strcmp(text, "a/b"));
}

TEST(Paths, AreJoinedByOneBackslash) {
  for (const std::string& first : short_texts(2)) {
    for (const std::string& second : short_texts(2)) {
      const bool is_joined = first.ends_with('\\') || second.starts_with('\\');
      for (const char place : {'1', '2', '-'}) {
        char text[8] = "#######";
        char* const inputs[] = {place == '1' ? text : given(first),
                                place == '2' ? text : given(second)};
        if (place != '-') std::strcpy(text, (place == '1' ? first : second).c_str());
        EXPECT_EQ(osh_append_path(inputs[0], inputs[1], text), 1);
        EXPECT_EQ(text, first + (is_joined ? "" : "\\") + second);
        EXPECT_EQ(text[std::strlen(text) + 1], '#');
      }
    }
  }
}

TEST(Paths, FindTheNextFreeName) {
  World world;
  const std::string prefix = "AA.", longest = padded("x", 1022);  // no carry reaches these
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {prefix, "AAZ", "ABA"},   {prefix, "AZZ", "BAA"},   {prefix, "ZZZ", ""},
      {prefix, "A1", "B1"},     {prefix, "MMM", "MMN"},   {prefix, "Y", "Z"},
      {prefix, "", ""},         {prefix, "AZ-Z", "BA-A"}, {prefix, "a@", ""},
      {prefix, "A9Z[", "B9A["}, {longest, "A", "B"}};
  for (const auto& [start, taken, next] : rows) {
    put(start + taken);
    for (const bool onto_start : {true, false}) {
      std::string text = (onto_start ? start : taken) + '\0';
      text.resize(1025, '#');
      char* const result = text.data();
      errno = 77;
      EXPECT_EQ(utl_unique_filename(onto_start ? result : given(start),
                                    onto_start ? given(taken) : result, result),
                next.empty() ? -1 : 0);
      EXPECT_TRUE(next.empty() || errno == 77) << errno;
      EXPECT_EQ(text.substr(0, text.find('#')), start + (next.empty() ? taken : next) + '\0');
    }
    fs::remove(start + taken);
  }
  char result[1024] = "#";
  EXPECT_EQ(utl_unique_filename(given(longest), "AA"_c, result) + *result, -1);
}

}  // namespace
