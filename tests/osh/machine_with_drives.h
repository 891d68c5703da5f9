/// A machine with drives of the test's own making, for one source of a program: what looks for a
/// drive is compiled here once more, in a namespace whose platform is the one below.
#pragma once

#define zelvan machine_with_drives
#include <zelvan/osh/detail/fixed_path.cpp>
#undef zelvan

#include <set>
#include <string>

namespace machine_with_drives::platform {

int drive;
std::string roots;               // of all drives
std::set<std::string> existing;  // the paths that are there

int _access(const char* path, int) { return existing.contains(path) ? 0 : -1; }
int _getdrive() { return drive; }
unsigned GetLogicalDriveStringsA(unsigned, char* list) {
  std::memcpy(list, roots.c_str(), roots.size() + 1);
  return static_cast<unsigned>(roots.size());
}
int _open(const char*, int, int) { return -1; }
int _close(int) { return 0; }
std::FILE* fopen(const char*, const char*) { return nullptr; }

}  // namespace machine_with_drives::platform
