// Measures looking up names in keyword tables and name lists, and adding and deleting them,
// compared with the loop over strcasecmp that a user would write. Also measures finding a value by
// its key, compared with strstr.

#include <zelvan/var/name_list.h>
#include <zelvan/var/name_table.h>
#include <zelvan/var/search_value.h>

#include "contest.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include <strings.h>

namespace {

std::vector<std::string> names(int n) {
  std::vector<std::string> result;
  for (int i = 0; i < n; ++i) result.push_back("Layer_" + std::to_string(i * 7919 % 1'000'003));
  return result;
}

struct Table {
  explicit Table(int n) : text(names(n)) {
    VarNameInfo** tail = &list;  // linked by hand: 100 000 calls of VarAddNameInfo take 15 seconds
    for (const std::string& name : text) {
      rows.push_back({name.c_str(), static_cast<short>(rows.size())});
      *tail = new VarNameInfo{nullptr, strdup(name.c_str()), &rows};
      tail = &(*tail)->next;
      for (char c : name) asked += static_cast<char>(std::toupper(c));
      asked += '\0';
    }
    rows.push_back({nullptr, 0});
  }
  std::vector<std::string> text;
  std::vector<VarNameValue> rows;
  VarNameInfo* list = nullptr;
  std::string asked;  // the names in capitals, each with its terminator
};

int found_by_hand(const Table& table, const char* name) {
  for (const VarNameValue* row = table.rows.data(); row->name != nullptr; ++row) {
    if (strcasecmp(row->name, name) == 0) return row->value;
  }
  return -1;
}

int found_in_table(const Table& table, const char* name) {
  int value = -1;
  VarLookupInt(table.rows.data(), name, &value);
  return value;
}

VarNameInfo* node_by_hand(const Table& table, const char* name) {
  VarNameInfo* node = table.list;
  while (node != nullptr && strcasecmp(node->name, name) != 0) node = node->next;
  return node;
}

template <class Look>
void look_up_some(const Table& table, Look look) {
  const char* at = table.asked.c_str();
  const std::size_t step = table.text.size() / 10;  // ten names, spread over the table
  for (std::size_t i = 0; i < table.text.size(); ++i, at += std::strlen(at) + 1) {
    if (i % step == step / 2) benchmark::DoNotOptimize(look(table, at));
  }
}

void look_up(int n) {
  const auto table = std::make_shared<const Table>(n);
  // Collected in advance, so that the walk over all names is not timed.
  std::vector<const char*> asked;
  look_up_some(*table, [&](const Table&, const char* name) { return asked.push_back(name), 0; });
  const auto all = [table, asked](auto look) {
    return [table, asked, look] {
      for (const char* name : asked) benchmark::DoNotOptimize(look(*table, name));
    };
  };
  const auto agree = [table, asked] {
    void* info;
    for (const char* name : asked) {
      if (found_in_table(*table, name) != found_by_hand(*table, name)) return false;
      if (VarLookupNameInfo(table->list, name, &info) != (node_by_hand(*table, name) != nullptr)) {
        return false;
      }
    }
    return true;
  };
  const std::string of = " of " + std::to_string(n) + " names";
  const long items = static_cast<long>(asked.size());
  bench::contest("keyword table: look up one" + of, agree,
                 {{"zelvan", all(found_in_table)}, {"strcasecmp loop", all(found_by_hand)}}, items);
  const auto in_list = [](const Table& t, const char* name) {
    void* info = nullptr;
    VarLookupNameInfo(t.list, name, &info);
    return info;
  };
  bench::contest("name list: look up one" + of, agree,
                 {{"zelvan", all(in_list)}, {"strcasecmp loop", all(node_by_hand)}}, items);
}

// The keywords of a file format: most differ in their first letters.
void look_up_keyword() {
  static const VarNameValue keywords[] = {
      {"solid", 0},   {"dashed", 1}, {"dotted", 2}, {"centre", 3}, {"phantom", 4}, {"hidden", 5},
      {"border", 6},  {"divide", 7}, {"width", 8},  {"colour", 9}, {"layer", 10},  {"font", 11},
      {"height", 12}, {"angle", 13}, {"scale", 14}, {"hatch", 15}, {nullptr, 0}};
  static const char* const asked[] = {"SOLID", "Centre", "border", "Colour", "ANGLE", "hatch"};
  static const auto by_hand = [](const char* name) {
    const VarNameValue* row = keywords;
    while (row->name != nullptr && strcasecmp(row->name, name) != 0) ++row;
    return int{row->value};
  };
  static const auto ours = [](const char* name) {
    int value = -1;
    VarLookupInt(keywords, name, &value);
    return value;
  };
  const auto agree = [] {
    return std::all_of(std::begin(asked), std::end(asked),
                       [](const char* name) { return ours(name) == by_hand(name); });
  };
  const auto all = [](auto look) {
    return [look] {
      for (const char* name : asked) benchmark::DoNotOptimize(look(name));
    };
  };
  bench::contest("keyword table: look up one of 16 keywords", agree,
                 {{"zelvan", all(ours)}, {"strcasecmp loop", all(by_hand)}}, std::size(asked));
}

void add_and_delete() {
  const auto text = std::make_shared<const std::vector<std::string>>(names(1000));
  const auto ours = [text] {
    VarNameInfo* list = nullptr;
    for (const std::string& name : *text) VarAddNameInfo(&list, name.c_str(), nullptr);
    for (auto i = text->rbegin(); i != text->rend(); ++i) VarDeleteNameInfo(&list, i->c_str());
  };
  const auto by_hand = [text] {
    std::list<std::pair<std::string, void*>> list;
    const auto find = [&](const char* name) {
      auto i = list.begin();
      while (i != list.end() && strcasecmp(i->first.c_str(), name) != 0) ++i;
      return i;
    };
    for (const std::string& name : *text) {
      if (find(name.c_str()) == list.end()) list.emplace_back(name, nullptr);
    }
    for (auto i = text->rbegin(); i != text->rend(); ++i) list.erase(find(i->c_str()));
  };
  bench::contest(
      "name list: add and delete 1000 names", [] { return true; },
      {{"zelvan", ours}, {"strcasecmp loop", by_hand}}, 2000);
}

void search() {
  static const std::string line = [] {
    std::string text;
    for (const std::string& name : names(40)) text += name + ":" + std::string(12, 'v') + ',';
    return text + "last:value";
  }();
  const auto ours = [](const char* key, const char** value) {
    return utl_searchValueForKey(line.c_str(), key, value);
  };
  // The plain search does less: it is case-sensitive, and may find the key inside a value.
  const auto by_hand = [](const char* key, const char** value) -> std::intptr_t {
    const std::string wanted = std::string(key) + ':';
    const char* const found = std::strstr(line.c_str(), wanted.c_str());
    *value = nullptr;
    if (found == nullptr) return 0;
    *value = found + wanted.size();
    const char* const end = std::strchr(*value, ',');
    return end != nullptr ? end - *value : static_cast<std::intptr_t>(std::strlen(*value));
  };
  for (const char* key : {"Layer_0", "last"}) {
    const auto agree = [=] {
      const char *a, *b;
      return ours(key, &a) == by_hand(key, &b) && a == b;
    };
    const auto work = [key](auto find) {
      return [key, find] {
        const char* value;
        benchmark::DoNotOptimize(find(key, &value));
        benchmark::DoNotOptimize(value);
      };
    };
    bench::contest(std::string("value by key, ") + (key[0] == 'l' ? "last" : "first") + " of 41",
                   agree, {{"zelvan", work(ours)}, {"strstr", work(by_hand)}});
  }
}

const bench::Rows rows([] {
  for (int n : {10, 1000, 100'000}) look_up(n);
  look_up_keyword();
  add_and_delete();
  search();
});

}  // namespace
