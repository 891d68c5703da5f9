#include <zelvan/osh/paths.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/guarded_array.h>

namespace {

/// A text with room for so many bytes at least, flush against an unreadable page.
struct Room : support::GuardedArray<char> {
  Room(const std::string& text, std::size_t size) : GuardedArray(std::max(size, text.size()) + 1) {
    std::strcpy(data(), text.c_str());
  }
};

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

TEST(Paths, AreSplitInTheirOwnPlace) {
  for (const std::string& path : short_texts(5)) {
    const std::size_t separator = path.find_last_of("/\\");
    const bool has_one = separator != std::string::npos;
    const std::string file = has_one ? path.substr(separator + 1) : path;
    for (const char place : {'d', 'f', '-'}) {
      Room text(path, 0), to("", path.size()), other("", path.size());
      char* const directory = place == 'd' ? text.data() : to.data();
      char* const name = place == 'f' ? text.data() : other.data();
      EXPECT_EQ(utl_file_extension(text.data()),
                file.substr(std::min(file.find('.'), file.size())));
      EXPECT_EQ(osh_truncate_path(text.data(), directory, name), 1);
      EXPECT_EQ(directory + ('|' + file), (has_one ? path.substr(0, separator) : "") + '|' + name);
      EXPECT_TRUE(place != '-' || text.data() == path) << path;
    }
  }
  char text[] = "a/b";
  EXPECT_EQ(osh_truncate_path(nullptr, text, text) + osh_truncate_path(text, nullptr, text) +
                osh_truncate_path(text, text, nullptr),
            0);
  EXPECT_STREQ(text, "a/b");
}

TEST(Paths, AreJoinedInTheirOwnPlace) {
  for (const std::string& first : short_texts(2)) {
    for (const std::string& second : short_texts(2)) {
      const bool is_joined = first.ends_with('\\') || second.starts_with('\\');
      const std::string joined = first + (is_joined ? "" : "\\") + second;
      for (const char place : {'1', '2', '-'}) {
        Room text(place == '1' ? first : place == '2' ? second : "", joined.size());
        EXPECT_EQ(osh_append_path(place == '1' ? text.data() : given(first),
                                  place == '2' ? text.data() : given(second), text.data()),
                  1);
        EXPECT_EQ(text.data(), joined);
      }
    }
  }
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
      Room result(onto_prefix ? prefix : taken, 1023);
      char* const start = onto_prefix ? result.data() : given(prefix);
      char* const letters = onto_prefix ? const_cast<char*>(taken) : result.data();
      errno = 77;
      EXPECT_EQ(utl_unique_filename(start, letters, result.data()), next ? 0 : -1);
      EXPECT_TRUE(next == nullptr || errno == 77) << errno;
      EXPECT_EQ(result.data(), prefix + (next ? next : taken));
    }
    fs::remove(prefix + taken);
  }
  for (const std::size_t length : {1022, 1023}) {
    Room result("", 1023);
    const std::string prefix = padded("x", length);
    EXPECT_EQ(utl_unique_filename(given(prefix), "A"_c, result.data()), length < 1023 ? 0 : -1);
    EXPECT_EQ(result.data(), length < 1023 ? prefix + 'A' : "");
  }
}

}  // namespace
