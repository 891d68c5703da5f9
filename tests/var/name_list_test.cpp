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

class NameList : public testing::Test {
 protected:
  ~NameList() override {
    while (list != nullptr) VarDeleteNameInfo(&list, list->name);
  }
  void add(std::initializer_list<const char*> names) {
    for (const char* name : names) VarAddNameInfo(&list, name, info(entries(list).size()));
  }
  static void* info(std::size_t number) { return reinterpret_cast<void*>(0x100 + number); }

  VarNameInfo* list = nullptr;
};

/// The name as comparisons see it.
std::string folded(std::string name) {
  name.resize(std::min({name.find_first_of("\x01\x1f"), name.size(), std::size_t{1600}}));
  for (char& c : name) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  return name;
}

// Random operations beside a vector: few names, so that they meet all the time.
TEST_F(NameList, BehavesLikeAVector) {
  const std::string names[] = {"",
                               "a",
                               "A",
                               "b",
                               "\xc9",
                               "a\x01",
                               "B\x1f"
                               "cd",
                               "ab\x01x",
                               std::string(1600, 'n'),
                               std::string(1601, 'N')};
  std::vector<Entry> model;
  support::Random random(7);
  const auto at = [&](const std::string& name) {
    return std::find_if(model.begin(), model.end(),
                        [&](const Entry& e) { return folded(e.first) == folded(name); });
  };
  const auto last_at = [&](const std::string& name) {
    const auto found = std::find_if(model.rbegin(), model.rend(), [&](const Entry& e) {
      return folded(e.first) == folded(name);
    });
    return found == model.rend() ? model.end() : found.base() - 1;
  };
  const auto stored = [](const std::string& name) {
    return name.substr(0, name.find_first_of("\x01\x1f"));
  };
  const auto text_of = [](const char* name) { return std::string(name == nullptr ? "-" : name); };
  for (std::size_t i = 0; i < 5000; ++i) {
    SCOPED_TRACE(testing::Message() << "operation " << i << " of seed 7");
    const std::string& name = names[random.below(std::size(names))];
    const std::string& other = names[random.below(std::size(names))];
    switch (const int operation = random.below(7)) {
      case 0:
      case 1: {
        const int position = operation == 0 ? 2 : random.below(4);
        const bool appends = position == 2;
        const auto beside = last_at(other);
        // Appending looks for the name as it is written, and stored names have no control codes.
        const bool is_there =
            appends ? std::any_of(model.begin(), model.end(),
                                  [&](const Entry& e) {
                                    return stored(name) == name &&
                                           std::equal(name.begin(), name.end(), e.first.begin(),
                                                      e.first.end(), [](char a, char b) {
                                                        return folded({a}) == folded({b});
                                                      });
                                  })
                    : at(name) != model.end();
        const bool fits = !is_there && (appends || beside != model.end());
        const char* got = operation == 0
                              ? VarAddNameInfo(&list, name.c_str(), info(i))
                              : VarInsertNameInfo(&list, name.c_str(), info(i), position,
                                                  other.empty() ? nullptr : other.c_str());
        ASSERT_EQ(text_of(got), fits ? stored(name) : "-");
        if (fits) {
          model.insert(appends ? model.end() : beside + (position == 1), {stored(name), info(i)});
        }
        break;
      }
      case 2: {
        const auto found = at(name);
        ASSERT_EQ(VarDeleteNameInfo(&list, name.c_str()),
                  found == model.end() ? nullptr : found->second);
        if (found != model.end()) model.erase(found);
        break;
      }
      case 3: {
        VarExchangeNameInfo(list, name.c_str(), other.c_str());
        const auto a = last_at(name), b = last_at(other);
        if (a != model.end() && b != model.end()) std::swap(a->second, b->second);
        break;
      }
      case 4: {
        const auto found = at(name);
        const char* got = VarReplaceNameInfo(list, name.c_str(), other.c_str());
        ASSERT_EQ(text_of(got), found == model.end() ? "-" : stored(other));
        if (found != model.end()) found->first = stored(other);
        break;
      }
      default: {
        const auto found = at(name);
        void* got = this;
        ASSERT_EQ(VarLookupNameInfo(list, name.c_str(), &got), found != model.end());
        ASSERT_EQ(got, found == model.end() ? this : found->second);
      }
    }
    ASSERT_EQ(entries(list), model);
  }
}

TEST_F(NameList, TakesNulls) {
  void* got = this;
  EXPECT_EQ(VarLookupNameInfo(nullptr, "a", &got), 0);
  EXPECT_EQ(VarReplaceNameInfo(nullptr, "a", "b"), nullptr);
  EXPECT_EQ(VarDeleteNameInfo(&list, "a"), nullptr);
  EXPECT_EQ(VarListInfo(nullptr), nullptr);
  VarExchangeNameInfo(nullptr, "a", "b");
  VarNextListEntry(nullptr);
  add({"a", ""});
  EXPECT_EQ(VarLookupNameInfo(list, nullptr, &got), 1);
  EXPECT_EQ(got, info(1));
}

// A refused node or name leaves the list as it was, and what was taken is given back.
TEST_F(NameList, IsUnchangedWhenTheHeapRefuses) {
  add({"first", "last"});
  const std::vector<Entry> before = entries(list);
  const char* got = nullptr;
  const auto check = [&](bool refused) {
    EXPECT_EQ(got == nullptr, refused);
    EXPECT_EQ(entries(list) == before, refused);
  };
  using support::refuse_each_request;
  EXPECT_EQ(refuse_each_request([&] { got = VarAddNameInfo(&list, "tail", nullptr); }, check), 2);
  VarDeleteNameInfo(&list, "tail");
  EXPECT_EQ(refuse_each_request(
                [&] { got = VarInsertNameInfo(&list, "head", nullptr, 0, "first"); }, check),
            2);
  VarDeleteNameInfo(&list, "head");
  EXPECT_EQ(refuse_each_request([&] { got = VarReplaceNameInfo(list, "last", "tail"); }, check), 1);
}

}  // namespace
