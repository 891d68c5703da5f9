// Runs a fixed workload for each group of operations and makes one digest of its results. Two
// builds of the library whose digests are equal produce the same bits, with any compiler, at any
// optimisation level, on any processor. The tests of each family decide which bits are right.
//
//     digests [--plain]                prints the digests
//     digests [--plain] --expect FILE  fails, and prints the wrong digests, if one is wrong
//     digests [--plain] --trace GROUP  prints a group's operations, with inputs and results
//
// --plain switches the vector forms off.
#include "digests/group.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <fstream>
#include <set>

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  if (!arguments.empty() && arguments[0] == "--plain") {
    support::force_plain_forms(zelvan::VectorForms{});
    arguments.erase(arguments.begin());
  }
  const char* form = zelvan::with_best_form([](auto best) { return best.name; });
  arguments.resize(2);
  if (arguments[0] == "--trace") {
    Log log(true);
    groups().at(arguments[1])(log);
    return std::fflush(stdout);  // WebAssembly does not flush it at the end
  }
  std::set<std::string> expected;
  std::ifstream file(arguments[1]);
  for (std::string line; std::getline(file, line);) expected.insert(line);
  std::size_t right = 0;
  for (const auto& [name, run] : groups()) {
    Log log(false);
    run(log);
    char digest[17];
    std::snprintf(digest, sizeof digest, "%016llx", static_cast<unsigned long long>(log.digest()));
    const std::string line = name + ' ' + digest;
    const bool is_right = expected.count(line) != 0;
    right += is_right ? 1 : 0;
    if (!is_right) std::printf("%s\n", line.c_str());
  }
  const std::size_t all = std::max(expected.size(), groups().size());
  if (arguments[0] == "--expect") {
    std::printf("%d of %d as expected, %s\n", static_cast<int>(right), static_cast<int>(all), form);
  }
  std::fflush(stdout);
  return arguments[0] == "--expect" && right != all;
}
