/// A row of the performance table: the same work done by the library and by its rivals.
///
///     contest("swap 4 bytes, in cache", same_results, {{"zelvan", ours}, {"plain loop", theirs}});
///
/// The contestants take turns in the run (see ./dev bench), so that a machine that slows down
/// slows all of them down. Before the clock starts they have to agree.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

namespace bench {

using Work = std::function<void()>;

/// Registers each contestant as "row/name". One call of its work is one iteration, best of a
/// microsecond or more; `items` are the operations in it. With a false `agree()` nothing is timed.
inline void contest(const std::string& row, std::function<bool()> agree,
                    std::initializer_list<std::pair<const char*, Work>> contestants,
                    long items = 1) {
  for (const auto& [name, work] : contestants) {
    const auto run = [agree, work = work, items](benchmark::State& state) {
      if (!agree()) return state.SkipWithError("the contestants do not do the same work");
      for (auto _ : state) {
        work();
        benchmark::ClobberMemory();
      }
      state.SetItemsProcessed(state.iterations() * items);
    };
    benchmark::RegisterBenchmark((row + '/' + name).c_str(), run);
  }
}

/// What registers a file's rows before `main` runs.
struct Rows {
  explicit Rows(void (*add)()) { add(); }
};

}  // namespace bench
