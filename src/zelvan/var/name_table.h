/// Constant tables of keywords and their numbers.
///
/// Names compare as in a name list: see name_list.h. The tables are the caller's and only
/// read, so every function may run on any thread.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// A row of a keyword table. A row with a null `name` ends the table.
struct VarNameValue {
  const char* name;  ///< the keyword, commonly a literal: that is why it is `const`
  short value;       ///< its number; of equal ones the first row counts
};

/// Stores the value of the first row named `name` in `*value`, widened with its sign, and gives
/// 1. Gives 0 and leaves `*value` alone if there is none, or if `table` is null.
///
/// Requires: `value` is not null.
ZELVAN_C_API unsigned short VarLookupInt(const VarNameValue* table, const char* name, int* value);

/// Stores the name of the first row with that value in `*name` and gives 1. If there is none,
/// or if `table` is null, stores the constant "Unknown" and gives 0. Neither text is the
/// caller's to change or free.
///
/// Requires: `name` is not null.
ZELVAN_C_API unsigned short VarLookupString(const VarNameValue* table, int value, char** name);

static_assert(offsetof(VarNameValue, name) == 0 && offsetof(VarNameValue, value) == sizeof(void*) &&
                  sizeof(VarNameValue) == 2 * sizeof(void*),
              "layout is interface");
