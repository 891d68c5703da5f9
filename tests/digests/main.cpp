// Runs a fixed workload for each group of operations and makes one digest of its results. Two
// builds of the library whose digests are equal produce the same bits, with any compiler, at any
// optimisation level, on any processor. Which bits are right, the tests of each family say.
//
//     digests [--plain] [GROUP...]                  prints the digests
//     digests [--plain] --expect FILE [GROUP...]    compares them and says which form ran; fails if
//                                                   one differs
//     digests [--plain] --trace GROUP               prints each operation of the group with its
//                                                   inputs, if they are short, and its results
//
// A GROUP is the name of a group or of a family. --plain switches the vector forms off.
#include "digests/group.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>

namespace {

struct Arguments {
  bool is_plain = false;
  bool is_traced = false;
  std::string expected_file;        ///< empty if nothing is compared
  std::vector<std::string> wanted;  ///< groups and families; all if empty

  bool wants(const std::string& group) const {
    const std::string family = group.substr(0, group.find('.'));
    const auto is_meant = [&](const std::string& name) { return name == group || name == family; };
    return wanted.empty() || std::any_of(wanted.begin(), wanted.end(), is_meant);
  }
};

/// Returns false if there is an unknown option or one without its value.
bool read_arguments(int argc, char** argv, Arguments* arguments) {
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--plain") {
      arguments->is_plain = true;
    } else if (argument == "--trace" && i + 1 < argc) {
      arguments->is_traced = true;
    } else if (argument == "--expect" && i + 1 < argc) {
      arguments->expected_file = argv[++i];
    } else if (argument[0] == '-') {
      return false;
    } else {
      arguments->wanted.push_back(argument);
    }
  }
  return true;
}

std::string digest_of(Group::Workload workload, bool is_traced) {
  if (workload == nullptr) return "missing";
  Log log(is_traced);
  workload(log);
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(log.digest()));
  return text;
}

/// Runs the groups that are wanted in the order of their names. Returns true if there are some and
/// none differs.
bool run(const Arguments& arguments, const char* form) {
  std::map<std::string, Group::Workload> workloads;
  for (const Group* group : Group::all()) workloads[group->name] = group->run;
  std::map<std::string, std::string> expected;
  std::ifstream file(arguments.expected_file);
  for (std::string name; file >> name;) file >> expected[name];
  for (const auto& [name, digest] : expected) workloads.try_emplace(name, nullptr);
  int groups = 0;
  int differing = 0;
  for (const auto& [name, workload] : workloads) {
    if (!arguments.wants(name)) continue;
    const std::string digest = digest_of(workload, arguments.is_traced);
    groups += 1;
    if (arguments.expected_file.empty()) {
      if (!arguments.is_traced) std::printf("%s %s\n", name.c_str(), digest.c_str());
    } else if (digest != expected[name]) {
      differing += 1;
      std::printf("%s is %s, not %s\n", name.c_str(), digest.c_str(), expected[name].c_str());
    }
  }
  if (!arguments.expected_file.empty()) {
    std::printf("%d of %d as expected, %s\n", groups - differing, groups, form);
  }
  std::fflush(stdout);  // WebAssembly does not flush it at the end
  return groups != 0 && differing == 0;
}

}  // namespace

int main(int argc, char** argv) {
  Arguments arguments;
  if (!read_arguments(argc, argv, &arguments)) return 2;
  std::string wanted_form;
  support::for_each_form([&](const char* form) {  // the plain form comes first, the widest last
    if (wanted_form.empty() || !arguments.is_plain) wanted_form = form;
  });
  bool is_right = false;
  support::for_each_form([&](const char* form) {
    if (form == wanted_form) is_right = run(arguments, form);
  });
  return is_right ? 0 : 1;
}
