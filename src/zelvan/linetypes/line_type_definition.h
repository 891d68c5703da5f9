/// Dash patterns, and the numbered line types that hold one.
///
/// Both classes are plain values of fixed size: they copy bit by bit, ask no heap, and may be
/// passed by value. Lengths are doubles of whatever unit the caller gives them, negative ones
/// and NaN included; the library draws nothing.
///
/// Threads: any, as long as whoever changes an object excludes the others. To walk over a
/// pattern changes it, since the cursor is in it.
#pragma once

#include <zelvan/export.h>

#include <type_traits>

/// Up to 20 fragment lengths: the first, third and so on are dashes, those between them gaps.
/// What a program makes of a length is its own affair.
class ZELVAN_API CLineTypeDefPattern {
 public:
  /// No fragments.
  CLineTypeDefPattern();

  /// Appends a fragment. False, and nothing is changed, when there are 20 already, or when it
  /// would be the second, fourth and so on, and is 0.0 or -0.0: a dash may be a dot, a gap has
  /// to be one.
  bool AddFragment(double length);

  /// Walk over the fragments. The first call takes up the walk anew; each gives one fragment, or
  /// -1.0 at the end, which a fragment of -1.0 can't be told from: count with `GetNumFragments`
  /// where there may be one. A copy goes on from where its original was.
  ///
  ///     double length = pattern.GetFirstFragment();
  ///     for (int n = pattern.GetNumFragments(); n > 0; --n, length = pattern.GetNextFragment())
  ///     ...
  double GetFirstFragment();
  double GetNextFragment();

  /// From 0 to 20.
  int GetNumFragments();

  /// The fragments added up in the order in which they came, 0.0 for none.
  double GetFragmentSum() const;

  /// Back to no fragments.
  void RemoveAllFragments();

  /// Equal are patterns of as many fragments, each exactly equal to its counterpart: 0.0 equals
  /// -0.0, and a NaN nothing at all. Sum and cursor don't count.
  bool operator==(const CLineTypeDefPattern& other) const;
  bool operator!=(const CLineTypeDefPattern& other) const;

 private:
  static constexpr int capacity = 20;

  int num_fragments = 0;
  int next_fragment = 0;  ///< the cursor: what `GetNextFragment` gives next
  double fragment_sum = 0.0;
  double fragments[capacity] = {};  ///< 0.0 from `num_fragments` on
};

/// A pattern with an index, the number of the line type, and a pattern length.
class ZELVAN_API CLineTypeDefinition {
 public:
  /// Index 0, which stands for none, length 0.0, no fragments.
  CLineTypeDefinition();

  /// Appends a fragment to the pattern, as `CLineTypeDefPattern::AddFragment` does.
  bool AddFragment(double length);

  /// Empties the pattern. Index and pattern length stay.
  void RemoveAllFragments();

  /// The number of the line type, 0 until it is set. Any number can be set, also one that another
  /// definition has.
  unsigned int GetIndex() const;
  void SetIndex(unsigned int index);

  /// A length kept beside the pattern, 0.0 until it is set. Nothing ties it to the fragments or
  /// to their sum.
  double GetPatternLength() const;
  void SetPatternLength(double length);

  /// The pattern itself, for the caller to walk over or change. It lives as long as the definition.
  CLineTypeDefPattern& GetPattern();

  /// Replaces the fragments, one by one, by those of `source`, and rewinds the cursor. Index and
  /// pattern length stay.
  void SetPattern(CLineTypeDefPattern source);

  /// Equal are definitions of equal patterns and exactly equal pattern lengths. The index
  /// doesn't count.
  bool operator==(const CLineTypeDefinition& other) const;
  bool operator!=(const CLineTypeDefinition& other) const;

 private:
  unsigned int index = 0;
  double pattern_length = 0.0;
  CLineTypeDefPattern pattern;
};

static_assert(sizeof(CLineTypeDefPattern) == 176 &&
                  sizeof(CLineTypeDefinition) == alignof(double) + 8 + 176,
              "layout is interface");
static_assert(std::is_trivially_copyable<CLineTypeDefinition>::value &&
                  std::is_standard_layout<CLineTypeDefinition>::value,
              "definitions copy as bytes");
