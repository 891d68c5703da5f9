/// Numbers as the C library reads them.
#pragma once

namespace zelvan::platform {

/// Returns the number that `text` spells, by `strtod` in the "C" locale: correctly rounded,
/// infinite if it is too large, and with the point as its decimal point whatever locale the process
/// has. If the heap is exhausted at the first call, the locale of the process decides instead.
///
/// Leaves `errno` as it is. Not for Windows, whose C library does not always round correctly.
double strtod_c(const char* text);

}  // namespace zelvan::platform
