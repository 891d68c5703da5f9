// Drives every family through a fixed workload and tells of each group of operations one digest of
// all results. Two builds of the library whose digests are the same give the same results: with any
// compiler, at any optimisation level, on any processor.
//
//     digests [--plain] [--libm] [GROUP...]         the digests
//     digests [--plain] --expect FILE [GROUP...]    compares them; 1 if one differs
//     digests [--plain] --trace GROUP [EVERY]       the digest of a group behind so many operations
//                                                   each (1000), to see from which on two builds
//                                                   part
//
// A GROUP is the name of one or of a family. --plain switches the vector forms off. --libm calls
// the C library's own sine, cosine, arc cosine and arc tangent; their last bit is its affair, so
// nothing is expected of these digests.
#include "digests/functions.h"
#include "digests/group.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <string>

namespace {

struct Options {
  bool is_plain = false;
  const char* expected = nullptr;
  long trace_every = 0;
  std::vector<std::string> groups;
};

Options read(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const bool has_value = i + 1 < argc;
    if (argument == "--plain") {
      options.is_plain = true;
    } else if (argument == "--libm") {
      uses_c_library = true;
    } else if (argument == "--expect" && has_value) {
      options.expected = argv[++i];
    } else if (argument == "--trace" && has_value) {
      options.groups.push_back(argv[++i]);
      options.trace_every = i + 1 < argc ? std::atol(argv[++i]) : 1000;
    } else {
      options.groups.push_back(argument);
    }
  }
  return options;
}

std::map<std::string, std::string> read_expected(const char* path) {
  std::map<std::string, std::string> digests;
  std::ifstream file(path);
  for (std::string group, digest; file >> group >> digest;) digests[group] = digest;
  return digests;
}

bool is_wanted(const std::string& name, const std::vector<std::string>& wanted) {
  return wanted.empty() || std::any_of(wanted.begin(), wanted.end(), [&](const std::string& w) {
           return name == w || name.compare(0, w.size() + 1, w + '.') == 0;
         });
}

/// Runs the groups that are asked for, or all, in the order of their names. Gives the exit status.
int run(const Options& options) {
  std::vector<const Group*> groups = Group::all();
  std::sort(groups.begin(), groups.end(),
            [](auto a, auto b) { return std::strcmp(a->name, b->name) < 0; });
  std::map<std::string, std::string> expected;
  if (options.expected != nullptr) expected = read_expected(options.expected);
  std::size_t n_run = 0, n_same = 0;
  for (const Group* group : groups) {
    if (!is_wanted(group->name, options.groups)) continue;
    Digest digest(options.trace_every);
    group->run(digest);
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(digest.value()));
    n_run += 1;
    n_same += expected[group->name] == text;
    if (options.expected == nullptr) {
      std::printf("%s %s\n", group->name, text);
    } else if (expected[group->name] != text) {
      std::printf("%s is %s, not %s\n", group->name, text, expected[group->name].c_str());
    }
    std::fflush(stdout);
  }
  if (n_run == 0) std::printf("no such group\n");
  if (options.expected == nullptr) return n_run == 0;
  if (options.groups.empty() && expected.size() > n_run) {
    std::printf("%s has groups that are not here\n", options.expected);
    return 1;
  }
  std::printf("%zu of %zu as expected\n", n_same, n_run);
  return n_run == 0 || n_same != n_run;
}

}  // namespace

int main(int argc, char** argv) {
  static char buffer[BUFSIZ];
  std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);  // which the heap would give otherwise
  const Options options = read(argc, argv);
  std::string form;
  support::for_each_form([&](const char* widest) {
    if (form.empty() || !options.is_plain) form = widest;  // the plain form comes first
  });
  int status = 1;
  support::for_each_form([&](const char* present) {
    if (present == form) status = run(options);
  });
  return status;
}
