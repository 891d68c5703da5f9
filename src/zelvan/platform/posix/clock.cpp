#include <zelvan/platform/clock.h>

#include <cerrno>

#include <time.h>

namespace zelvan::platform {

void GetLocalTime(LocalTime* now) {
  const time_t seconds = ::time(nullptr);
  tm parts{};
  ::tzset();  // localtime_r alone may ignore a change of the variable TZ
  ::localtime_r(&seconds, &parts);
  *now = {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

void Sleep(std::uint64_t milliseconds) {
  if (milliseconds == 0) return;
  // Sleep until an absolute time: an interrupted sleep is repeated, and the end must stay the same.
  timespec end;
  ::clock_gettime(CLOCK_MONOTONIC, &end);
  end.tv_sec += static_cast<time_t>(milliseconds / 1000);
  end.tv_nsec += static_cast<long>(milliseconds % 1000) * 1'000'000;
  if (end.tv_nsec >= 1'000'000'000) {
    end.tv_nsec -= 1'000'000'000;
    ++end.tv_sec;
  }
  while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
  }
}

}  // namespace zelvan::platform
