#include <zelvan/var/detail/name.h>
#include <zelvan/var/name_table.h>

unsigned short VarLookupInt(const VarNameValue* table, const char* name, int* value) {
  if (table == nullptr) return 0;
  const zelvan::SoughtName sought(name == nullptr ? "" : name);
  const VarNameValue* row = table;
  while (row->name != nullptr && !sought.is(row->name)) ++row;
  if (row->name == nullptr) return 0;
  *value = row->value;
  return 1;
}

unsigned short VarLookupString(const VarNameValue* table, int value, char** name) {
  *name = const_cast<char*>("Unknown");
  if (table == nullptr) return 0;
  const VarNameValue* row = table;
  while (row->name != nullptr && row->value != value) ++row;
  if (row->name == nullptr) return 0;
  *name = const_cast<char*>(row->name);
  return 1;
}
