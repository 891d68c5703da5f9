// Measures reading a file line by line, compared with getline, and copying a file, compared with
// copy_file_range.

#include <zelvan/osh/file_access.h>

#include "contest.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

struct Folder {
  Folder() {
    std::string name = fs::temp_directory_path() / "zelvan-bench-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) std::abort();
    path = name;
  }
  ~Folder() { fs::remove_all(path); }
  std::string operator()(const char* name) const { return path / name; }
  fs::path path;
};

const Folder folder;

std::size_t bytes_by_library(std::string path) {
  std::FILE* const file = osh_fopen_binary(path.data(), std::string("r").data());
  char line[4096];
  std::size_t sum = 0;
  while (const int n = osh_readLine(file, line, sizeof line)) {
    sum += static_cast<std::size_t>(n) + static_cast<unsigned char>(line[0]);
  }
  osh_fclose(file);
  return sum;
}

std::size_t bytes_by_getline(const std::string& path) {
  std::FILE* const file = std::fopen(path.c_str(), "r");
  char* line = nullptr;
  std::size_t room = 0, sum = 0;
  for (ssize_t n; (n = getline(&line, &room, file)) > 0;) {
    sum += static_cast<std::size_t>(n) + static_cast<unsigned char>(line[0]);
  }
  std::free(line);
  std::fclose(file);
  return sum;
}

void lines() {
  static const std::string path = folder("lines");
  std::ofstream file(path);
  for (int i = 0; i < 20'000; ++i) file << "line " << i << ' ' << std::string(i % 80, 'x') << '\n';
  file.close();
  bench::contest(
      "read a file line by line", [] { return bytes_by_library(path) == bytes_by_getline(path); },
      {{"zelvan", [] { benchmark::DoNotOptimize(bytes_by_library(path)); }},
       {"getline", [] { benchmark::DoNotOptimize(bytes_by_getline(path)); }}},
      20'000);
}

void copy_by_library(std::string source, std::string target) {
  std::remove(target.c_str());
  osh_copyfile(target.data(), source.data());
}

void copy_by_system(const std::string& source, const std::string& target) {
  std::remove(target.c_str());
  const int in = open(source.c_str(), O_RDONLY | O_CLOEXEC);
  const int out = open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  while (copy_file_range(in, nullptr, out, nullptr, 1 << 30, 0) > 0) {
  }
  close(in);
  close(out);
}

bool is_same_file(const std::string& a, const std::string& b) {
  std::ostringstream x, y;
  x << std::ifstream(a).rdbuf();
  y << std::ifstream(b).rdbuf();
  return x.str() == y.str();
}

void copies() {
  for (const int megabytes : {1, 16}) {
    const std::string source = folder(megabytes == 1 ? "small" : "large");
    const std::string ours = source + ".ours", theirs = source + ".theirs";
    std::ofstream(source) << std::string(static_cast<std::size_t>(megabytes) << 20, 'x');
    const auto by_library = [=] { copy_by_library(source, ours); };
    const auto by_system = [=] { copy_by_system(source, theirs); };
    bench::contest("copy a file to a new name, " + std::to_string(megabytes) + " MB",
                   [=] { return by_library(), by_system(), is_same_file(ours, theirs); },
                   {{"zelvan", by_library}, {"copy_file_range", by_system}});
  }
}

const bench::Rows rows([] { lines(), copies(); });

}  // namespace
