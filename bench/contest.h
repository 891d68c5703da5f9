/// A row of the performance table: the same work done by the library and by other code.
///
///     contest("swap 4 bytes, in cache", same_results, {{"zelvan", ours}, {"plain loop", theirs}});
///
/// The contestants run interleaved (see ./dev bench), so that a machine that slows down affects all
/// of them. Before anything is timed, their results must agree.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

namespace bench {

using Work = std::function<void()>;

/// Registers each contestant as "row/name". One call of its work is one iteration, which should
/// take a microsecond or more; `items` is the number of operations in it. If `agree()` returns
/// false, nothing is timed and the row reports an error.
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

/// Registers benchmarks before `main` runs: its constructor calls `add`, which registers them. Each
/// source of benchmarks defines one `Rows` as a global object.
struct Rows {
  explicit Rows(void (*add)()) { add(); }
};

}  // namespace bench
