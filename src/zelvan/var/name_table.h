/// Constant tables of keywords and their numbers.
///
/// Names compare as in a name list: see name_list.h. The tables belong to the caller and are only
/// read, so every function may be called from any thread.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// A row of a keyword table. A row with a null `name` ends the table.
struct VarNameValue {
  const char* name;  ///< the keyword; `const`, since it is usually a literal
  short value;       ///< its number; of rows with equal names or numbers the first is found
};

/// Stores the value of the first row named `name` in `*value`, sign-extended, and returns 1.
///
/// Returns 0 and leaves `*value` unchanged if there is no such row, or if `table` is null.
/// Requires: `value` is not null.
ZELVAN_C_API unsigned short VarLookupInt(const VarNameValue* table, const char* name, int* value);

/// Stores the name of the first row with that value in `*name` and returns 1.
///
/// If there is no such row, or if `table` is null, stores the constant "Unknown" and returns 0.
/// The caller must neither change nor free the text. Requires: `name` is not null.
ZELVAN_C_API unsigned short VarLookupString(const VarNameValue* table, int value, char** name);

static_assert(offsetof(VarNameValue, name) == 0 && offsetof(VarNameValue, value) == sizeof(void*) &&
                  sizeof(VarNameValue) == 2 * sizeof(void*),
              "layout is interface");
