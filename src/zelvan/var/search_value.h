/// Finding a value by its key in a line of `key:value` items.
#pragma once

#include <zelvan/export.h>

#include <cstdint>

/// Finds the value of `key` in `text`, a line such as `width:12,colour:red`.
///
/// Returns the length of the value and points `*value` to its first character, inside `text`; the
/// value has no terminator. Returns 0 and sets `*value` to null if there is no value, if `text` or
/// `key` is null, or if `text` is shorter than 3 characters.
///
/// The case of ASCII letters is ignored. An item matches every `key` that begins with the item's
/// own key: `col:red` matches "color", but `color:red` does not match "col". A value ends at the
/// next comma and may contain colons. A run of `:` and `,` is one separator, so in `ab:,cd:1` the
/// value of "ab" is `cd:1`.
///
/// The search moves from comma to comma. An item without a colon takes the colon of the next one;
/// if only a single character follows that colon, the search ends there. So "def" is found in
/// `abc,def:12`, but not in `abc,def:1`.
///
/// Requires: `value` is not null. Nothing is kept; any thread.
ZELVAN_C_API std::intptr_t utl_searchValueForKey(const char* text, const char* key,
                                                 const char** value);
