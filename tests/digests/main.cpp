// Runs a fixed workload for each group of operations and makes one digest of its results. Two
// builds of the library whose digests are equal produce the same bits, with any compiler, at any
// optimisation level, on any processor. Which bits are right, the tests of each family say.
//
//     digests [--plain]                  prints the digests
//     digests [--plain] --expect FILE    compares them and says which form ran; fails if one
//     differs digests [--plain] --trace GROUP    prints each operation of a group, its inputs and
//     results
//
// --plain switches the vector forms off.
#include "digests/group.h"
#include "support/vector_forms.h"

#include <fstream>

namespace {

std::string digest_of(Group::Workload run) {
  Log log(false);
  run(log);
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(log.digest()));
  return text;
}

bool print_digests() {
  for (const auto& [name, run] : Group::all()) {
    std::printf("%s %s\n", name.c_str(), digest_of(run).c_str());
  }
  return true;
}

/// Returns true if there is a group of that name.
bool trace(const std::string& name) {
  Log log(true);
  const auto group = Group::all().find(name);
  if (group == Group::all().end()) return false;
  group->second(log);
  return true;
}

/// Returns true if the file names just the groups that there are, and no digest differs.
bool compare(const std::string& path, const char* form) {
  std::map<std::string, std::string> expected;
  std::ifstream file(path);
  for (std::string name; file >> name;) file >> expected[name];
  std::map<std::string, std::string> found;
  for (const auto& [name, run] : Group::all()) found[name] = digest_of(run);
  for (const auto& [name, digest] : expected) found.try_emplace(name, "missing");
  int right = 0;
  for (const auto& [name, digest] : found) {
    const bool is_right = digest == expected[name];
    right += is_right ? 1 : 0;
    if (!is_right) {
      std::printf("%s is %s, not %s\n", name.c_str(), digest.c_str(), expected[name].c_str());
    }
  }
  std::printf("%d of %d as expected, %s\n", right, static_cast<int>(found.size()), form);
  return right == static_cast<int>(found.size());
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const char* form = zelvan::has_avx2 ? "avx2" : zelvan::has_neon ? "neon" : "plain";
  if (!arguments.empty() && arguments[0] == "--plain") {
    support::force_plain_forms();
    form = "plain";
    arguments.erase(arguments.begin());
  }
  bool is_right = arguments.empty() && print_digests();
  if (arguments.size() == 2) {
    if (arguments[0] == "--trace") is_right = trace(arguments[1]);
    if (arguments[0] == "--expect") is_right = compare(arguments[1], form);
  }
  std::fflush(stdout);  // WebAssembly does not flush it at the end
  return is_right ? 0 : 1;
}
