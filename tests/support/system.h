/// What tests ask of the operating system. Each system has a body of its own, in the folder of
/// its name.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace support {

/// An empty folder, which is the current one meanwhile and goes with all that is in it, what is
/// read-only included.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// Absolute, as the system itself writes it, without a separator at its end.
  const std::string path;
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

/// Runs a check, and once more as a user whom permissions bind if they don't bind this one and
/// there is another to be had. The other's failed assertions count as this process's.
void for_every_user(const std::function<void()>& check);

/// The path of the running test program.
std::string own_path();

/// Memory for `size` bytes in front of an unreadable page: the address of that page. It goes back
/// with the same size.
char* guarded_pages(std::size_t size);
void release_guarded_pages(char* guard, std::size_t size);

}  // namespace support
