#include <zelvan/osh/system_services.h>
#include <zelvan/platform/clock.h>
#include <zelvan/platform/environment.h>
#include <zelvan/platform/processes.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

namespace platform = zelvan::platform;

int osh_get_time_stamp(char* stamp) {
  platform::LocalTime now;
  platform::GetLocalTime(&now);
  constexpr std::size_t size = 14;
  return std::snprintf(stamp, size, "%02d%02d%02d.%02d%02d%02d", now.year % 100, now.month, now.day,
                       now.hour, now.minute, now.second);
}

int osh_gethostname(char* name, int size) {
  if (size > 0) std::strncpy(name, "localhost", size);
  return 0;
}

int osh_setenv(char* name, char* value) try {
  if (name == nullptr) return -1;
  const std::string assignment = std::string(name) + '=' + (value != nullptr ? value : "");
  return platform::_putenv(assignment.c_str());
} catch (const std::bad_alloc&) {
  return -1;
}

void osh_sleep(unsigned int seconds) { platform::Sleep(std::uint64_t{1000} * seconds); }

int osh_system(int, char* command) {
  const int result = platform::WinExec(command);
  return result > 31 ? 0 : result;
}

int osh_system_type() { return 8; }

void osh_initialize() {}

void osh_perror() {}
