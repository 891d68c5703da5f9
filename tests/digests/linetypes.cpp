#include "digests/group.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>
#include <memory>

namespace {

using Definition = CLineTypeDefinition;

void take(Digest& digest, Definition d) {
  CLineTypeDefPattern& pattern = d.GetPattern();
  digest(d.GetIndex(), d.GetPatternLength(), pattern.GetNextFragment());
  digest(pattern.GetNumFragments(), pattern.GetFragmentSum(), pattern.GetFirstFragment());
  for (int n = pattern.GetNumFragments(); n > 0; --n) digest(pattern.GetNextFragment());
}

// Definitions that are filled, copied and emptied, and often equal but for a fragment or a length.
const Group patterns("linetypes.patterns", [](Digest& digest) {
  const double lengths[] = {0.0, -0.0, -1.0, 0.1, 1e9, 0x1p-60, 0.3, NAN, 1.0, 2.0};
  Random random(1);
  Definition definitions[3];
  for (int i = 0; i < 40'000; ++i) {
    Definition &d = definitions[i % 3], &other = definitions[random.below(3)];
    const double length = lengths[random.below(random.below(8) == 0 ? 10 : 7)];
    const std::function<void()> rare[] = {
        [&] { d.RemoveAllFragments(); },
        [&] { d.SetPattern(other.GetPattern()); },
        [&] { d = other; },
        [&] { d.SetPatternLength(length); },
        [&] { d.SetIndex(i); },
        [&] { d.GetPattern() = other.GetPattern(); },
        [&] { digest(d.GetPattern().GetNextFragment()); },
        [&] { d.GetPattern().RemoveAllFragments(); },
    };
    if (const int n = random.below(i % 999 < 500 ? 16 : 90); n < 8) rare[n]();
    digest(d.AddFragment(length));
    take(digest, d);
    digest(d == other, d != other, d.GetPattern() == other.GetPattern(),
           d.GetPattern() != other.GetPattern());
  }
});

void take(Digest& digest, CLineTypeDefList& list) {
  for (unsigned index = 0; index < 1000; ++index) {
    if (Definition* const found = list.GetDefinition(index)) take(digest, *found);
  }
}

// Indices and patterns that meet all the time, until the table is full; then copies, which stand
// alone.
const Group lists("linetypes.lists", [](Digest& digest) {
  Random random(3);
  CLineTypeDefList list, other;
  take(digest, list);
  auto* const first = new Definition;  // with the number of another, and so gets the next
  bool was_there = true;
  first->SetIndex(13);
  digest(other.AddLineTypeDefinition(first, was_there), was_there);
  unsigned next = 14;
  for (int i = 0; i < 5000; ++i) {
    const unsigned indices[] = {0, unsigned(random.below(i % 2 * 979 + 20)), next, next + 1,
                                UINT_MAX};
    auto d = std::make_unique<Definition>();
    d->AddFragment(60.0);
    d->AddFragment(i % 500 == 99 ? NAN : random.below(2000) + 1.0);
    if (const auto* known = list.GetDefinition(i / 8); i % 8 == 0 && known != nullptr) *d = *known;
    d->SetIndex(i == 400 ? UINT_MAX - 1 : indices[random.below(5)]);
    bool already_there = i % 2 == 0;
    const int index = list.AddLineTypeDefinition(d.get(), already_there);
    digest(index, already_there, d->GetIndex());
    if (already_there || index == -1) continue;
    next = std::max(next, d->GetIndex() + 1);
    digest(list.GetDefinition(index) == d.get());
    digest(list.AddLineTypeDefinition(d.release(), already_there), already_there);
  }
  take(digest, list);
  list.GetDefinition(3)->SetIndex(0);
  other = list;
  list = static_cast<CLineTypeDefList&>(list);
  list.GetDefinition(2)->SetIndex(3);
  for (CLineTypeDefList* each : {&list, &other}) take(digest, *each);
  take(digest, other = CLineTypeDefList());
  auto* const last = new Definition;
  last->SetIndex(13);
  last->AddFragment(77);
  digest(other.AddLineTypeDefinition(last, was_there));
});

}  // namespace
