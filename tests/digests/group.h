/// A group of operations with one digest: see main.cpp for what the program does with it.
#pragma once

#include <zelvan/zelvan.h>

#include "support/digest.h"
#include "support/random.h"

#include <string>
#include <vector>

using support::Digest;
using support::Random;

/// Each is an object with the life of the program, and finds its own place among the others.
///
/// A workload must give the same digest wherever it runs. So no digest may depend on addresses, on
/// the width of `long` or of a pointer, on the sign of `char`, on the distributions of the standard
/// library, or on anything that the system says; what the program brings along in its place is in
/// functions.cpp, printed.h and support/heap.h. A group may not rely on what another one leaves
/// behind, since each can be run alone.
///
/// Nor may it depend on the order in which arguments are evaluated. A digest takes them by
/// reference, so `digest(find(&at), at)` is right: it looks at `at` when all calls are over. With
/// `at + 1`, which is a value of its own, it would not be.
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
