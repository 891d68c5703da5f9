/// System calls that signals can interrupt.
#pragma once

#include <cerrno>

namespace zelvan::platform {

/// Makes a call that returns a negative number on failure, and repeats it as long as signals
/// interrupt it.
template <typename Call>
auto retry_interrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace zelvan::platform
