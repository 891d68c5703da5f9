#include <zelvan/var/name_list.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <support/random.h>

namespace {

using Entry = std::pair<std::string, int>;  // a stored name and its info
using Entries = std::vector<Entry>;

/// A list of names that frees itself. Each info is a number.
struct List {
  List() = default;
  List(const List&) = delete;
  ~List() {
    while (head != nullptr) VarDeleteNameInfo(&head, VarGetName(head));
  }

  static void* info(int number) { return reinterpret_cast<void*>(std::intptr_t{number}); }
  static int number(void* info) { return static_cast<int>(reinterpret_cast<std::intptr_t>(info)); }

  bool add(const std::string& name, int number) {
    return VarAddNameInfo(&head, name.c_str(), info(number)) != nullptr;
  }
  Entries entries() const {
    Entries all;
    for (VarNameInfo* entry = head; entry != nullptr; VarNextListEntry(&entry)) {
      all.emplace_back(VarGetName(entry), number(VarListInfo(entry)));
    }
    return all;
  }

  VarNameInfo* head = nullptr;
};

std::string in_small_letters(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

/// Returns what counts of a name in lookups: 1600 characters, up to the first control character.
std::string compared(const std::string& name) {
  const std::size_t end = std::min(name.find_first_of("\x01\x1f"), std::size_t{1600});
  return in_small_letters(name.substr(0, end));
}

/// A list as a vector of pairs.
struct Model {
  using Place = Entries::iterator;

  Place first(const std::string& name) {
    return std::find_if(entries.begin(), entries.end(),
                        [&](const Entry& e) { return compared(e.first) == compared(name); });
  }
  Place last(const std::string& name) {
    Place found = entries.end();
    for (Place p = entries.begin(); p != entries.end(); ++p) {
      if (compared(p->first) == compared(name)) found = p;
    }
    return found;
  }
  bool has_as_written(const std::string& name) {
    return std::any_of(entries.begin(), entries.end(), [&](const Entry& e) {
      return in_small_letters(e.first) == in_small_letters(name);
    });
  }

  Entries entries;
};

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
    List list;
    Model model;
    for (int step = 0; step < 60; ++step) {
      const std::string name = names[random.below(static_cast<int>(names.size()))];
      const std::string other = names[random.below(static_cast<int>(names.size()))];
      const std::string stored = name.substr(0, name.find_first_of("\x01\x1f"));
      const auto first = model.first(name);
      const bool is_there = first != model.entries.end();
      const std::string operation = operations[std::max(random.below(9) - 3, 0)];
      SCOPED_TRACE(testing::Message() << "round " << round << ", step " << step << ", " << operation
                                      << " of '" << name << "' and '" << other << "'");
      if (operation == "VarAddNameInfo") {
        const bool fits = !model.has_as_written(name);
        if (fits) model.entries.emplace_back(stored, step);
        ASSERT_EQ(list.add(name, step), fits);
      } else if (operation == "VarInsertNameInfo") {
        const int position = random.below(4) - 1;  // 1: after, 2: at the tail, others: before
        const auto reference = position == 2 ? model.entries.end() : model.last(other);
        const bool fits = position == 2 ? !model.has_as_written(name)
                                        : !is_there && reference != model.entries.end();
        if (fits) model.entries.insert(reference + (position == 1), {stored, step});
        const char* const inserted =
            VarInsertNameInfo(&list.head, name.c_str(), List::info(step), position, other.c_str());
        ASSERT_EQ(inserted != nullptr, fits);
      } else if (operation == "VarDeleteNameInfo") {
        ASSERT_EQ(List::number(VarDeleteNameInfo(&list.head, name.c_str())),
                  is_there ? first->second : 0);
        if (is_there) model.entries.erase(first);
      } else if (operation == "VarExchangeNameInfo") {
        const auto one = model.last(name);
        const auto two = model.last(other);
        if (one != model.entries.end() && two != model.entries.end()) {
          std::swap(one->second, two->second);
        }
        VarExchangeNameInfo(list.head, name.c_str(), other.c_str());
      } else if (operation == "VarReplaceNameInfo") {
        if (is_there) first->first = other.substr(0, other.find_first_of("\x01\x1f"));
        const char* const renamed = VarReplaceNameInfo(list.head, name.c_str(), other.c_str());
        ASSERT_EQ(renamed != nullptr, is_there);
      } else {
        void* info = List::info(-1);
        ASSERT_EQ(VarLookupNameInfo(list.head, name.c_str(), &info), is_there);
        ASSERT_EQ(List::number(info), is_there ? first->second : -1);
      }
      ASSERT_EQ(list.entries(), model.entries);
    }
  }
}

}  // namespace
