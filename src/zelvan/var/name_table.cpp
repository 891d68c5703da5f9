#include <zelvan/var/detail/find_name.h>
#include <zelvan/var/name_table.h>

namespace {

/// A row of a table, or the one that ends it.
struct Place {
  const VarNameValue* row;

  bool is_end() const { return row->name == nullptr; }
  const char* name() const { return row->name; }
  void advance() { ++row; }
};

}  // namespace

unsigned short VarLookupInt(const VarNameValue* table, const char* name, int* value) {
  if (table == nullptr) return 0;
  const Place found = zelvan::find_name<zelvan::AsName>(Place{table}, name == nullptr ? "" : name);
  if (found.is_end()) return 0;
  *value = found.row->value;
  return 1;
}

unsigned short VarLookupString(const VarNameValue* table, int value, char** name) {
  *name = const_cast<char*>("Unknown");
  if (table == nullptr) return 0;
  Place place{table};
  while (!place.is_end() && place.row->value != value) place.advance();
  if (place.is_end()) return 0;
  *name = const_cast<char*>(place.name());
  return 1;
}
