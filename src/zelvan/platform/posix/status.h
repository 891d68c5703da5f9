/// Tests of a file's status.
#pragma once

#include <sys/stat.h>

namespace zelvan::platform {

inline constexpr mode_t write_bits = S_IWUSR | S_IWGRP | S_IWOTH;

/// True if nobody has permission to write the file.
inline bool is_read_only(const struct stat& file) { return (file.st_mode & write_bits) == 0; }

/// True if both describe one file.
inline bool is_same_file(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace zelvan::platform
