#include <zelvan/var/name_table.h>
#include <zelvan/var/search_value.h>

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(NameTable, FindsTheFirstRow) {
  const VarNameValue table[] = {{"Low", -1}, {"high", 9}, {"LOW", 2}, {"again", -1}, {nullptr, 5}};
  int value = 77;
  EXPECT_TRUE(VarLookupInt(table, "low", &value) == 1 && value == -1);
  EXPECT_TRUE(VarLookupInt(table, "HIGH\x01 and more", &value) == 1 && value == 9);
  for (const char* missing : {"lo", "lows", "", static_cast<const char*>(nullptr)}) {
    EXPECT_TRUE(VarLookupInt(table, missing, &value) == 0 && value == 9);
  }
  EXPECT_EQ(VarLookupInt(nullptr, "low", &value), 0);
  char* name = nullptr;
  EXPECT_TRUE(VarLookupString(table, -1, &name) == 1 && name == table[0].name);
  for (const int missing : {5, 65535}) {  // 5 stands in the row that ends the table
    EXPECT_EQ(VarLookupString(table, missing, &name), 0);
    EXPECT_STREQ(name, "Unknown");
    name = nullptr;
  }
  EXPECT_EQ(VarLookupString(nullptr, 2, &name), 0);
}

std::string value_of(const char* text, const char* key) {
  const char* value = "untouched";
  const std::intptr_t length = utl_searchValueForKey(text, key, &value);
  return value == nullptr ? "none" : std::string(value, static_cast<std::size_t>(length));
}

TEST(SearchValueForKey, FindsTheValue) {
  const struct {
    const char *text, *key, *value;
  } rows[] = {
      {"a:1,b:22", "B", "22"},      {"a:1,b:22", "a", "1"},      {"color:red", "col", "none"},
      {"col:red", "color", "red"},  {"a:b", "a", "b"},           {"a:", "a", "none"},
      {"ab:", "ab", "none"},        {"ab:,cd:1", "ab", "cd:1"},  {"k:a:b,x:1", "k", "a:b"},
      {"abc,def:1", "def", "none"}, {"abc,def:12", "def", "12"}, {"a:1,b:2", "b", "2"},
      {"a:1,b:2,c:3", "c", "3"},    {",:,a:1", "a", "1"},        {"a::,b:1", "b", "1"},
      {"a:1,,,b:22", "b", "22"},    {"abc,def", "abc", "none"},  {"abc:::", "abc", "none"},
      {",,,", "a", "none"},         {"a:12,b", "b", "none"},     {"a:12,", "b", "none"},
      {"x,y:12,a:3", "x,y", "12"},  {"k:v", "", "none"},         {"k: v w ,x:1", "k", " v w "},
      {nullptr, "a", "none"},       {"a:b", nullptr, "none"}};
  for (const auto& [text, key, value] : rows) {
    EXPECT_EQ(value_of(text, key), value) << (text == nullptr ? "null" : text);
  }
}

}  // namespace
