/// Byte order and bit order of data from other machines.
///
/// Every function works at any alignment. A source and a destination may be the same buffer.
/// Nothing is allocated and no state is kept: calls may run on any thread, if no other thread
/// writes to their buffers.
#pragma once

#include <zelvan/export.h>

/// Reverses the 2, 4 or 8 bytes at `value` in place. Requires: `value` is not null.
ZELVAN_C_API void tra_swap_2(void* value);
ZELVAN_C_API void tra_swap_4(void* value);
ZELVAN_C_API void tra_swap_8(void* value);

/// Reverses the bytes of each of `count` elements, from `src` to `dst`.
///
/// `type` names the type of the elements. Its low four bits are the size in bytes, the others
/// distinguish types of one size. These are all that exist:
///
///     0x42  0x52  0x62          2 bytes
///     0x74  0x84  0x94  0xA4    4 bytes, 0xA4 is single-precision floating point
///     0xB8                      8 bytes, double-precision floating point
///
/// An element is always reversed as a whole, whatever its type. Elements are processed in ascending
/// order, each read before it is written. A count of 0 does nothing, and the pointers may be null
/// then.
///
/// With any other `type`, even if `count` is 0, prints a line on standard output and ends the
/// process with `exit(1)`.
ZELVAN_C_API void tra_swap_bytes(unsigned short type, unsigned int count, const void* src,
                                 void* dst);

/// Reverses the order of the bits in each of `count` bytes, from `src` to `dst`: bit 0 is exchanged
/// with bit 7, bit 1 with bit 6, and so on. Bytes are processed in ascending order. A count of 0
/// does nothing, and the pointers may be null then.
ZELVAN_C_API void tra_reverse_bits(unsigned short count, const void* src, void* dst);

/// Returns 1: the library is built only for processors that store the low byte first.
ZELVAN_C_API int UtlByteOrderIsIntel();
ZELVAN_C_API int utl_is_little_endian();
