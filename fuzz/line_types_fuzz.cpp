// Adds line types to two lists, and copies the lists. A line type that is added must be found at
// the index that is returned. One that the list already has must equal the one found there. Each
// list must own its own copies.

#include <zelvan/linetypes/line_type_list.h>

#include "bytes.h"

#include <vector>

namespace {

using fuzz::Bytes;
using fuzz::require;

/// Returns a definition with few fragments of few different lengths, so that equal definitions
/// occur.
std::unique_ptr<CLineTypeDefinition> definition_of(Bytes& bytes) {
  auto definition = std::make_unique<CLineTypeDefinition>();
  int count = 0;
  double sum = 0.0;
  for (int wanted = bytes.below(24); wanted > 0; --wanted) {
    const double length = wanted % 8 == 0 ? bytes.number() : bytes.below(3);
    const bool is_gap = count % 2 == 1;
    const bool fits = count < 20 && !(is_gap && length == 0.0);
    require(definition->AddFragment(length) == fits);
    if (fits) ++count, sum += length;
  }
  CLineTypeDefPattern& pattern = definition->GetPattern();
  const double kept = pattern.GetFragmentSum();
  require(pattern.GetNumFragments() == count && (kept == sum || (kept != kept && sum != sum)));
  definition->SetPatternLength(bytes.below(2));
  const int index = bytes.byte();
  definition->SetIndex(index < 250 ? static_cast<unsigned>(index % 40)
                                   : 0xFFFFFFFA + static_cast<unsigned>(index - 250));
  return definition;
}

void add(CLineTypeDefList& list, Bytes& bytes) {
  std::unique_ptr<CLineTypeDefinition> definition = definition_of(bytes);
  const unsigned wanted = definition->GetIndex();
  CLineTypeDefinition* const holder = list.GetDefinition(wanted);
  bool already_there = true;
  const int index = list.AddLineTypeDefinition(definition.get(), already_there);
  if (already_there) {
    CLineTypeDefinition* const found = list.GetDefinition(static_cast<unsigned>(index));
    require(found != nullptr && *found == *definition && definition->GetIndex() == wanted);
  } else if (index != -1) {
    require(list.GetDefinition(static_cast<unsigned>(index)) == definition.get());
    require(definition.release()->GetIndex() == static_cast<unsigned>(index));
    require((static_cast<unsigned>(index) == wanted) == (holder == nullptr));
  } else {
    require(definition->GetIndex() == wanted || holder != nullptr);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  CLineTypeDefList lists[2];
  while (bytes.left() > 0) {
    const int code = bytes.byte();
    CLineTypeDefList &list = lists[code & 1], &other = lists[code >> 1 & 1];
    if (code % 16 < 13) {
      add(list, bytes);
    } else if (CLineTypeDefList copy(list); code % 16 == 13) {
      other = copy;
    } else {
      other = list;
    }
    require(list.GetDefinition(0) == nullptr);
    CLineTypeDefinition* const own = list.GetDefinition(1);
    require(own != nullptr && (&list == &other || own != other.GetDefinition(1)));
  }
  return 0;
}
