#include <zelvan/linetypes/line_type_list.h>

#include "digests/group.h"
#include "support/random.h"

#include <climits>
#include <cmath>
#include <memory>

namespace {

using support::Random;

void take(Digest& digest, CLineTypeDefinition d) {
  CLineTypeDefPattern& pattern = d.GetPattern();
  digest(d.GetIndex(), d.GetPatternLength(), pattern.GetNextFragment());
  digest(pattern.GetNumFragments(), pattern.GetFragmentSum(), pattern.GetFirstFragment());
  for (int n = pattern.GetNumFragments(); n > 0; --n) digest(pattern.GetNextFragment());
}

// Definitions that are filled, copied and emptied, and often equal but for a fragment or a length.
const Group patterns("linetypes.patterns", [](Digest& digest) {
  const double lengths[] = {0.0, -0.0, -1.0, 0.1, 1e9, 0x1p-60, 0.3, NAN, 1.0, 2.0};
  Random random(1);
  CLineTypeDefinition definitions[3];
  for (int i = 0; i < 40'000; ++i) {
    CLineTypeDefinition &d = definitions[i % 3], &other = definitions[random.below(3)];
    const double length = lengths[random.below(random.below(8) == 0 ? 10 : 7)];
    switch (random.below(i % 999 < 500 ? 16 : 90)) {
      case 0:
        d.RemoveAllFragments();
        break;
      case 1:
        d.SetPattern(other.GetPattern());
        break;
      case 2:
        d = other;
        break;
      case 3:
        d.SetPatternLength(length);
        break;
      case 4:
        d.SetIndex(static_cast<unsigned>(i));
        break;
      case 5:
        d.GetPattern() = CLineTypeDefPattern(other.GetPattern());
        break;
      case 6:
        digest(d.GetPattern().GetNextFragment());
        break;
      case 7:
        d.GetPattern().RemoveAllFragments();
        break;
      default:
        digest(d.AddFragment(length));
        digest(other.GetPattern().AddFragment(length));
    }
    take(digest, d);
    digest(d == other, d != other, d.GetPattern() == other.GetPattern(),
           d.GetPattern() != other.GetPattern());
  }
});

void take(Digest& digest, CLineTypeDefList& list) {
  for (unsigned index = 0; index < 1000; ++index) {
    CLineTypeDefinition* const found = list.GetDefinition(index);
    digest(found != nullptr);
    if (found != nullptr) take(digest, *found);
  }
}

// Indices and patterns that meet all the time, until the table is full; then copies.
const Group lists("linetypes.lists", [](Digest& digest) {
  Random random(3);
  CLineTypeDefList list;
  take(digest, list);
  CLineTypeDefinition* const second = list.GetDefinition(2);
  int next = 14;
  for (int i = 0; i < 5000; ++i) {
    const unsigned indices[] = {0, unsigned(random.below(999)), unsigned(next), unsigned(next) + 1,
                                UINT_MAX};
    auto d = std::make_unique<CLineTypeDefinition>();
    d->SetIndex(i == 400 ? UINT_MAX - 1 : indices[random.below(5)]);
    d->SetPatternLength(random.below(16) == 0 ? NAN : 1.0);
    d->AddFragment(60.0);
    d->AddFragment(random.below(2000) + 1.0);
    bool already_there = false;
    const int index = list.AddLineTypeDefinition(d.get(), already_there);
    digest(index, already_there, d->GetIndex());
    if (index == -1 || already_there) continue;
    digest(list.AddLineTypeDefinition(d.get(), already_there), already_there);
    digest(list.GetDefinition(static_cast<unsigned>(index)) == d.get());
    d.release();
    next = std::max(next, index + 1);
    second->SetIndex(i % 5 == 0 ? 0 : i % 7 == 0 ? 1 : 2);
  }
  take(digest, list);
  CLineTypeDefList other, copy(list);
  for (CLineTypeDefList* assigned : {&other, &list}) {
    *assigned = copy;
    take(digest, *assigned);
    auto* const fresh = new CLineTypeDefinition;
    fresh->SetIndex(1);
    bool already_there = false;
    digest(assigned->AddLineTypeDefinition(fresh, already_there), already_there);
    delete fresh;  // the table is full
  }
});

}  // namespace
