#include <zelvan/var/name_list.h>

#include "support/bits.h"
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
  EXPECT_STREQ(VarInsertNameInfo(&list, "first", nullptr, 3, "width\x01"), "first");
  VarExchangeNameInfo(list, "first", "X");
  EXPECT_STREQ(VarReplaceNameInfo(list, "x", "FIRST"), "FIRST");
  EXPECT_EQ(trace(list), "first=2 Width=1 FIRST=0 ");
  VarNameInfo own = {list, nullptr, info(5)};  // a node of the caller's, without a name
  void* got = nullptr;
  EXPECT_TRUE(VarLookupNameInfo(&own, "", &got) == 1 && got == info(5));
  while (list != nullptr) VarDeleteNameInfo(&list, list->name);
  EXPECT_EQ(VarListInfo(nullptr), nullptr);
  VarNextListEntry(nullptr);
}

// Every byte in a name; then operations on few names, so that they meet all the time, some about
// as long as names count.
TEST(NameList, KeepsEveryResult) {
  support::Digest digest;
  support::Random random(7);
  VarNameInfo* list = nullptr;
  const auto add = [&](const std::string& text) {
    for (const char c : text) digest.add(c);
  };
  const auto change = [&](auto operation) {
    const char* const got = operation();
    add(got == nullptr ? "none" : std::to_string(std::strlen(got)));
  };
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
    if (operation == 0) change([&] { return VarAddNameInfo(&list, a, value); });
    if (operation == 1 || operation == 2)
      change([&] { return VarInsertNameInfo(&list, a, value, position, b); });
    if (operation == 3) change([&] { return VarReplaceNameInfo(list, b, a); });
    if (operation == 4) VarExchangeNameInfo(list, a, b);
    if (operation == 5) got = VarDeleteNameInfo(&list, a);
    digest.add(VarLookupNameInfo(list, b, &got)), digest.add(std::uintptr_t(got));
    add(trace(list));
    while (i % 50 == 49 && list != nullptr) VarDeleteNameInfo(&list, list->name);
  }
  while (list != nullptr) VarDeleteNameInfo(&list, list->name);
  EXPECT_EQ(digest.value(), 0x49eb85a9e560cf6au);
}

}  // namespace
