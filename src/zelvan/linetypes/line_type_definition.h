/// Dash patterns, and the numbered line types that hold one.
///
/// Both classes are plain values of fixed size: they copy byte by byte, use no heap, and may be
/// passed by value. A length is a double in the caller's own unit; negative lengths and NaN are
/// allowed. The library draws nothing.
///
/// Threads: a thread that changes an object must have it to itself. A walk over a pattern changes
/// the pattern, which holds the cursor.
#pragma once

#include <zelvan/export.h>

#include <type_traits>

/// Up to 20 fragment lengths: the first, third and so on are dashes, those between them gaps.
class ZELVAN_API CLineTypeDefPattern {
 public:
  /// Makes a pattern without fragments.
  CLineTypeDefPattern();

  /// Appends a fragment; returns false and changes nothing if the pattern can't take it.
  ///
  /// That is so if there are 20 fragments already, or if a gap would be 0.0 or -0.0. A dash may be
  /// 0.0: a dot.
  bool AddFragment(double length);

  /// Starts a walk over the fragments: returns the first one; -1.0 for an empty pattern.
  ///
  /// Count with `GetNumFragments` if a fragment may itself be -1.0:
  ///
  ///     double length = pattern.GetFirstFragment();
  ///     for (int n = pattern.GetNumFragments(); n > 0; --n, length = pattern.GetNextFragment())
  ///     ...
  double GetFirstFragment();

  /// Returns the next fragment of the walk, or -1.0 after the last one.
  ///
  /// A copy of a pattern continues the walk from where the original was.
  double GetNextFragment();

  /// Returns the number of fragments, 0 to 20.
  int GetNumFragments();

  /// Returns the sum of the fragments, added in the order in which they were appended.
  double GetFragmentSum() const;

  /// Removes all fragments.
  void RemoveAllFragments();

  /// True if both patterns have the same number of fragments and each equals its counterpart.
  ///
  /// As in all comparisons of doubles, 0.0 equals -0.0 and a NaN equals nothing. Sum and cursor are
  /// not compared.
  bool operator==(const CLineTypeDefPattern& other) const;
  bool operator!=(const CLineTypeDefPattern& other) const;

 private:
  static constexpr int capacity = 20;

  int num_fragments = 0;
  int next_fragment = 0;  ///< the cursor: index of the fragment that `GetNextFragment` returns next
  double fragment_sum = 0.0;
  double fragments[capacity] = {};  ///< 0.0 from `num_fragments` on
};

/// A line type: its index, its dash pattern, and a pattern length that is set separately.
class ZELVAN_API CLineTypeDefinition {
 public:
  /// Makes a definition of index 0 (not set), length 0.0, without fragments.
  CLineTypeDefinition();

  /// Appends a fragment to the pattern, as `CLineTypeDefPattern::AddFragment` does.
  bool AddFragment(double length);

  /// Removes all fragments. Index and pattern length stay.
  void RemoveAllFragments();

  /// Returns the number of the line type, 0 until it is set.
  unsigned int GetIndex() const;

  /// Sets the number of the line type. Two definitions may have the same number.
  void SetIndex(unsigned int index);

  /// Returns the pattern length, 0.0 until it is set. It is independent of the fragments.
  double GetPatternLength() const;

  /// Sets the pattern length.
  void SetPatternLength(double length);

  /// Returns the pattern itself, to walk over or change. It lives as long as the definition.
  CLineTypeDefPattern& GetPattern();

  /// Replaces the fragments by those of `source` and rewinds the cursor. Index and pattern length
  /// stay.
  void SetPattern(CLineTypeDefPattern source);

  /// True if the patterns are equal and the pattern lengths are equal. The index is not compared.
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
