#include "digests/group.h"

#include <climits>
#include <cstring>

namespace {

void* info(int number) { return reinterpret_cast<void*>(static_cast<std::uintptr_t>(number)); }
int number(void* info) { return static_cast<int>(reinterpret_cast<std::uintptr_t>(info)); }

void take(Digest& digest, VarNameInfo* list) {
  for (; list != nullptr; VarNextListEntry(&list)) {
    digest(VarGetName(list), number(VarListInfo(list)));
  }
}

void clear(VarNameInfo** list) {
  while (*list != nullptr) VarDeleteNameInfo(list, (*list)->name);
}

// Every byte in a name; then operations on few names, some that begin alike, also for about as long
// as names count.
const Group lists("var.lists", [](Digest& digest) {
  Random random(7);
  VarNameInfo* list = nullptr;
  for (int i = 1; i < 20000; ++i) {
    std::string names[2] = {{'a', static_cast<char>(i), 'b'}, "A"};
    for (std::string& name : names) {
      if (i < 256) break;
      const int kind = random.below(16);
      name.assign(kind == 0 ? 1597 + random.below(4) : kind < 6 ? random.below(44) : 0, 'n');
      for (int n = random.below(4); n > 0; --n) name += "aAbB\x01\x1f \xc9\xe9"[random.below(9)];
    }
    const char *a = names[0].c_str(), *b = names[1].empty() ? nullptr : names[1].c_str();
    const int operation = i < 256 ? 0 : random.below(8), position = random.below(4);
    void *value = info(i % 5 == 0 ? 0 : i), *got = info(1);
    if (operation == 0) digest(VarAddNameInfo(&list, a, value));
    if (operation == 1) digest(VarInsertNameInfo(&list, a, value, position, b));
    if (operation == 2) digest(VarInsertNameInfo(&list, names[1].c_str(), value, position, a));
    if (operation == 3) digest(VarReplaceNameInfo(list, b, a));
    if (operation == 4) VarExchangeNameInfo(list, a, b);
    if (operation == 5) got = VarDeleteNameInfo(&list, a);
    VarNameInfo own = {list, nullptr, value};  // a node of the caller's, without a name
    digest(VarLookupNameInfo(i % 2 ? &own : list, b, &got));
    digest(number(got));
    take(digest, list);
    if (i % 50 == 49) clear(&list);
  }
  clear(&list);
  VarNextListEntry(nullptr);
  digest(number(VarListInfo(nullptr)));
});

const Group tables("var.tables", [](Digest& digest) {
  const VarNameValue table[] = {{"Low", -1}, {"high", 9}, {"LOW", 2}, {"again", -1}, {nullptr, 5}};
  for (const VarNameValue* rows : {table, table + 1, static_cast<const VarNameValue*>(nullptr)}) {
    for (const char* start : {"l", "lO", "lOw", "LOWer", "HIGH\x01 and more", "again", ""}) {
      for (int byte = 0; byte < 256; ++byte) {  // a name ends at its first control character
        const std::string name = std::string(start) + static_cast<char>(byte);
        int value = 77;
        digest(VarLookupInt(rows, name.c_str(), &value), value);
      }
    }
    for (const int value : {-1, 0, 2, 5, 9, 65535, 65538, INT_MIN}) {
      char* name = nullptr;
      digest(VarLookupString(rows, value, &name), name);
    }
  }
});

// Names of 5 to 45 bytes that begin alike, in capitals too, with what is around the letters or
// one but for its highest bit, and with a letter more.
const Group alike("var.alike", [](Digest& digest) {
  std::vector<std::string> names;
  for (std::string stem = "abcd"; stem.size() < 45; stem += "e\xC1[`zA"[stem.size() % 6]) {
    for (const char* last : {"x", "Y", "z!"}) names.push_back(stem + last);
  }
  std::vector<VarNameValue> table;
  for (const std::string& name : names) {
    table.push_back({name.c_str(), static_cast<short>(table.size())});
  }
  table.push_back({nullptr, 0});
  for (const std::string& name : names) {
    for (const int change : {0, 1, 32, 128}) {
      std::string other = name;
      for (std::size_t i = 0; i < name.size(); ++i) {
        std::string just_there = name;
        other[i] = just_there[i] = static_cast<char>(name[i] ^ change);
        for (const std::string& sought : {other, other + 'e', just_there}) {
          int value = -1;
          digest(VarLookupInt(table.data(), sought.c_str(), &value), value);
        }
      }
    }
  }
});

// All texts of up to seven of five characters, then long lines; of a found value where it is, and
// how long.
const Group search("var.search", [](Digest& digest) {
  const auto take_value = [&](const char* text, const char* key) {
    const char* value = "untouched";
    const auto length = utl_searchValueForKey(text, key, &value);
    digest(length, value == nullptr ? -1 : value - text);
  };
  take_value(nullptr, "a");
  take_value("a:b", nullptr);
  for (int i = 0; i < 97656; ++i) {
    std::string text;
    for (int n = i; n > 0; n = (n - 1) / 5) text += "a:,Bc"[(n - 1) % 5];
    for (const char* key : {"a", "Ab", "b", "", "aBC", "c,a"}) take_value(text.c_str(), key);
  }
  const char* const parts[] = {"a", "b",       ":",           ",",   ":",
                               ",", "layer_1", "LAYER_12345", ":v,", ",A:"};
  Random random(8);
  for (int i = 0; i < 30000; ++i) {
    std::string text, key;
    for (int n = random.below(40); n > 0; --n) text += parts[random.below(i % 2 == 0 ? 10 : 8)];
    for (int n = random.below(3); n >= 0; --n) key += parts[random.below(8)];
    take_value(text.c_str(), key.c_str());
  }
});

}  // namespace
