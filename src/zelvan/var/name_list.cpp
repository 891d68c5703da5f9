// A link is the pointer that leads to a node: the caller's head or the `next` of the node before.
// With links, the first node needs no special case.

#include <zelvan/detail/comparison.h>
#include <zelvan/var/detail/name.h>
#include <zelvan/var/name_list.h>

#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

/// Returns the name, or an empty one for null.
const char* or_empty(const char* name) { return name == nullptr ? "" : name; }

/// Returns a heap copy in which each control character is replaced by a NUL; null if the heap
/// refuses.
char* stored_copy(const char* name) {
  const std::size_t size = std::strlen(name) + 1;
  auto* copy = static_cast<char*>(std::malloc(size));
  if (copy == nullptr) return nullptr;
  for (std::size_t i = 0; i < size; ++i) copy[i] = zelvan::is_control(name[i]) ? '\0' : name[i];
  return copy;
}

/// Inserts a new node at `link` and returns its stored name. Returns null and changes nothing if
/// the heap refuses.
char* insert_node(VarNameInfo** link, const char* name, void* info) {
  char* const copy = stored_copy(name);
  auto* const node = static_cast<VarNameInfo*>(std::malloc(sizeof(VarNameInfo)));
  if (copy == nullptr || node == nullptr) {
    std::free(copy);
    std::free(node);
    return nullptr;
  }
  *node = {*link, copy, info};
  *link = node;
  return copy;
}

/// Returns the link to the first node of that name; if there is none, the null link after the tail.
VarNameInfo** find_link(VarNameInfo** list, const char* name) {
  const zelvan::SoughtName sought(or_empty(name));
  VarNameInfo** link = list;
  while (*link != nullptr && !sought.is(or_empty((*link)->name))) link = &(*link)->next;
  return link;
}

/// Returns the link to the last node of that name, or null if there is none.
VarNameInfo** find_last_link(VarNameInfo** list, const char* name) {
  VarNameInfo** last = nullptr;
  for (VarNameInfo** link = find_link(list, name); *link != nullptr;
       link = find_link(&(*link)->next, name)) {
    last = link;
  }
  return last;
}

}  // namespace

char* VarAddNameInfo(VarNameInfo** list, const char* name, void* info) {
  VarNameInfo** link = list;
  for (; *link != nullptr; link = &(*link)->next) {
    if (zelvan::_stricmp(or_empty((*link)->name), or_empty(name)) == 0) return nullptr;
  }
  return insert_node(link, name, info);
}

char* VarInsertNameInfo(VarNameInfo** list, const char* name, void* info, int position,
                        const char* reference) {
  constexpr int after = 1;
  constexpr int at_tail = 2;
  if (position == at_tail) return VarAddNameInfo(list, name, info);
  if (*find_link(list, name) != nullptr) return nullptr;
  VarNameInfo** const link = find_last_link(list, reference);
  if (link == nullptr) return nullptr;
  return insert_node(position == after ? &(*link)->next : link, name, info);
}

void* VarDeleteNameInfo(VarNameInfo** list, const char* name) {
  VarNameInfo** const link = find_link(list, name);
  VarNameInfo* const node = *link;
  if (node == nullptr) return nullptr;
  void* const info = node->info;
  *link = node->next;
  std::free(node->name);
  std::free(node);
  return info;
}

void VarExchangeNameInfo(VarNameInfo* list, const char* name1, const char* name2) {
  VarNameInfo** const first = find_last_link(&list, name1);
  VarNameInfo** const second = find_last_link(&list, name2);
  if (first == nullptr || second == nullptr) return;
  std::swap((*first)->info, (*second)->info);
}

char* VarReplaceNameInfo(VarNameInfo* list, const char* old_name, const char* new_name) {
  VarNameInfo* const node = *find_link(&list, old_name);
  if (node == nullptr) return nullptr;
  char* const copy = stored_copy(new_name);
  if (copy == nullptr) return nullptr;
  std::free(node->name);
  node->name = copy;
  return copy;
}

unsigned short VarLookupNameInfo(VarNameInfo* list, const char* name, void** info) {
  const VarNameInfo* const node = *find_link(&list, name);
  if (node == nullptr) return 0;
  *info = node->info;
  return 1;
}

char* VarGetName(VarNameInfo* entry) { return entry->name; }

void* VarListInfo(VarNameInfo* entry) { return entry == nullptr ? nullptr : entry->info; }

void VarNextListEntry(VarNameInfo** entry) {
  if (entry != nullptr) *entry = (*entry)->next;
}
