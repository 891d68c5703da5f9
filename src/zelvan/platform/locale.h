/// The user's locale.
#pragma once

namespace zelvan::platform {

/// Writes the language of the user's locale with its terminator: two lower-case letters of ISO 639.
/// Returns 3, or 0 with `language` unchanged if the locale has no such language, as "C" has none.
///
/// Each call reads the environment, on Windows the system's setting, so a change takes effect at
/// once. The data of the locale need not be installed.
int GetLocaleInfoA(char (&language)[3]);

}  // namespace zelvan::platform
