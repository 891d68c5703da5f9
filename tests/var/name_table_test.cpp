#include <zelvan/var/name_table.h>
#include <zelvan/var/search_value.h>

#include "support/bits.h"
#include "support/guarded_array.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(NameTable, FindsTheFirstRow) {
  const VarNameValue table[] = {{"Low", -1}, {"high", 9}, {"LOW", 2}, {"again", -1}, {nullptr, 5}};
  int value = 77;
  EXPECT_TRUE(VarLookupInt(table, "HIGH\x01 and more", &value) == 1 && value == 9);
  for (const char* missing : {"lo", "lows", "", static_cast<const char*>(nullptr)}) {
    EXPECT_TRUE(VarLookupInt(table, missing, &value) == 0 && value == 9);
  }
  for (int byte = 255; byte >= 0; --byte) {  // a name ends at its first control character
    const char name[] = {'l', 'O', 'w', static_cast<char>(byte), '\0'};
    EXPECT_EQ(VarLookupInt(table, name, &value), byte < 32) << byte;
  }
  EXPECT_EQ(value + VarLookupInt(nullptr, "low", &value), -1);
  for (char* name; const int number : {-1, 2, 5, 65535}) {  // the 5 is in the row that ends all
    EXPECT_EQ(VarLookupString(table, number, &name), number < 5);
    EXPECT_STREQ(name, number == -1 ? "Low" : number == 2 ? "LOW" : "Unknown");
    EXPECT_EQ(VarLookupString(nullptr, number, &name), 0);
    EXPECT_STREQ(name, "Unknown");
  }
}

std::string value_of(const char* text, const char* key) {
  const char* value = "untouched";
  const std::intptr_t length = utl_searchValueForKey(text, key, &value);
  return value == nullptr ? "none" : std::string(value, static_cast<std::size_t>(length));
}

// The digest is of all texts of up to seven of five characters, each flush against a page that
// can't be read.
TEST(SearchValueForKey, FindsTheValue) {
  const char* const rows[][3] = {
      {"a:1,b:22", "B", "22"},      {"color:red", "col", "none"}, {"col:red", "color", "red"},
      {"ab:", "ab", "none"},        {"ab:,cd:1", "ab", "cd:1"},   {"k:a:b,x:1", "k", "a:b"},
      {"abc,def:1", "def", "none"}, {"abc,def:12", "def", "12"},  {"x,y:12,a:3", "x,y", "12"},
      {nullptr, "a", "none"},       {"a:b", nullptr, "none"}};
  for (const auto& [text, key, value] : rows) EXPECT_EQ(value_of(text, key), value) << key;
  support::Digest digest;
  support::GuardedArray<char> room(8);
  for (int i = 0; i < 97656; ++i) {
    char* text = room.end() - 1;
    *text = '\0';
    for (int n = i; n > 0; n = (n - 1) / 5) *--text = "a:,Bc"[(n - 1) % 5];
    for (const char* key : {"a", "Ab", "b", "", "aBC", "c,a"}) {
      const char* value = nullptr;
      digest.add(utl_searchValueForKey(text, key, &value));
      digest.add(value == nullptr ? 99 : value - text);
    }
  }
  EXPECT_EQ(digest.value(), 0x7c78831ee0610246u);
}

}  // namespace
