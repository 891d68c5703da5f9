/// The marks of exported names.
///
/// The library is built with hidden visibility: only names that carry one of these marks are
/// exported. `exports.txt` beside this file lists all exported names, and a test compares it with
/// the built library. So a new public name needs a mark where it is declared, and a line in
/// `exports.txt`.
#pragma once

/// Marks a class or function as part of the interface.
#define ZELVAN_API __attribute__((visibility("default")))

/// Marks a flat function as part of the interface, exported under its bare C name.
#define ZELVAN_C_API extern "C" ZELVAN_API

/// Marks an inline function of the interface that only stores or compares.
///
/// It is inline for the caller's speed. While the shared library itself is built, its symbol is
/// exported as well, for callers that look it up by name.
#ifdef ZELVAN_BUILDING_LIBRARY
#define ZELVAN_INLINE_API __attribute__((visibility("default"), used))
#else
#define ZELVAN_INLINE_API
#endif
