#include <zelvan/linetypes/line_type_list.h>

#include <algorithm>
#include <climits>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr int refused = -1;

struct BuiltIn {
  unsigned int index;
  double pattern_length;
  std::initializer_list<double> fragments;
};

constexpr BuiltIn built_in[] = {
    {1, 10.0, {100}},
    {2, 5.0, {60, 40}},
    {3, 2.5, {10, 40}},
    {4, 7.5, {80, 30, 20, 30}},
    {5, 10.0, {80, 30, 20, 30, 20, 30}},
    {6, 10.0, {110}},
    {7, 12.0, {120}},
    {8, 13.0, {130}},
    {9, 7.5, {80, 70}},
    {10, 15.0, {140, 50, 60, 50}},
    {11, 21.5, {310, 30, 60, 30}},
    {12, 6.5, {90, 40}},
    {13, 15.5, {130, 20, 60, 20, 60, 20}},
};

}  // namespace

CLineTypeDefList::CLineTypeDefList() {
  for (const BuiltIn& row : built_in) {
    auto definition = std::unique_ptr<CLineTypeDefinition>(new (std::nothrow) CLineTypeDefinition);
    if (definition == nullptr) continue;
    definition->SetIndex(row.index);
    definition->SetPatternLength(row.pattern_length);
    for (const double length : row.fragments) definition->AddFragment(length);
    bool already_there;
    AddLineTypeDefinition(definition.release(), already_there);
  }
  next_index = std::size(built_in) + 1;
}

CLineTypeDefList::CLineTypeDefList(const CLineTypeDefList& other) { *this = other; }

CLineTypeDefList& CLineTypeDefList::operator=(const CLineTypeDefList& other) {
  if (this == &other) return *this;
  std::unique_ptr<CLineTypeDefinition> copies[capacity];
  for (int i = 0; i < other.num_definitions; ++i) {
    copies[i].reset(new (std::nothrow) CLineTypeDefinition(*other.definitions[i]));
    if (copies[i] == nullptr) return *this;
  }
  for (int i = 0; i < capacity; ++i) delete std::exchange(definitions[i], copies[i].release());
  num_definitions = other.num_definitions;
  next_index = other.next_index;
  return *this;
}

CLineTypeDefList::~CLineTypeDefList() {
  for (CLineTypeDefinition* definition : definitions) delete definition;
}

int CLineTypeDefList::AddLineTypeDefinition(CLineTypeDefinition* definition, bool& already_there) {
  already_there = false;
  unsigned int index = definition->GetIndex();
  if (num_definitions == capacity || index == 0) return refused;
  bool is_taken = false;
  for (int i = 0; i < num_definitions; ++i) {
    const CLineTypeDefinition* entry = definitions[i];
    // Compare the pointers too: a definition with a NaN doesn't equal itself, but must not be owned
    // twice.
    already_there = entry == definition || *entry == *definition;
    if (already_there) return static_cast<int>(entry->GetIndex());
    is_taken = is_taken || entry->GetIndex() == index;
  }
  if (is_taken) index = next_index;
  if (index == UINT_MAX) return refused;

  definition->SetIndex(index);
  definitions[num_definitions++] = definition;
  next_index = std::max(next_index, index + 1);
  return static_cast<int>(index);
}

CLineTypeDefinition* CLineTypeDefList::GetDefinition(unsigned int index) {
  if (index == 0) return nullptr;
  const auto end = definitions + num_definitions;
  const auto found = std::find_if(definitions, end, [index](const CLineTypeDefinition* entry) {
    return entry->GetIndex() == index;
  });
  return found == end ? nullptr : *found;
}
