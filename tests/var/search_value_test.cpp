#include <zelvan/var/search_value.h>

#include <string>

#include <gtest/gtest.h>

/// Returns the value found, or "none"; "broken" if length and pointer contradict each other.
static std::string found(const std::string& text, const char* key) {
  const char* value = "";
  const auto length = utl_searchValueForKey(text.c_str(), key, &value);
  if (value == nullptr) return length == 0 ? "none" : "broken";
  const bool is_inside = value >= text.data() && value + length <= text.data() + text.size();
  return is_inside && length > 0 ? std::string(value, static_cast<std::size_t>(length)) : "broken";
}

TEST(UtlSearchValueForKey, FindsTheValueOfAKey) {
  const auto expect = [](std::string item, const char* key, const char* value, const char* why) {
    for (const char* before : {"", "zz:1,", ",zz:a:b,,:yy:22,"}) {
      const std::string text = before + item;
      EXPECT_EQ(found(text, key), value) << "text '" << text << "', key '" << key << "': " << why;
    }
  };
  expect("a:1,b:22", "B", "22", "the last item, in any case");
  expect("col:red", "color", "red", "an item matches every key that begins with its own");
  expect("color:red", "colo", "none", "but not a shorter one");
  expect("k:a:b,x:1", "k", "a:b", "a value may hold colons");
  expect("ab:,cd:1", "ab", "cd:1", "runs of separators count as one");
  expect(",,:a::1", "a", "1", "also before the first key");
  expect("a:", "a", "none", "an empty value");
  expect("a:b", "a", "b", "the shortest that can succeed");
  expect("abc,def:12", "def", "12", "an item without a colon borrows the next one's");
  expect("abc,def:1", "def", "none", "the search ends at a last single character");
  EXPECT_EQ(found("a:1", nullptr), "none");
  const char* value = "";
  EXPECT_EQ(utl_searchValueForKey(nullptr, "a", &value), 0);
  EXPECT_EQ(value, nullptr);
}
