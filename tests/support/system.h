/// Queries of the operating system for tests. The sources are in a folder for each system.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <thread>

namespace support {

/// True if the system has the calls and file names of POSIX.
inline const bool is_posix = std::filesystem::path::preferred_separator == '/';

/// An empty folder, made the current one. The destructor removes it, read-only files included.
class TemporaryFolder {
  static std::string make(bool in_memory) {
    namespace fs = std::filesystem;
    const fs::path parent = in_memory ? "/dev/shm" : fs::temp_directory_path();
    const std::string start = (fs::canonical(parent) / "zelvan-").string();
    static int number = 0;  // skips folders that earlier runs left
    while (!fs::create_directory(start + std::to_string(++number))) continue;
    return start + std::to_string(number);
  }

 public:
  /// A folder in memory is faster, but not every system starts programs from there.
  explicit TemporaryFolder(bool in_memory = is_posix && std::filesystem::exists("/dev/shm"))
      : path(make(in_memory)) {
    std::filesystem::current_path(path);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    namespace fs = std::filesystem;
    fs::current_path("/");
    std::error_code trouble;  // a dangling link, or a program that has not ended yet
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
      fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add, trouble);
    }
    for (int i = 0; i < 500 && (fs::remove_all(path, trouble), trouble); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

  /// The absolute path in the system's own form, without a trailing separator.
  const std::string path;
};

/// Returns the number of open descriptors of the process, on Windows of its handles.
int open_descriptors();

/// Returns true if a program that is started now would inherit this descriptor.
bool is_inherited(int fd);

/// Sets an environment variable; removes it if `value` is null, on Windows also if it is empty.
void set_environment(const char* name, const char* value);

/// Returns the user's language in two letters; empty on a system where the environment decides it.
std::string language();

/// Returns the path of the running test program.
std::string own_path();

/// Allocates `size` bytes that end at an unreadable page, and returns the address of that page. On
/// Windows nothing after them is protected. Release them with the same size.
char* guarded_pages(std::size_t size);
void release_guarded_pages(char* guard, std::size_t size);

}  // namespace support
