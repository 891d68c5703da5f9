/// What tests ask of the operating system. Each system has a body of its own, in the folder of
/// its name.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <thread>

namespace support {

/// Has the system the calls and the names of POSIX?
inline const bool is_posix = std::filesystem::path::preferred_separator == '/';

/// An empty folder, which is the current one meanwhile and goes with all that is in it, what is
/// read-only included.
class TemporaryFolder {
  static std::string make(bool in_memory) {
    namespace fs = std::filesystem;
    const fs::path parent = in_memory ? "/dev/shm" : fs::temp_directory_path();
    const std::string start = (fs::canonical(parent) / "zelvan-").string();
    static int number = 0;  // others may have left folders of such names
    while (!fs::create_directory(start + std::to_string(++number))) continue;
    return start + std::to_string(number);
  }

 public:
  /// Where there is memory for it, that is fast, but not every system runs programs from there.
  explicit TemporaryFolder(bool in_memory = is_posix && std::filesystem::exists("/dev/shm"))
      : path(make(in_memory)) {
    std::filesystem::current_path(path);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    namespace fs = std::filesystem;
    fs::current_path("/");
    std::error_code trouble;  // a link to nothing; a program that is just ending and has it still
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
      fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add, trouble);
    }
    for (int i = 0; i < 500 && (fs::remove_all(path, trouble), trouble); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

  /// Absolute, as the system itself writes it, without a separator at its end.
  const std::string path;
};

/// How many descriptors or handles of any kind the process holds.
int open_descriptors();

/// Would a program that is started now get this descriptor?
bool is_inherited(int fd);

/// Sets a variable of the environment, or with a null value removes it. On Windows none is empty.
void set_environment(const char* name, const char* value);

/// The language of the user in two letters where the system has one; empty where the
/// environment names it.
std::string language();

/// The path of the running test program.
std::string own_path();

/// Memory for `size` bytes in front of an unreadable page, save on Windows: the address of that
/// page. It goes back with the same size.
char* guarded_pages(std::size_t size);
void release_guarded_pages(char* guard, std::size_t size);

}  // namespace support
