#include <zelvan/platform/clock.h>

#include <algorithm>
#include <chrono>

#include <windows.h>

namespace zelvan::platform {

void GetLocalTime(LocalTime* now) {
  SYSTEMTIME parts;
  ::GetLocalTime(&parts);
  *now = {parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute, parts.wSecond};
}

void Sleep(std::uint64_t milliseconds) {
  using std::chrono::steady_clock;
  constexpr std::chrono::milliseconds one_day = std::chrono::hours(24);
  const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
  // The system counts clock ticks, so it may return early. Its argument has 32 bits, so long pauses
  // are cut into days.
  for (auto now = steady_clock::now(); now < end; now = steady_clock::now()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
    ::Sleep(static_cast<DWORD>(std::min(left, one_day).count()));
  }
}

}  // namespace zelvan::platform
