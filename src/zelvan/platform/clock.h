/// The clock on the wall, and pauses. Every function may run on any thread.
#pragma once

#include <cstdint>

namespace zelvan::platform {

/// A moment in local time: the year in full, month 1 to 12, day 1 to 31, hour 0 to 23, minute
/// 0 to 59, second 0 to 60.
struct LocalTime {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
};

/// Now, in the time zone that the environment names at the time of the call, on Windows in the
/// system's.
void GetLocalTime(LocalTime* now);

/// Returns after that many milliseconds, at once for 0. A signal doesn't cut the pause short,
/// and setting the clock changes nothing about its length.
void Sleep(std::uint64_t milliseconds);

}  // namespace zelvan::platform
