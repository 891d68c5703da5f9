/// Conversion of the system's error codes to `errno`.
#pragma once

#include <cerrno>
#include <system_error>

#include <windows.h>

namespace zelvan::platform {

/// Returns the result of a call unchanged. If it is 0, the call has failed: stores the reason in
/// `errno`.
template <typename Result>
Result with_errno(Result result) {
  if (result != Result{}) return result;
  const std::error_code why(static_cast<int>(::GetLastError()), std::system_category());
  const std::error_condition known = why.default_error_condition();
  errno = known.category() == std::generic_category() ? known.value() : EINVAL;
  return result;
}

}  // namespace zelvan::platform
