/// A machine with drives of the test's own making, for one source of a program: what looks for a
/// drive is compiled here once more, in a namespace whose platform is the one below.
#pragma once

#define zelvan machine_with_drives
#include <zelvan/osh/detail/fixed_path.cpp>
#undef zelvan

#include <set>
#include <string>

namespace machine_with_drives::platform {

int drive, opened;
unsigned roots_length;           // 0: as long as they are, else one less
std::string roots, asked;        // all drives; what was asked for
std::set<std::string> existing;  // the paths that are there

int _access(const char* path, int mode) {
  asked += path + std::string(mode + 1, ' ');
  return existing.contains(path) ? 0 : -1;
}
int _getdrive() { return drive; }
unsigned GetLogicalDriveStringsA(unsigned size, char* list) {
  asked += std::to_string(size) + ' ';
  std::memcpy(list, roots.c_str(), roots.size() + 1);
  return roots_length != 0 ? roots_length - 1 : static_cast<unsigned>(roots.size());
}
bool IsCharAlphaA(char c) { return (c | 32) >= 'a' && (c | 32) <= 'z'; }
int _open(const char* path, int flags, int mode) {
  asked += "open " + std::string(path) + std::to_string(10 * flags + mode);
  return opened;
}
int _close(int fd) {
  asked += " close " + std::to_string(fd);
  return 0;
}
std::FILE* fopen(const char* path, const char* mode) {
  asked += std::string(path) + mode;
  return nullptr;
}

}  // namespace machine_with_drives::platform
