/// System calls that a signal may cut short.
#pragma once

#include <cerrno>

namespace zelvan::platform {

/// Makes a call that returns a negative number on failure, and repeats it while signals interrupt
/// it.
template <typename Call>
auto retry_interrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace zelvan::platform
