/// The test program as a secondary of its own, and the pauses that the library makes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Started with the arguments of a secondary, the program says "ready" as its status and its
/// process id as its data. Then it echoes what it reads to the end of the session. At the text
/// "die" it kills itself in the middle of a message.
inline std::string own_path() { return std::filesystem::read_symlink("/proc/self/exe"); }

/// The library's pauses in milliseconds, in order. They take the time divided by
/// `pause_divisor`; in a secondary that is the environment's "ZELVAN_PAUSE_DIVISOR".
inline std::vector<std::uint64_t> pauses;
inline unsigned pause_divisor = 1;

inline int open_descriptors() {
  const auto all = std::filesystem::directory_iterator("/proc/self/fd");
  return static_cast<int>(std::distance(begin(all), end(all)));
}
