// A handler is called in the middle of an allocation, and may change the list: release, evict,
// allocate, make the table grow. So after a handler call nothing that was read from the list before
// may be taken as still true. Even if every handler answers "go on", an allocation fails if the
// heap refuses the block or a larger table, or if the sum of sizes exceeds an `int`. These are
// checked after the last handler call.

#include <zelvan/mem/detail/entry.h>
#include <zelvan/mem/mem.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

// The state of the module, shared by all lists of the process, without locks: callers must let only
// one thread at a time call the Mem functions.
int mem_trace = 0;

namespace zelvan {

MemList* mem_default_list = nullptr;
void* mem_default_object = nullptr;
int mem_sequence = 1;

namespace {

constexpr int rows_at_a_time = 16;

struct Request {
  MemList* list;
  int size;
  void* key;
  void** back_ptr;
};

/// Returns a table whose first `n_old` rows are copies of `old` and whose other rows are empty;
/// null if the heap refuses.
MemEntry* new_table(const MemEntry* old, int n_old, int n_entries) {
  auto* const table =
      static_cast<MemEntry*>(std::malloc(static_cast<std::size_t>(n_entries) * sizeof(MemEntry)));
  if (table == nullptr) return nullptr;
  std::copy(old, old + n_old, table);
  std::fill(table + n_old, table + n_entries, empty_entry);
  return table;
}

/// Adds 16 rows to the list. Returns false and changes nothing if the heap refuses or the number of
/// rows would exceed an `int`.
bool grow(MemList* list) {
  if (list->n_entries > INT_MAX - rows_at_a_time) return false;
  const int n_entries = list->n_entries + rows_at_a_time;
  MemEntry* const table = new_table(list->entries, list->n_entries, n_entries);
  if (table == nullptr) return false;
  std::free(list->entries);
  list->n_entries = n_entries;
  list->entries = table;
  return true;
}

bool is_full(const MemList* list) { return list->n_used == list->n_entries; }

/// Adds rows if the table is full. Returns false if it can't grow.
bool ensure_free_row(MemList* list) { return !is_full(list) || grow(list); }

/// Returns the pool's use plus `size` bytes, in a type that can't overflow.
long long sum_with(const MemPool* pool, int size) {
  return static_cast<long long>(pool->used) + size;
}

/// Allocates a block. A negative size becomes a huge one, which every heap refuses.
void* block_of(int size) { return std::malloc(static_cast<std::size_t>(size)); }

/// Returns true if the entry's block contains `place`. An empty entry has size 0 and contains
/// nothing.
bool holds(const MemEntry& entry, const void* place) {
  const auto distance =
      reinterpret_cast<std::uintptr_t>(place) - reinterpret_cast<std::uintptr_t>(entry.address);
  return distance < static_cast<std::uintptr_t>(entry.size);
}

/// Returns the first entry, from `first` on, whose block contains `place`; null if no block does.
MemEntry* find_block_around(MemList* list, MemEntry* first, const void* place) {
  MemEntry* const end = list->entries + list->n_entries;
  MemEntry* const found =
      std::find_if(first, end, [place](const MemEntry& entry) { return holds(entry, place); });
  return found == end ? nullptr : found;
}

/// Calls the handler and returns whether to go on. False if the handler returns 0, or if it has
/// released the block that contains the back pointer: the new address could no longer be stored.
bool may_go_on(const Request& request, int code) {
  MemList* const list = request.list;
  const MemEntry* const parent = find_block_around(list, list->entries, request.back_ptr);
  const std::ptrdiff_t index = parent == nullptr ? 0 : parent - list->entries;
  const MemEntry before = parent == nullptr ? empty_entry : *parent;
  MemException exception = {code, list, request.key, request.size};
  if (list->exception_handler(&exception) == 0) return false;
  // Compare both: a new block may have the address of the old one, but has another serial number.
  // An empty row has the number 0, which a block can have too once numbers have wrapped, but no
  // address.
  const MemEntry& now = list->entries[index];
  return parent == nullptr || (now.address == before.address && now.sequence == before.sequence);
}

/// The row for a new block, and the parent: the entry whose block contains the new block's back
/// pointer.
struct NewRow {
  MemEntry* row;     ///< the free row of lowest index; null if the table is full
  MemEntry* parent;  ///< null if it has no parent
};

/// Finds the row and the parent of a new block in one pass over the table.
NewRow find_new_row(MemList* list, const void* back_ptr) {
  MemEntry* const end = list->entries + list->n_entries;
  const auto is_empty = [](const MemEntry& entry) { return entry.address == nullptr; };
  MemEntry* const first = std::find_if(list->entries, end, [&](const MemEntry& entry) {
    return is_empty(entry) || holds(entry, back_ptr);
  });
  if (first == end) return {nullptr, nullptr};
  if (is_empty(*first)) return {first, find_block_around(list, first + 1, back_ptr)};
  MemEntry* const row = std::find_if(first + 1, end, is_empty);
  return {row == end ? nullptr : row, first};
}

int next_serial_number() {
  const int number = mem_sequence;
  // Wraps after 2^32 blocks; ages stay right, since they are differences modulo 2^32.
  mem_sequence = static_cast<int>(static_cast<unsigned>(number) + 1U);
  return number;
}

int allocate_untracked(int size, void** back_ptr) {
  void* const block = block_of(size);
  if (block == nullptr) {
    MemTrace("**Malloc failed\n");
    return MEM_MALLOC_FAILED;
  }
  *back_ptr = block;
  return MEM_SUCCESS;
}

/// Before the block is allocated, calls the handler for each obstacle: a size above the pool's
/// limit, a full table that the heap refuses to enlarge, too little left in the pool. Returns the
/// error of an obstacle if the handler returns 0, or if the table can't be enlarged after the call
/// either.
int make_room(const Request& request) {
  MemList* const list = request.list;
  if (request.size > list->pool->limit) {
    MemTrace("**Pool of %ld too small\n", long{list->pool->limit});
    if (!may_go_on(request, MEM_POOL_TOO_SMALL)) return MEM_POOL_TOO_SMALL;
  }
  if (!ensure_free_row(list)) {
    if (!may_go_on(request, MEM_TABLE_FAILED)) return MEM_TABLE_FAILED;
    if (!ensure_free_row(list)) return MEM_TABLE_FAILED;
  }
  if (sum_with(list->pool, request.size) > list->pool->limit) {
    MemTrace("**Pool overflow current size %ld\n", long{list->pool->used});
    if (!may_go_on(request, MEM_POOL_OVERFLOW)) {
      MemTrace("**Pool overflow after exception processing\n");
      return MEM_POOL_OVERFLOW;
    }
  }
  return MEM_SUCCESS;
}

/// Allocates the block, asking the handler if the heap refuses. Returns null, with the trace
/// written, on failure.
void* get_block(const Request& request) {
  void* block = block_of(request.size);
  if (block != nullptr) return block;
  MemTrace("**Malloc failed\n");
  if (may_go_on(request, MEM_MALLOC_FAILED)) block = block_of(request.size);
  if (block == nullptr) MemTrace("**Malloc failed after exception processing\n");
  return block;
}

/// Charges the block to the pool and enters it into the table, or returns an error. Calls no
/// handler.
int track(const Request& request, void* block) {
  MemList* const list = request.list;
  const long long used = sum_with(list->pool, request.size);
  if (used > INT_MAX) {
    MemTrace("**Pool overflow after exception processing\n");
    return MEM_POOL_OVERFLOW;
  }
  // A handler may have filled the table again since the last check.
  if (!ensure_free_row(list)) return MEM_TABLE_FAILED;
  const auto [entry, parent] = find_new_row(list, request.back_ptr);
  if (entry == nullptr) return MEM_TABLE_FAILED;

  list->pool->used = static_cast<int>(used);
  *entry = {
      block, request.size, request.size, request.key, request.back_ptr, 0, next_serial_number(),
      -1};
  ++list->n_used;
  if (mem_trace != 0) {
    MemTrace("  [%ld] Allocation address %#llx total size %ld pool used %ld\n",
             long{entry->sequence}, bits_of(block), long{entry->total_size},
             long{list->pool->used});
  }
  make_child(list, entry, parent);
  return MEM_SUCCESS;
}

}  // namespace

void MemTrace(const char* format, ...) {
  if (mem_trace == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

void MemEntryFindParent(MemList* list, MemEntry* entry) {
  MemEntry* parent = find_block_around(list, list->entries, entry->back_ptr);
  if (parent == entry) parent = find_block_around(list, entry + 1, entry->back_ptr);
  make_child(list, entry, parent);
}

void make_child(MemList* list, MemEntry* entry, MemEntry* parent) {
  if (parent == nullptr) return;
  entry->parent = static_cast<int>(parent - list->entries);
  parent->total_size += entry->size;
  MemTrace("    Parent sequence [%ld] total size %ld\n", long{parent->sequence},
           long{parent->total_size});
}

}  // namespace zelvan

using zelvan::bits_of;
using zelvan::MemTrace;

MemPool* MemPoolNew(int limit) {
  auto* const pool = static_cast<MemPool*>(std::malloc(sizeof(MemPool)));
  if (pool != nullptr) *pool = {limit > 0 ? limit : INT_MAX, 0};
  return pool;
}

void MemPoolDelete(MemPool** pool) {
  std::free(*pool);
  *pool = nullptr;
}

MemList* MemListNew(MemPool* pool, MemExceptionHandler handler) {
  auto* const list = static_cast<MemList*>(std::malloc(sizeof(MemList)));
  if (list == nullptr) return nullptr;
  constexpr int n_entries = zelvan::rows_at_a_time;
  *list = {n_entries, 0, pool, handler, zelvan::new_table(nullptr, 0, n_entries)};
  if (list->entries == nullptr) {
    std::free(list);
    return nullptr;
  }
  return list;
}

int MemAllocate(MemList* list, int size, void* key, void** back_ptr) {
  if (list == nullptr) list = zelvan::mem_default_list;
  if (key == nullptr) key = zelvan::mem_default_object;
  if (mem_trace != 0) {
    MemTrace("Allocate:  list %#llx key %#llx size %ld back ptr %#llx\n", bits_of(list),
             bits_of(key), long{size}, bits_of(back_ptr));
  }
  if (list == nullptr) return zelvan::allocate_untracked(size, back_ptr);

  const zelvan::Request request = {list, size, key, back_ptr};
  const int refusal = zelvan::make_room(request);
  if (refusal != MEM_SUCCESS) return refusal;
  void* const block = zelvan::get_block(request);
  if (block == nullptr) return MEM_MALLOC_FAILED;
  const int status = zelvan::track(request, block);
  if (status != MEM_SUCCESS) {
    std::free(block);
    return status;
  }
  *back_ptr = block;
  return MEM_SUCCESS;
}

unsigned short MemAvailable(MemList* list, int size) {
  return !zelvan::is_full(list) && zelvan::sum_with(list->pool, size) <= list->pool->limit;
}

void MemSetDefaultList(MemList* list) { zelvan::mem_default_list = list; }

void MemSetDefaultObject(void* object) { zelvan::mem_default_object = object; }
