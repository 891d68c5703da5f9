#include <zelvan/var/search_value.h>

#include <cctype>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <support/random.h>

namespace {

/// Returns the value found, or "none"; "broken" if length and pointer contradict each other.
std::string found(const std::string& text, const char* key) {
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
      {"color:red", "col", "none", "but not to a shorter one"},
      {"k:a:b,x:1", "k", "a:b", "a value may hold colons"},
      {"ab:,cd:1", "ab", "cd:1", "runs of separators count as one"},
      {",,:a::1", "a", "1", "also before the first key"},
      {"ab:", "ab", "none", "an empty value"},
      {"a:b", "a", "b", "the shortest that can succeed"},
      {"abc,def:12", "def", "12", "an item without a colon borrows the next one's"},
      {"abc,def:1", "def", "none", "and takes a last single character away"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(found(row.text, row.key), row.value)
        << "text '" << row.text << "', key '" << row.key << "': " << row.why;
  }
  EXPECT_EQ(found("a:1", nullptr), "none");
  const char* value = "";
  EXPECT_EQ(utl_searchValueForKey(nullptr, "a", &value), 0);
  EXPECT_EQ(value, nullptr);
}

/// The search as the interface describes it, one step after the other: every colon is visited.
std::string model(const std::string& text, const std::string& key) {
  const std::size_t n = text.size();
  if (n < 3) return "none";
  const auto skip = [&](std::size_t at) {
    while (at < n && (text[at] == ':' || text[at] == ',')) ++at;
    return at;
  };
  const auto begins_key = [&](std::string_view item) {
    if (item.size() > key.size()) return false;
    for (std::size_t i = 0; i < item.size(); ++i) {
      if (std::tolower(item[i]) != std::tolower(key[i])) return false;
    }
    return true;
  };
  std::size_t item = 0;
  bool answers = false;
  for (;;) {
    item = skip(item);
    std::size_t start = text.find(':', item);
    if (start == std::string::npos) return "none";
    if (item != start) answers = begins_key(std::string_view(text).substr(item, start - item));
    start = skip(start);
    item = std::min(text.find(',', item), n);
    if (start >= n) return "none";
    if (answers) return text.substr(start, std::min(text.find(',', start), n) - start);
    if (start == n - 1 || item >= n - 1) return "none";
  }
}

TEST(UtlSearchValueForKey, AgreesWithTheWalkFromColonToColon) {
  support::Random random(1);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    // Up to 100 characters, so that blocks of 32 and the rest after them both matter.
    for (int n = random.below(round % 2 == 0 ? 12 : 100); n > 0; --n) {
      text += "abAB:,"[random.below(6)];
    }
    if (round % 3 == 0) text = "some_long_key:1," + text + ",some_long_kex:2," + text;
    for (const char* key : {"a", "ab", "b", "aab", "some_long_kex", "SOME_long_key_"}) {
      ASSERT_EQ(found(text, key), model(text, key)) << "text '" << text << "', key '" << key << "'";
    }
  }
}

}  // namespace
