/// Finding a value by its key in a line of `key:value` items.
#pragma once

#include <zelvan/export.h>

#include <cstdint>

/// Finds the value of `key` in `text`, a line such as `width:12,colour:red`.
///
/// Gives the length of the value and points `*value` at its first character, inside `text` and
/// not terminated. Gives 0 with `*value` null if there is none, if `text` or `key` is null, or
/// if `text` is shorter than 3 characters.
///
/// The case of ASCII letters doesn't count, and an item answers to every `key` that begins with
/// the item's key: `col:red` answers to "color", but `color:red` not to "col". A value runs to
/// the next comma and may hold colons. Runs of `:` and `,` count as one separator, so in
/// `ab:,cd:1` the value of "ab" is `cd:1`.
///
/// The search moves from comma to comma and ends once the text does: an item without a colon
/// borrows the next one's, and if what is left behind it is a single character, the search ends
/// there. So `abc,def:1` has no "def", while `abc,def:12` has.
///
/// Requires: `value` is not null. Nothing is kept; any thread.
ZELVAN_C_API std::intptr_t utl_searchValueForKey(const char* text, const char* key,
                                                 const char** value);
