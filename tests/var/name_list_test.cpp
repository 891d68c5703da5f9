#include <zelvan/var/name_list.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <support/random.h>

namespace {

using Entry = std::pair<std::string, int>;  // a stored name and its info
using Entries = std::vector<Entry>;         // the model of a list
using Place = Entries::iterator;

void* info(int number) { return reinterpret_cast<void*>(std::intptr_t{number}); }
int number(void* info) { return static_cast<int>(reinterpret_cast<std::intptr_t>(info)); }

Entries entries_of(VarNameInfo* list) {
  Entries all;
  for (; list != nullptr; VarNextListEntry(&list)) {
    all.emplace_back(VarGetName(list), number(VarListInfo(list)));
  }
  return all;
}

std::string in_small_letters(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

/// Returns what counts of a name in lookups: 1600 characters, up to the first control character.
std::string compared(const std::string& name) {
  const std::size_t end = std::min(name.find_first_of("\x01\x1f"), std::size_t{1600});
  return in_small_letters(name.substr(0, end));
}

Place first(Entries& model, const std::string& name) {
  return std::find_if(model.begin(), model.end(),
                      [&](const Entry& e) { return compared(e.first) == compared(name); });
}

Place last(Entries& model, const std::string& name) {
  Place found = model.end();
  for (Place p = model.begin(); p != model.end(); ++p) {
    if (compared(p->first) == compared(name)) found = p;
  }
  return found;
}

bool has_as_written(const Entries& model, const std::string& name) {
  return std::any_of(model.begin(), model.end(), [&](const Entry& e) {
    return in_small_letters(e.first) == in_small_letters(name);
  });
}

const char* const operations[] = {"VarAddNameInfo",    "VarInsertNameInfo",   "VarDeleteNameInfo",
                                  "VarLookupNameInfo", "VarExchangeNameInfo", "VarReplaceNameInfo"};

/// Short names, long names that begin alike, and names that differ only after 1600 characters.
std::vector<std::string> hard_names() {
  std::vector<std::string> names = {"", "a", "A", "b", "\xC0", "\xE0", "a\x01z", "[", "{", "@"};
  for (const char* tail : {"", "1", "12345678", "x", "X", "\x1f", "[1234567", "{1234567"}) {
    names.push_back("Layer of the map " + std::string(tail));
    names.push_back("lAYER of the map " + std::string(tail) + "more");
    names.push_back(std::string(1600, 'n') + tail);
    names.push_back(std::string(1599, 'n') + tail);
  }
  return names;
}

TEST(VarNameList, BehavesLikeAVectorOfPairs) {
  support::Random random(1);
  const std::vector<std::string> names = hard_names();
  for (int round = 0; round < 100; ++round) {
    VarNameInfo* list = nullptr;
    Entries model;
    for (int step = 0; step < 60; ++step) {
      const std::string name = names[random.below(static_cast<int>(names.size()))];
      const std::string other = names[random.below(static_cast<int>(names.size()))];
      const std::string stored = name.substr(0, name.find_first_of("\x01\x1f"));
      const Place at = first(model, name);
      const bool is_there = at != model.end();
      const std::string operation = operations[std::max(random.below(9) - 3, 0)];
      SCOPED_TRACE(testing::Message() << "round " << round << ", step " << step << ", " << operation
                                      << " of '" << name << "' and '" << other << "'");
      if (operation == "VarAddNameInfo") {
        const bool fits = !has_as_written(model, name);
        if (fits) model.emplace_back(stored, step);
        ASSERT_EQ(VarAddNameInfo(&list, name.c_str(), info(step)) != nullptr, fits);
      } else if (operation == "VarInsertNameInfo") {
        const int position = random.below(4) - 1;  // 1: after, 2: at the tail, others: before
        const auto reference = position == 2 ? model.end() : last(model, other);
        const bool fits =
            position == 2 ? !has_as_written(model, name) : !is_there && reference != model.end();
        if (fits) model.insert(reference + (position == 1), {stored, step});
        const char* const inserted =
            VarInsertNameInfo(&list, name.c_str(), info(step), position, other.c_str());
        ASSERT_EQ(inserted != nullptr, fits);
      } else if (operation == "VarDeleteNameInfo") {
        ASSERT_EQ(number(VarDeleteNameInfo(&list, name.c_str())), is_there ? at->second : 0);
        if (is_there) model.erase(at);
      } else if (operation == "VarExchangeNameInfo") {
        const auto one = last(model, name);
        const auto two = last(model, other);
        if (one != model.end() && two != model.end()) std::swap(one->second, two->second);
        VarExchangeNameInfo(list, name.c_str(), other.c_str());
      } else if (operation == "VarReplaceNameInfo") {
        if (is_there) at->first = other.substr(0, other.find_first_of("\x01\x1f"));
        const char* const renamed = VarReplaceNameInfo(list, name.c_str(), other.c_str());
        ASSERT_EQ(renamed != nullptr, is_there);
      } else {
        void* found = info(-1);
        ASSERT_EQ(VarLookupNameInfo(list, name.c_str(), &found), is_there);
        ASSERT_EQ(number(found), is_there ? at->second : -1);
      }
      ASSERT_EQ(entries_of(list), model);
    }
    while (list != nullptr) VarDeleteNameInfo(&list, VarGetName(list));
  }
}

}  // namespace
