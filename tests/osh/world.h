/// A folder with files of many kinds, new for each case; the current folder while it exists.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <set>
#include <string>
#include <string_view>

#include <support/system.h>

namespace fs = std::filesystem;

/// Texts for the interface, which takes `char*` also where it changes nothing.
inline char* operator""_c(const char* text, std::size_t) { return const_cast<char*>(text); }
inline char* given(const std::string& text) { return const_cast<char*>(text.c_str()); }

/// Returns a path of `length` bytes that leads to `name`.
inline std::string padded(const std::string& name, std::size_t length) {
  std::string path;
  while (path.size() + name.size() + 1 < length) path += "./";
  if (path.size() + name.size() < length) path += '/';
  return path + name;
}

/// Returns the content of a file; of a directory the name that is in it.
inline std::string content(const std::string& path) {
  if (fs::is_directory(path)) return fs::exists(path + "/inner") ? "inner" : "";
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Returns the sorted names in a folder with their content, and a mark if they are read-only.
inline std::string files(const std::string& folder = ".") {
  std::set<std::string> lines;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const bool is_read_only = (entry.status().permissions() & fs::perms{0222}) == fs::perms{};
    const auto line = entry.path().filename().string() + '=' + content(entry.path().string());
    lines.insert(line + (is_read_only ? " (read-only) " : " "));
  }
  return std::accumulate(lines.begin(), lines.end(), std::string());
}

/// Makes a file, and the directories above it.
inline void put(const std::string& path, std::string_view text = {}) {
  fs::create_directories(fs::absolute(path).parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

struct World : support::TemporaryFolder {
  World() {
    put("plain", "12345");
    put("other", "abc");
    put("locked", "safe");
    fs::permissions("locked", fs::perms{0444});
    fs::create_directories("dir/inner");
    fs::create_directory("empty");
    std::error_code trouble;
    fs::create_symlink("plain", "link", trouble);
    fs::create_symlink("nowhere", "dangling", trouble);
    has_links = !trouble;
  }
  bool has_links;
};
