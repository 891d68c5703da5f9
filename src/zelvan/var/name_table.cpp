#include <zelvan/var/detail/name.h>
#include <zelvan/var/name_table.h>

namespace {

/// The first row that `matches`; null if there is none.
template <class Predicate>
const VarNameValue* find_row(const VarNameValue* table, Predicate matches) {
  if (table == nullptr) return nullptr;
  for (const VarNameValue* row = table; row->name != nullptr; ++row) {
    if (matches(*row)) return row;
  }
  return nullptr;
}

}  // namespace

unsigned short VarLookupInt(const VarNameValue* table, const char* name, int* value) {
  const VarNameValue* row =
      find_row(table, [name](const VarNameValue& r) { return zelvan::is_same_name(r.name, name); });
  if (row == nullptr) return 0;
  *value = row->value;
  return 1;
}

unsigned short VarLookupString(const VarNameValue* table, int value, char** name) {
  const VarNameValue* row =
      find_row(table, [value](const VarNameValue& r) { return r.value == value; });
  *name = const_cast<char*>(row == nullptr ? "Unknown" : row->name);
  return row != nullptr;
}
