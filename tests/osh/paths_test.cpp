#include <zelvan/osh/paths.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/guarded_array.h>

using Text = support::GuardedArray<char>;

/// Returns the text, followed by zeros up to `size` bytes.
static std::string filled_up(std::string text, std::size_t size) {
  text.resize(size);
  return text;
}

/// Returns all texts of up to `longest` of the characters that mean something in a path.
static std::vector<std::string> short_texts(std::size_t longest) {
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; texts[i].size() < longest; ++i) {
    for (const char c : {'a', '.', '/', '\\'}) texts.push_back(texts[i] + c);
  }
  return texts;
}

static std::string absolute(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> text(osh_find_exec_path(given(path)), std::free);
  return text.get();
}

TEST(AppendPath, PutsOneBackslashBetweenUnlessThereIsOne) {
  for (const std::string& first : short_texts(2)) {
    for (const std::string& second : short_texts(2)) {
      const bool has_backslash = first.ends_with('\\') || second.starts_with('\\');
      const std::string joined = first + (has_backslash ? "" : "\\") + second;
      Text onto_first(filled_up(first, joined.size() + 1));
      EXPECT_EQ(osh_append_path(onto_first.data(), given(second), onto_first.data()), 1);
      EXPECT_EQ(onto_first.data(), joined) << first << " and " << second;
      Text onto_second(filled_up(second, joined.size() + 1));
      EXPECT_EQ(osh_append_path(given(first), onto_second.data(), onto_second.data()), 1);
      EXPECT_EQ(onto_second.data(), joined) << first << " and " << second;
    }
  }
}

TEST(TruncatePath, SplitsAtTheLastSeparator) {
  for (const std::string& path : short_texts(5)) {
    const std::size_t file = path.find_last_of("/\\") + 1;  // 0 without a separator
    const std::string directory = path.substr(0, file == 0 ? 0 : file - 1);
    Text in_place(filled_up(path, path.size() + 1)), other(path.size() + 1);
    EXPECT_EQ(osh_truncate_path(in_place.data(), in_place.data(), other.data()), 1);
    EXPECT_EQ(in_place.data(), directory) << path;
    EXPECT_EQ(other.data(), path.substr(file)) << path;
    Text onto_file(filled_up(path, path.size() + 1));
    EXPECT_EQ(osh_truncate_path(onto_file.data(), other.data(), onto_file.data()), 1);
    EXPECT_EQ(onto_file.data(), path.substr(file)) << path;
    const std::size_t dot = std::min(path.find('.', file), path.size());
    EXPECT_EQ(utl_file_extension(given(path)), path.c_str() + dot) << "the extension of " << path;
  }
  char untouched[] = "a/b";
  EXPECT_EQ(osh_truncate_path(nullptr, untouched, untouched), 0);
  EXPECT_EQ(osh_truncate_path(untouched, nullptr, untouched), 0);
  EXPECT_EQ(osh_truncate_path(untouched, untouched, nullptr), 0);
  EXPECT_STREQ(untouched, "a/b");
}

TEST(FindExecPath, PutsTheCurrentDirectoryBeforeAPath) {
  if (!support::is_posix) GTEST_SKIP() << "the system makes the form";
  const World world;
  EXPECT_EQ(absolute("a/.."), world.path + "/a/..") << "a could be a link";
  EXPECT_EQ(absolute(".//./\\x/."), world.path + "/\\x");
  EXPECT_EQ(absolute("//.//a...//"), "/a...");
  EXPECT_EQ(absolute(""), "");
  char directory[1024];
  EXPECT_EQ(osh_get_working_dir(directory), 1);
  EXPECT_EQ(directory, world.path) << "the current directory";
  fs::current_path("/");
  EXPECT_EQ(absolute("./x"), "/x");
}

TEST(GetWorkingDir, RefusesWhatIsRemovedOrDoesNotFit) {
  if (!support::is_posix) GTEST_SKIP() << "the system limits the path, and keeps its directory";
  const World world;
  char directory[1024];
  for (const std::size_t length : {1023, 1024}) {
    std::string deep = world.path;
    while (deep.size() + 201 < length) deep += '/' + std::string(199, 'd');
    deep += '/' + std::string(length - deep.size() - 1, 'd');
    fs::create_directories(deep);
    fs::current_path(deep);
    directory[0] = '~';
    errno = 0;
    const bool fits = length < sizeof directory;
    EXPECT_EQ(osh_get_working_dir(directory), fits) << length;
    EXPECT_EQ(directory[0], fits ? '/' : '~') << length;
    EXPECT_EQ(errno, fits ? 0 : ERANGE) << length;
  }
  fs::remove(fs::current_path());
  EXPECT_EQ(osh_get_working_dir(directory), 0);
  EXPECT_EQ(directory[0], '~') << "unchanged";
  EXPECT_EQ(errno, ENOENT);
}

TEST(UniqueFilename, CountsInCapitalLettersToAFreeName) {
  const World world;
  const auto expect = [](const std::string& prefix, const std::string& taken,
                         const std::string& next, const char* why) {
    SCOPED_TRACE(taken + " is taken: " + why);
    put(prefix + taken);
    const int expected = next.empty() ? -1 : 0;
    const std::string name = prefix + (next.empty() ? taken : next);
    Text result(filled_up(taken, 1024));  // the result may overwrite the letters
    EXPECT_EQ(utl_unique_filename(given(prefix), result.data(), result.data()), expected);
    EXPECT_EQ(result.data(), name);
    fs::remove(prefix + taken);
  };
  expect("AA.", "AAY", "AAZ", "Z comes after Y");
  expect("AA.", "AZZ", "BAA", "a carry to the left");
  expect("AA.", "ZZZ", "", "no carry reaches the prefix");
  expect("AA.", "A9Z[@", "B9A[@", "other characters stay");
  expect(padded("x", 1022), "A", "B", "the longest name");
}

TEST(FileParms, AreTenNumbersInARecordOfTheLibrary) {
  std::vector<short> numbers(10);
  osh_get_file_parms(numbers.data());
  EXPECT_EQ(numbers, (std::vector<short>{1, 2, 8, 2, 1, 1, 2, 4, 4, 8}));
  EXPECT_TRUE(std::equal(numbers.begin(), numbers.end(), osh_get_sys_parms()));
}
