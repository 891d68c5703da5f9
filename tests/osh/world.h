/// A directory of files of many kinds, anew for each case, which is the current one meanwhile.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace fs = std::filesystem;

/// The interface takes texts that it doesn't change.
inline char* operator""_c(const char* text, std::size_t) { return const_cast<char*>(text); }

inline std::string content(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void put(const std::string& path, std::string_view text) { std::ofstream(path) << text; }

inline std::ptrdiff_t entries(const char* directory) {
  return std::distance(fs::directory_iterator(directory), {});
}

class World {
 public:
  World() {
    char name[] = "/tmp/zelvan-osh-XXXXXX";
    path_ = mkdtemp(name);
    fs::current_path(path_);
    put("plain", "12345");
    put("other", "abc");
    put("locked", "safe");
    fs::permissions("locked", fs::perms{0444});
    fs::create_directories("dir/inner");
    fs::create_directory("empty");
    fs::create_symlink("plain", "link");
    fs::create_symlink("nowhere", "dangling");
    mkfifo("pipe", 0600);
  }
  ~World() {
    fs::current_path("/");
    fs::remove_all(path_);
  }

 private:
  std::string path_;
};
