/// Floating-point numbers of other machines: IEEE 754 and IBM hexadecimal.
///
/// The source file is tra_prm0.cpp.
#pragma once

#include <zelvan/export.h>

/// Converts `count` numbers from `src` to `dst`, in ascending order.
///
/// `format`, of which only the bits of 0xFC are looked at:
///
///     0   no change: one `memmove` of all elements
///     4   IEEE to IBM
///    16   IBM to IEEE
///
/// `type`: 0xA4 for single precision (4 bytes), 0xB8 for double precision (8 bytes).
///
/// Numbers of both kinds are strings of bytes, the one with the sign first, at any alignment;
/// numbers in this machine's own order go through `tra_swap_bytes` before or after. Each is
/// read before it is written, so `src` and `dst` may be the same buffer. A count of 0 does nothing,
/// and the pointers may be null then.
///
/// An IBM number is a sign, a 7-bit characteristic X and a fraction F of 24 or 56 bits, and
/// stands for 0.F * 16^(X - 64). Every conversion truncates, none reports a loss:
///
/// - Single, IEEE to IBM: all finite numbers fit, but a significand loses up to 3 bits. Infinity
///   and NaN become a zero fraction with X = 0x20.
/// - Single, IBM to IEEE: what is too large becomes infinity, what is too small a denormal or
///   zero. A zero fraction with X not 0 becomes a NaN. Zeros keep their sign, both ways.
/// - Double, IEEE to IBM: exact from 2^-260 up to 2^252. Above, the largest IBM number; below,
///   down to 2^-312, bits drop off; zeros and what is smaller become 0 without a sign. Infinity
///   and NaN become a zero fraction with X = 0x7F.
/// - Double, IBM to IEEE: all fit. An unnormalised fraction keeps all, a full one loses up to 3
///   bits. A zero fraction with anything in the first byte, a sign included, becomes a NaN of
///   all ones.
///
/// For any other `format` or `type`, also when `count` is 0, prints a line to standard error and
/// leaves `dst` unchanged. There is no state: calls may run on any thread.
ZELVAN_C_API void tra_convert_flpt(int format, unsigned short type, unsigned short count,
                                   const void* src, void* dst);
