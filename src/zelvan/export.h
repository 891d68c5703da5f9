/// How names leave the library.
///
/// The library is built with hidden visibility, so what carries none of these marks stays
/// inside. `exports.txt` beside this file lists every name that leaves, and a test compares
/// it with the built library: a new public name needs its mark here and its line there.
#pragma once

/// Marks a class or function as part of the interface.
#define ZELVAN_API __attribute__((visibility("default")))

/// The same for a flat function that is found by its bare name.
#define ZELVAN_C_API extern "C" ZELVAN_API

/// Marks a function that only stores or compares and is inline for the caller's speed.
/// While the shared library itself is built, its symbol is made as well, for those who look it up.
#ifdef ZELVAN_BUILDING_LIBRARY
#define ZELVAN_INLINE_API __attribute__((visibility("default"), used))
#else
#define ZELVAN_INLINE_API
#endif
