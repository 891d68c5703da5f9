// Drives every family through a fixed workload and tells of each group of operations one digest of
// all results. Two builds of the library whose digests are the same give the same results: with any
// compiler, at any optimisation level, on any processor. Where a workload has a model beside it, it
// tells what disagrees with that, too.
//
//     digests [--plain] [GROUP...]                  the digests
//     digests [--plain] --expect FILE [GROUP...]    compares them, and says which forms ran; 1 if
//                                                   one differs
//     digests [--plain] --trace GROUP [EVERY]       the digest of a group behind so many operations
//                                                   each (1000), to see from which on two builds
//                                                   part; each value, too, if that is 1
//
// A GROUP is the name of one or of a family. --plain switches the vector forms off.
#include "digests/group.h"
#include "digests/printed.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

namespace {

bool is_plain = false;
const char* expected_file = nullptr;
long trace_every = 0;
std::vector<std::string> wanted;

void read_arguments(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--plain") {
      is_plain = true;
    } else if (argument == "--expect" && i + 1 < argc) {
      expected_file = argv[++i];
    } else if (argument == "--trace" && i + 1 < argc) {
      wanted = {argv[++i]};
      trace_every = i + 1 < argc ? std::atol(argv[++i]) : 1000;
    } else {
      wanted.push_back(argument);
    }
  }
}

bool is_wanted(const std::string& group) {
  return wanted.empty() || std::any_of(wanted.begin(), wanted.end(), [&](const std::string& name) {
           return group == name || group.compare(0, name.size() + 1, name + '.') == 0;
         });
}

/// Runs all groups that are wanted in the order of their names. Gives the exit status.
int run(const char* form) {
  std::map<std::string, Group::Workload> groups;
  for (const Group* group : Group::all()) groups[group->name] = group->run;
  std::map<std::string, std::string> expected;
  if (expected_file != nullptr) {
    std::ifstream file(expected_file);
    for (std::string group, digest; file >> group >> digest;) {
      if (is_wanted(group)) expected[group] = digest;
      groups.try_emplace(group, nullptr);  // is gone, as it seems
    }
  }
  int n_run = 0, n_wrong = 0;
  for (const auto& [name, workload] : groups) {
    if (!is_wanted(name)) continue;
    Digest digest(trace_every);
    if (workload != nullptr) workload(digest);
    printed = nullptr;
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(digest.value()));
    const bool is_expected = expected_file == nullptr || expected[name] == text;
    const bool is_right = is_expected && digest.disagreements() == 0;
    if (!is_expected) std::printf("%s is %s, not %s\n", name.c_str(), text, expected[name].c_str());
    if (is_expected && digest.disagreements() != 0) std::printf("%s is wrong\n", name.c_str());
    if (expected_file == nullptr) std::printf("%s %s\n", name.c_str(), text);
    std::fflush(stdout);
    n_run += 1;
    n_wrong += !is_right;
  }
  if (expected_file != nullptr) {
    std::printf("%d of %d as expected, %s\n", n_run - n_wrong, n_run, form);
  }
  std::fflush(stdout);  // which nobody else does in WebAssembly
  return n_run == 0 || n_wrong != 0;
}

}  // namespace

int main(int argc, char** argv) {
  static char buffer[BUFSIZ];
  std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);  // which the heap would give otherwise
  read_arguments(argc, argv);
  std::string form;
  support::for_each_form([&](const char* widest) {
    if (form.empty() || !is_plain) form = widest;  // the plain form comes first
  });
  int status = 1;
  support::for_each_form([&](const char* present) {
    if (present == form) status = run(present);
  });
  return status;
}
