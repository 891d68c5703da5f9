/// What the user's locale says.
#pragma once

namespace zelvan::platform {

/// The locale of the user who runs the process: the only one that can be asked about.
inline constexpr unsigned LOCALE_USER_DEFAULT = 0x400;

/// Its language: the two letters of ISO 639, lower case.
inline constexpr unsigned LOCALE_SISO639LANGNAME = 0x59;

/// Writes what `type` names, with its terminator, into the `size` bytes of `buffer`, and returns
/// its length, terminator included. Returns 0 and leaves the buffer alone if the locale
/// has no such language, if the question is another one, or if the answer does not fit.
///
/// The environment, on Windows the system, is asked at each call, so a change shows at once. The
/// locale's data need not be there.
int GetLocaleInfoA(unsigned locale, unsigned type, char* buffer, int size);

}  // namespace zelvan::platform
