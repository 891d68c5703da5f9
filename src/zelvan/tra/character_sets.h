/// Text of other machines: ASCII and EBCDIC.
#pragma once

#include <zelvan/export.h>

/// The conversions of `tra_convert_charset`.
enum {
  TRA_ASCII_TO_EBCDIC = 1,  ///< from this machine to the other
  TRA_EBCDIC_TO_ASCII = 2,  ///< from the other machine to this one
};

/// Translates `count` bytes from `src` to `dst`, in ascending order; both may be the same buffer.
///
/// `code` is one of the two conversions above. A NUL is translated like any other byte, and no
/// terminator is added. A count of 0 does nothing, and the pointers may be null then. To EBCDIC,
/// bit 7 of a byte is ignored. To ASCII, a byte without a meaning there becomes a NUL. A
/// translation there and back restores every ASCII byte except two: 0x13 becomes a NUL, and the
/// underscore (0x5F) a minus (0x2D).
///
/// With any other `code`, even if `count` is 0, prints a line on standard output and ends the
/// process with `exit(1)`. There is no state: calls may run on any thread.
ZELVAN_C_API void tra_convert_charset(short code, unsigned short count, const void* src, void* dst);
