#include <zelvan/var/name_list.h>
#include <zelvan/var/name_table.h>
#include <zelvan/var/search_value.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

void* info(std::uintptr_t number) { return reinterpret_cast<void*>(number); }

/// Names and numbers of all nodes. Of a long name it tells the length and how it ends.
std::string trace(VarNameInfo* list) {
  std::string result;
  for (; list != nullptr && result.size() < 100000; VarNextListEntry(&list)) {
    const std::string name = VarGetName(list);
    result += name.size() < 9 ? name : std::to_string(name.size()) + name.substr(name.size() - 4);
    result += '=' + std::to_string(std::uintptr_t(VarListInfo(list))) + ' ';
  }
  return result;
}

TEST(NameList, KeepsItsOrder) {
  VarNameInfo* list = nullptr;
  EXPECT_STREQ(VarAddNameInfo(&list, "Width", info(1)), "Width");
  EXPECT_STREQ(VarInsertNameInfo(&list, "x\x1fy", info(2), 1, "WIDTH"), "x");
  VarInsertNameInfo(&list, "first", nullptr, 3, "width\x01");
  VarExchangeNameInfo(list, "first", "X");
  EXPECT_STREQ(VarReplaceNameInfo(list, "x", "FIRST"), "FIRST");
  EXPECT_EQ(trace(list), "first=2 Width=1 FIRST=0 ");
  while (list != nullptr) VarDeleteNameInfo(&list, list->name);
  EXPECT_EQ((VarNextListEntry(nullptr), VarListInfo(nullptr)), nullptr);
}

// Every byte in a name; then operations on few names, some about as long as names count.
TEST(NameList, KeepsEveryResult) {
  support::FnvDigest digest;
  support::Random random(7);
  VarNameInfo* list = nullptr;
  const auto add = [&](const char* name) { digest.add(name ? std::strlen(name) : 9999); };
  for (int i = 1; i < 20000; ++i) {
    std::string names[2] = {{'a', static_cast<char>(i), 'b'}, "A"};
    for (std::string& name : names) {
      if (i < 256) break;
      name.assign(random.below(16) == 0 ? 1597 + random.below(4) : 0, 'n');
      for (int n = random.below(4); n > 0; --n) name += "aAbB\x01\x1f \xc9\xe9"[random.below(9)];
    }
    const char *a = names[0].c_str(), *b = names[1].empty() ? nullptr : names[1].c_str();
    const int operation = i < 256 ? 0 : random.below(8), position = random.below(4);
    void *value = info(i % 5 == 0 ? 0 : i), *got = info(1);
    if (operation == 0) add(VarAddNameInfo(&list, a, value));
    if (operation == 1 || operation == 2) add(VarInsertNameInfo(&list, a, value, position, b));
    if (operation == 3) add(VarReplaceNameInfo(list, b, a));
    if (operation == 4) VarExchangeNameInfo(list, a, b);
    if (operation == 5) got = VarDeleteNameInfo(&list, a);
    VarNameInfo own = {list, nullptr, value};  // a node of the caller's, without a name
    digest.add(VarLookupNameInfo(i % 2 ? &own : list, b, &got)), digest.add(std::uintptr_t(got));
    for (const char c : trace(list)) digest.add(c);
    while (i % 50 == 49 && list != nullptr) VarDeleteNameInfo(&list, list->name);
  }
  EXPECT_EQ(digest.value(), 0x61d34cc438f611d5u);
}

TEST(NameTable, FindsTheFirstRow) {
  const VarNameValue table[] = {{"Low", -1}, {"high", 9}, {"LOW", 2}, {"again", -1}, {nullptr, 5}};
  int value = 77;
  EXPECT_TRUE(VarLookupInt(table, "HIGH\x01 and more", &value) == 1 && value == 9);
  for (int byte = 255; byte >= 0; --byte) {  // a name ends at its first control character
    const char name[] = {'l', 'O', 'w', static_cast<char>(byte), '\0'};
    EXPECT_EQ(VarLookupInt(table, name, &value), byte < 32) << byte;
  }
  EXPECT_EQ(value + VarLookupInt(nullptr, "low", &value) + VarLookupInt(table, "lo", &value), -1);
  for (char* name; const int number : {-1, 2, 5}) {  // the 5 is in the row that ends all
    EXPECT_EQ(VarLookupString(table, number, &name), number < 5);
    EXPECT_STREQ(name, number == -1 ? "Low" : number == 2 ? "LOW" : "Unknown");
    EXPECT_EQ(VarLookupString(nullptr, number, &name), 0);
  }
}

/// The value, and where in the text it is.
std::string value_of(const char* text, const char* key) {
  const char* value = "untouched";
  const std::intptr_t length = utl_searchValueForKey(text, key, &value);
  if (value == nullptr) return "none" + std::to_string(length);
  return std::string(value, static_cast<std::size_t>(length)) + '@' + std::to_string(value - text);
}

// The digest is of all texts of up to seven of five characters, flush against an unreadable page.
TEST(SearchValueForKey, FindsTheValue) {
  EXPECT_EQ(value_of("a:1,b:22", "B") + value_of("col:red", "color"), "22@6red@4");
  EXPECT_EQ(value_of(nullptr, "a") + value_of("a:b", nullptr), "none0none0");
  support::FnvDigest digest;
  support::GuardedArray<char> room(8);
  for (int i = 0; i < 97656; ++i) {
    char* text = room.end() - 1;
    *text = '\0';
    for (int n = i; n > 0; n = (n - 1) / 5) *--text = "a:,Bc"[(n - 1) % 5];
    for (const char* key : {"a", "Ab", "b", "", "aBC", "c,a"}) {
      for (const char c : value_of(text, key)) digest.add(c);
    }
  }
  EXPECT_EQ(digest.value(), 0x1c34cb0d589efbeeu);
}

}  // namespace
