/// The user's locale.
#pragma once

namespace zelvan::platform {

/// The locale of the user who runs the process; no other is supported.
inline constexpr unsigned LOCALE_USER_DEFAULT = 0x400;

/// The language of the locale: two lower-case letters of ISO 639.
inline constexpr unsigned LOCALE_SISO639LANGNAME = 0x59;

/// Writes the item `type` with its terminator into the `size` bytes of `buffer`, and returns its
/// length, including the terminator. Returns 0 and leaves the buffer unchanged if the locale has no
/// language of two letters (as "C" has none), if the item is not supported, or if it does not fit.
///
/// Each call reads the environment, on Windows the system's setting, so a change takes effect at
/// once. The data of the locale need not be installed.
int GetLocaleInfoA(unsigned locale, unsigned type, char* buffer, int size);

}  // namespace zelvan::platform
