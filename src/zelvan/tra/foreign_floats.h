/// Floating-point numbers of other machines: IEEE 754 and IBM hexadecimal.
///
/// The source file is tra_prm0.cpp.
#pragma once

#include <zelvan/export.h>

/// Converts `count` numbers from `src` to `dst`, in ascending order.
///
/// `format`, of which only the bits of 0xFC count:
///
///     0   no change: one `memmove` of all elements
///     4   IEEE to IBM
///    16   IBM to IEEE
///
/// `type`: 0xA4 for single precision (4 bytes), 0xB8 for double precision (8 bytes).
///
/// Both buffers hold numbers with the highest byte first, at any alignment. IEEE numbers in this
/// machine's own order need `tra_swap_bytes` before or after the conversion. Each number is read
/// before it is written, so `src` and `dst` may be the same buffer. A count of 0 does nothing, and
/// the pointers may be null then.
///
/// An IBM number is a sign, a 7-bit characteristic X and a fraction F of 24 or 56 bits, and stands
/// for 0.F * 16^(X - 64). Every conversion truncates; no loss is reported:
///
/// - Single, IEEE to IBM: all finite numbers are in range, but a significand loses up to 3 bits.
///   Infinity and NaN become a zero fraction with X = 0x20.
/// - Single, IBM to IEEE: a number that is too large becomes infinity, one that is too small a
///   denormal or zero. A zero fraction with X not 0 becomes a NaN. Zeros keep their sign, both
///   ways.
/// - Double, IEEE to IBM: exact from 2^-260 to below 2^252. From 2^252 on, the result is the
///   largest IBM number. Below 2^-260 bits are lost; below 2^-312, and for zeros, the result is 0
///   without a sign. Infinity and NaN become a zero fraction with X = 0x7F.
/// - Double, IBM to IEEE: all numbers are in range. A normalised fraction loses up to 3 bits, an
///   unnormalised one none. A zero fraction becomes a NaN with all bits set if any bit of the first
///   byte is set, the sign included.
///
/// For any other `format` or `type`, even if `count` is 0, prints a line to standard error and
/// leaves `dst` unchanged. There is no state: calls may run on any thread.
ZELVAN_C_API void tra_convert_flpt(int format, unsigned short type, unsigned short count,
                                   const void* src, void* dst);
