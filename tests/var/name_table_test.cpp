#include <zelvan/var/name_table.h>
#include <zelvan/var/search_value.h>

#include <string>

#include <gtest/gtest.h>

namespace {

const VarNameValue table[] = {
    {"Low", -1}, {"high", 32767}, {"LOW", 2}, {"again", -1}, {nullptr, 5}};

TEST(NameTable, FindsTheFirstRow) {
  int value = 77;
  EXPECT_EQ(VarLookupInt(table, "low", &value), 1);
  EXPECT_EQ(value, -1);
  EXPECT_EQ(VarLookupInt(table, "HIGH\x01 and more", &value), 1);
  EXPECT_EQ(value, 32767);
  for (const char* missing : {"lo", "lows", "", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(VarLookupInt(table, missing, &value), 0);
  }
  EXPECT_EQ(VarLookupInt(nullptr, "low", &value), 0);
  EXPECT_EQ(value, 32767);

  char* name = nullptr;
  EXPECT_EQ(VarLookupString(table, -1, &name), 1);
  EXPECT_STREQ(name, "Low");
  EXPECT_EQ(VarLookupString(table, 5, &name), 0);  // of the row that ends the table
  EXPECT_STREQ(name, "Unknown");
  EXPECT_EQ(VarLookupString(table, 65535, &name), 0);
  EXPECT_EQ(VarLookupString(nullptr, 2, &name), 0);
  EXPECT_STREQ(name, "Unknown");
}

TEST(SearchValueForKey, FindsTheValue) {
  const struct {
    const char* text;
    const char* key;
    const char* value;  // null if not found
  } rows[] = {
      {"a:1,b:22", "b", "22"},       {"a:1,b:22", "B", "22"},       {"a:1,b:22", "a", "1"},
      {"color:red", "col", nullptr}, {"col:red", "color", "red"},   {"a:b", "a", "b"},
      {"a:", "a", nullptr},          {"ab:", "ab", nullptr},        {"ab:,cd:1", "ab", "cd:1"},
      {"k:a:b,x:1", "k", "a:b"},     {"abc,def:1", "def", nullptr}, {"abc,def:12", "def", "12"},
      {"a:1,b:2", "b", "2"},         {"a:1,b:2,c:3", "c", "3"},     {",:,a:1", "a", "1"},
      {"a::,b:1", "b", "1"},         {"a:1,,,b:22", "b", "22"},     {"abc,def", "abc", nullptr},
      {"abc:::", "abc", nullptr},    {",,,", "a", nullptr},         {"a:12,b", "b", nullptr},
      {"a:12,", "b", nullptr},       {"x,y:12,a:3", "x,y", "12"},   {"k:v", "", nullptr},
      {"k: v w ,x:1", "k", " v w "}, {nullptr, "a", nullptr},       {"a:b", nullptr, nullptr},
  };
  for (const auto& row : rows) {
    const char* value = "untouched";
    const std::intptr_t length = utl_searchValueForKey(row.text, row.key, &value);
    SCOPED_TRACE(testing::Message()
                 << (row.text ? row.text : "null") << ' ' << (row.key ? row.key : "null"));
    if (row.value == nullptr) {
      EXPECT_EQ(length, 0);
      EXPECT_EQ(value, nullptr);
    } else {
      ASSERT_NE(value, nullptr);
      EXPECT_EQ(std::string(value, static_cast<std::size_t>(length)), row.value);
      EXPECT_TRUE(value >= row.text && value < row.text + std::string(row.text).size());
    }
  }
}

}  // namespace
