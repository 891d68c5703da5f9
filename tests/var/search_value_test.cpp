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
  const struct {
    const char *text, *key, *value, *why;
  } rows[] = {
      {"a:1,b:22", "a", "1", "the first item"},
      {"a:1,b:22", "B", "22", "the last item, in any case"},
      {"col:red", "color", "red", "an item answers to every key that begins with the item's"},
      {"color:red", "colo", "none", "but not to a shorter one"},
      {"k:a:b,x:1", "k", "a:b", "a value may hold colons"},
      {"ab:,cd:1", "ab", "cd:1", "runs of separators count as one"},
      {",,:a::1", "a", "1", "also before the first key"},
      {"a:", "a", "none", "an empty value"},
      {"a:b", "a", "b", "the shortest that can succeed"},
      {"abc,def:12", "def", "12", "an item without a colon borrows the next one's"},
      {"abc,def:1", "def", "none", "and takes a last single character away"},
  };
  for (const auto& row : rows) {
    for (const char* before : {"", "zz:1,", ",zz:a:b,,:yy:22,"}) {
      const std::string text = std::string(before) + row.text;
      EXPECT_EQ(found(text, row.key), row.value)
          << "text '" << text << "', key '" << row.key << "': " << row.why;
    }
  }
  EXPECT_EQ(found("a:1", nullptr), "none");
  const char* value = "";
  EXPECT_EQ(utl_searchValueForKey(nullptr, "a", &value), 0);
  EXPECT_EQ(value, nullptr);
}
