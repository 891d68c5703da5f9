/// Wall-clock time, and pauses. Every function may run on any thread, but `GetLocalTime` only while
/// no thread changes the environment.
#pragma once

#include <cstdint>

namespace zelvan::platform {

/// A point in local time: the full year, month 1 to 12, day 1 to 31, hour 0 to 23, minute 0 to 59,
/// second 0 to 60.
struct LocalTime {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
};

/// Stores the current local time. The time zone is that of the environment at the time of the call,
/// on Windows that of the system.
void GetLocalTime(LocalTime* now);

/// Pauses the thread for that many milliseconds; returns at once for 0. Neither a signal nor
/// setting the clock changes the length of the pause.
void Sleep(std::uint64_t milliseconds);

}  // namespace zelvan::platform
