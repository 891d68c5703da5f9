#include <zelvan/var/name_list.h>

#include "support/random.h"
#include "support/refusing_heap.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Entry = std::pair<std::string, void*>;

std::vector<Entry> entries(VarNameInfo* list) {
  std::vector<Entry> result;
  for (; list != nullptr && result.size() < 1000; VarNextListEntry(&list)) {
    result.emplace_back(VarGetName(list), VarListInfo(list));
  }
  return result;
}

std::string stored(const std::string& name) {
  return name.substr(0, name.find_first_of("\x01\x1f"));
}

std::string small(std::string name) {
  for (char& c : name) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  return name;
}

/// True of an entry that goes by that name.
auto is_named(const std::string& name) {
  const auto folded = [](const std::string& n) { return small(stored(n)).substr(0, 1600); };
  return [=](const Entry& e) { return folded(e.first) == folded(name); };
}

// Random operations beside a vector: few names, so that they meet all the time. Each request for
// memory is refused once, which leaves the list as it was.
TEST(NameList, BehavesLikeAVector) {
  const std::string names[] = {"",
                               "a",
                               "A",
                               "b",
                               "\xc9",
                               "a\x01",
                               "B\x1f",
                               "b c",
                               "ab\x01x",
                               std::string(1599, 'n'),
                               std::string(1600, 'n'),
                               std::string(1601, 'N')};
  VarNameInfo* list = nullptr;
  std::vector<Entry> model;
  support::Random random(7);
  const auto expect = [&](int requests, const std::string& name, auto operation) {
    const char* got = nullptr;
    const auto check = [&](bool refused) {
      EXPECT_EQ(got == nullptr ? "none" : got, refused || requests == 0 ? "none" : stored(name));
      EXPECT_TRUE(!refused || entries(list) == model);
    };
    EXPECT_EQ(support::refuse_each_request([&] { got = operation(); }, check), requests);
  };
  for (std::size_t i = 0; i < 10000; ++i) {
    SCOPED_TRACE(testing::Message() << "operation " << i << " of seed 7");
    const std::string &name = names[random.below(12)], &other = names[random.below(12)];
    const char *a = name.c_str(), *b = other.empty() ? nullptr : other.c_str();
    const auto first = std::find_if(model.begin(), model.end(), is_named(name));
    const auto behind_a = std::find_if(model.rbegin(), model.rend(), is_named(name)).base();
    const auto behind_b = std::find_if(model.rbegin(), model.rend(), is_named(other)).base();
    const bool has_a = first != model.end(), has_b = behind_b != model.begin();
    void* const info = &model + i;
    void* got = &list;
    switch (const int operation = random.below(9)) {
      case 0:
      case 1: {  // at the tail, where the name is looked for as it is written
        const bool fits = std::none_of(model.begin(), model.end(), [&](const Entry& e) {
          return small(e.first) == small(name);
        });
        expect(fits ? 2 : 0, name, [&] {
          return operation == 0 ? VarAddNameInfo(&list, a, info)
                                : VarInsertNameInfo(&list, a, info, 2, b);
        });
        if (fits) model.emplace_back(stored(name), info);
        break;
      }
      case 2:
      case 3: {
        const int position = operation == 2 ? 1 : random.below(2) * 3;
        expect(!has_a && has_b ? 2 : 0, name,
               [&] { return VarInsertNameInfo(&list, a, info, position, b); });
        if (!has_a && has_b) model.insert(behind_b - (position != 1), {stored(name), info});
        break;
      }
      case 4:
        expect(has_b ? 1 : 0, name, [&] { return VarReplaceNameInfo(list, b, a); });
        if (has_b) std::find_if(model.begin(), model.end(), is_named(other))->first = stored(name);
        break;
      case 5:
        VarExchangeNameInfo(list, a, b);
        if (has_a && has_b) std::swap(behind_a[-1].second, behind_b[-1].second);
        break;
      case 6:
        EXPECT_EQ(VarDeleteNameInfo(&list, a), has_a ? first->second : nullptr);
        if (has_a) model.erase(first);
        break;
      default:
        EXPECT_EQ(VarLookupNameInfo(list, a, &got), has_a);
        EXPECT_EQ(got, has_a ? first->second : &list);
    }
    while (i % 50 == 49 && list != nullptr) VarDeleteNameInfo(&list, list->name);
    if (i % 50 == 49) model.clear();
    ASSERT_EQ(entries(list), model);
  }
  VarNextListEntry(nullptr);
  EXPECT_EQ(VarListInfo(nullptr), nullptr);
}

}  // namespace
