/// Conversion of text to numbers by the C library.
#pragma once

namespace zelvan::platform {

/// Returns the number in `text`, by `strtod` in the "C" locale: correctly rounded, infinite if too
/// large, with the point as the decimal point whatever the locale of the process. If the heap
/// refuses at the first call, the locale of the process is used instead.
///
/// Leaves `errno` unchanged, except if the heap refuses. Not for Windows, whose C library does not
/// always round correctly.
double strtod_c(const char* text);

}  // namespace zelvan::platform
