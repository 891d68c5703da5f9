/// What tests ask of the operating system. Each system has a body of its own, in the folder of
/// its name.
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <thread>

namespace support {

/// Where temporary folders are made: in memory where there is some, as tests ask much of a disk.
std::filesystem::path parent_of_folders();

/// An empty folder, which is the current one meanwhile and goes with all that is in it, what is
/// read-only included.
class TemporaryFolder {
  static std::string make() {  // others may have left folders of such names
    static int number = 0;
    const std::string start = (parent_of_folders() / "zelvan-").string();
    while (!std::filesystem::create_directory(start + std::to_string(++number))) continue;
    return start + std::to_string(number);
  }

 public:
  TemporaryFolder() { std::filesystem::current_path(path); }
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
  const std::string path = make();
};

/// Makes a symbolic link. False where there are none, or not for this user.
bool make_link(const char* target, const char* name);

/// Takes the permission to write a directory from everybody. False where files alone have it.
bool make_read_only(const char* directory);

/// How many descriptors or handles of any kind the process holds.
int open_descriptors();

/// How many bytes of its heap are in use, its own caches included.
std::size_t heap_in_use();

/// Would a program that is started now get this descriptor?
bool is_inherited(int fd);

/// Sets a variable of the environment, or with a null value removes it.
void set_environment(const char* name, const char* value);

/// Sets the time zone to so many hours east where the environment names it. Gives the one in force.
int set_time_zone(int hours_east);

/// The language of the user in two letters where the system has one; empty where the
/// environment names it.
std::string language();

/// What the library's log files are called by default.
extern const char* const log_prefix;

/// The path of the running test program.
std::string own_path();

/// Memory for `size` bytes in front of an unreadable page: the address of that page. It goes back
/// with the same size.
char* guarded_pages(std::size_t size);
void release_guarded_pages(char* guard, std::size_t size);

}  // namespace support
