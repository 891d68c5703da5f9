/// A group of operations with one digest: see main.cpp for what the program does with it.
#pragma once

#include "support/digest.h"

#include <vector>

using support::Digest;

/// Each is an object with the life of the program, and finds its own place among the others.
///
/// A workload must give the same digest wherever it runs: so no digest may depend on addresses,
/// on the width of `long` or of a pointer, on the sign of `char`, on the order in which arguments
/// are evaluated, on the distributions of the standard library or on anything that the system
/// says. Its own sine and heap the program brings along: see functions.cpp and heap.h. A group
/// may not rely on what another one leaves behind, since each can be run alone. A digest takes its
/// arguments by reference, so the result of an operation and what it changes may stand together.
struct Group {
  using Workload = void (*)(Digest& digest);

  /// `name` is "family.part".
  Group(const char* name, Workload run) : name(name), run(run) { all().push_back(this); }
  Group(const Group&) = delete;

  const char* const name;
  const Workload run;

  static std::vector<const Group*>& all() {
    static std::vector<const Group*> groups;
    return groups;
  }
};
