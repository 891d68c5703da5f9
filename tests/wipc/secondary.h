/// The test program as a secondary of its own. Started with the arguments of one it says "ready"
/// as its status and its process id as its data, and echoes what it reads to the end of the
/// session; at the text "die" it kills itself once it has echoed that.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

inline std::string own_path() { return std::filesystem::read_symlink("/proc/self/exe"); }

/// The library's pauses in milliseconds, in order. They take the time divided by
/// `pause_divisor`; in a secondary that is the environment's "ZELVAN_PAUSE_DIVISOR".
inline std::vector<std::uint64_t> pauses;
inline unsigned pause_divisor = 1;

inline long open_descriptors() {
  const auto all = std::filesystem::directory_iterator("/proc/self/fd");
  return std::distance(begin(all), end(all));
}
