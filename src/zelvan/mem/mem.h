/// Heap blocks that can be taken back from their owners.
///
/// A **pool** is a budget of bytes and nothing else: it only counts. A **list** is a table of
/// tracked blocks, charged to one pool; several lists may share a pool. For each block the table
/// records who requested it (the key), its size, and where the owner keeps the pointer to it (the
/// back pointer). So the library can take a block away at any moment: it frees the block and writes
/// null into the owner's pointer. An owner that finds null loads its data again.
///
/// Blocks come from `malloc` one by one, without a header: the address is just what `malloc`
/// returned. All bookkeeping is in the table, and every look-up scans it.
///
/// **Exceptions.** When an allocation can't go ahead, the list's handler is called. It may make
/// room and return non-zero to go on, or return zero to give up:
///
///     unsigned short evict_oldest(MemException* exception) {
///       MemList* list = exception->list;
///       if (exception->code == MEM_POOL_TOO_SMALL) return 0;  // it can never fit
///       MemListInitializeSearch(list);
///       MemListRemoveFromSearch(list, exception->key);  // keep the requester's own blocks
///       do {
///         const int before = list->n_used;
///         MemListRemoveOldest(list);
///         if (list->n_used == before) return 0;  // none left, or its release is refused
///       } while (MemAvailable(list, exception->size) == 0);
///       return 1;
///     }
///
/// The handler runs inside `MemAllocate`. It may do anything with the list, even allocate from it,
/// except delete the list or its pool.
///
/// **Parents.** A block whose back pointer lies inside another block of the same list is that
/// block's child. A parent is never released while it has a child. `MemListClear` and the removals
/// release a parent together with its children, one level deep: if a child has children of its
/// own, release those first.
///
/// **Release is refused** when the owner's pointer no longer holds the block's address, or the
/// block has a child. A refusal changes nothing and is reported only in the trace.
///
/// *Requires*, throughout: a back pointer stays readable and writable until its block is released,
/// or until `MemSetPointer` replaces it by another back pointer. So it must not lie in a block of
/// another list that may be released earlier.
///
/// Threads: all lists share the defaults and the counter of serial numbers, so callers let only one
/// thread at a time call the functions of this header.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// Results of `MemAllocate`, and the `code` of an exception.
enum : int {
  MEM_SUCCESS = 0,         ///< `*back_ptr` has the block's address; never an exception's code
  MEM_POOL_OVERFLOW = 1,   ///< `pool->used + size` is greater than `pool->limit`
  MEM_TABLE_FAILED = 2,    ///< the table is full and the heap refuses a larger one
  MEM_POOL_TOO_SMALL = 3,  ///< `size` alone is greater than `pool->limit`
  MEM_MALLOC_FAILED = 4    ///< the heap refuses the block
};

/// A budget of bytes. Made by `MemPoolNew`; the caller owns it.
struct MemPool {
  int limit;  ///< in bytes; 2147483647 means no limit
  int used;   ///< the sizes of all live blocks of all lists that share the pool
};

struct MemException;

/// Handles an exception; returns non-zero to go on, zero to give up.
typedef unsigned short (*MemExceptionHandler)(MemException* exception);

/// One row of a list's table.
///
/// The row is empty while `address` is null. Then the other fields are 0, except `parent`, which is
/// -1, and `excluded`, which has no meaning.
struct MemEntry {
  void* address;            ///< the block
  int size;                 ///< as requested; what the pool is charged
  int total_size;           ///< `size` and the sizes of the children, not of grandchildren
  void* key;                ///< the owner of the block ("object" in the trace); never dereferenced
  void** back_ptr;          ///< where the owner keeps `address`
  unsigned short excluded;  ///< 1 while the removals may not choose it
  int sequence;             ///< serial number, counted from 1 over all lists; may wrap
  int parent;               ///< index of the entry whose block `back_ptr` lies in; -1 for none
};

/// A table of blocks. Made by `MemListNew`; the caller owns it.
struct MemList {
  int n_entries;  ///< rows of the table, a multiple of 16; never fewer than before
  int n_used;     ///< rows with a block
  MemPool* pool;  ///< charged for the blocks; owned by the caller, and outlives the list
  MemExceptionHandler exception_handler;  ///< called when an allocation can't go ahead
  MemEntry* entries;  ///< owned by the list; a block keeps its index as long as it lives
};

/// The allocation that can't go ahead, as its handler sees it.
struct MemException {
  int code;       ///< `MEM_POOL_OVERFLOW` to `MEM_MALLOC_FAILED`
  MemList* list;  ///< the list that allocates
  void* key;      ///< the key of the request; the default object if the caller passed 0
  int size;       ///< of the request, in bytes
};

/// Turns the trace on: while it isn't 0, the functions of this header print each step to standard
/// output.
///
/// A line that starts with "**" reports a refusal or failure. Set it from the program or from a
/// debugger; the library never writes it.
ZELVAN_C_API int mem_trace;

/// Returns a new pool of `limit` bytes, unlimited if that is 0 or less; null if the heap refuses.
ZELVAN_C_API MemPool* MemPoolNew(int limit);

/// Frees `*pool` and sets it to null; does nothing if it is null.
/// Requires: `pool` is not null, and no list uses the pool any more.
ZELVAN_C_API void MemPoolDelete(MemPool** pool);

/// Returns a new list with a table of 16 empty rows; null if the heap refuses.
/// Requires: `pool` and `handler` are not null.
ZELVAN_C_API MemList* MemListNew(MemPool* pool, MemExceptionHandler handler);

/// Clears the list as `MemListClear` does, frees it and sets `*list` to null; does nothing if it
/// is null. If it was the default list, no list is the default afterwards.
///
/// Blocks whose release is refused stay allocated. Their owners then pass them to `free`; the pool
/// stays charged for them. Requires: `list` is not null.
ZELVAN_C_API void MemListDelete(MemList** list);

/// Allocates a block of `size` bytes for `key` and stores its address in `*back_ptr`.
///
/// A null `list` or a `key` of 0 means the default. Without any list it is a plain `malloc`, and no
/// pool is charged. The table grows by 16 rows when it is full; a block takes the free row of
/// lowest index.
///
/// Returns `MEM_SUCCESS` or the reason why it failed. After a failure `*back_ptr`, the pool and the
/// blocks of the list are as before, apart from what handlers did. Exceptions come in the order
/// `MEM_POOL_TOO_SMALL`, `MEM_TABLE_FAILED`, `MEM_POOL_OVERFLOW`, `MEM_MALLOC_FAILED`, each at
/// most once. If the handler returns non-zero,
///
/// - the limit of the pool is not checked again. The block is charged even above the limit, but
///   never above 2147483647 bytes: there the result is `MEM_POOL_OVERFLOW`;
/// - a request that the heap refused is repeated once, and fails if it is refused again;
/// - a table that the handler itself has filled grows again. If the heap refuses that, the result
///   is `MEM_TABLE_FAILED`, without a further exception;
/// - the allocation still fails if the handler released the block of this list that holds
///   `back_ptr`.
///
/// A negative `size` is one that the heap refuses. Requires: `back_ptr` is not null.
ZELVAN_C_API int MemAllocate(MemList* list, int size, void* key, void** back_ptr);

/// Returns 1 if the pool has `size` bytes left and the table a free row, else 0.
///
/// The result is a hint. It is 0 for a full table, which `MemAllocate` would grow. It can be 1 for
/// a block that the heap refuses, and for a negative size, which `MemAllocate` refuses. Requires:
/// `list` is not null.
ZELVAN_C_API unsigned short MemAvailable(MemList* list, int size);

/// Sets the list that null means in `MemAllocate`, `MemFree` and `MemSetPointer`.
///
/// With null, as at the start, there is no default list.
ZELVAN_C_API void MemSetDefaultList(MemList* list);

/// Sets the key that 0 means in `MemAllocate`; 0 at the start.
ZELVAN_C_API void MemSetDefaultObject(void* object);

/// Releases a block: frees it, credits its pool and writes null into its owner's pointer.
///
/// The release may be refused, see the top of this file. A null address does nothing. A null `list`
/// means the default. An address that the list doesn't know, or any address if there is no list,
/// is passed to `free`: so never pass a block of another list.
ZELVAN_C_API void MemFree(MemList* list, void* address);

/// Makes `*back_ptr` the owner's pointer to the block at `address`, in place of the earlier
/// pointer.
///
/// Stores the address in `*back_ptr` now; a later release writes null there. The earlier pointer
/// keeps its value. The block becomes the child of the block that `back_ptr` lies in, and stops
/// being the child of any other.
///
/// A null `list` means the default. Does nothing if there is no list, or if `address` is null or
/// unknown to the list. Requires: `back_ptr` is not null.
ZELVAN_C_API void MemSetPointer(MemList* list, void* address, void** back_ptr);

/// Releases all blocks of the list in one pass; children before their parent.
///
/// A block whose release is refused stays. Of three generations all stay: the middle block is
/// refused since it has a child, then so is the top one, and the lowest could only go with its
/// parent. Requires: `list` is not null.
ZELVAN_C_API void MemListClear(MemList* list);

/// Lets the removals choose any block of the list again. Requires: `list` is not null.
ZELVAN_C_API void MemListInitializeSearch(MemList* list);

/// Excludes the blocks whose key is now `object` from the removals, until the next
/// `MemListInitializeSearch`.
///
/// Calls for several objects add up. Requires: `list` is not null.
ZELVAN_C_API void MemListRemoveFromSearch(MemList* list, void* object);

/// Releases the largest block with its children, whose sizes count as its own.
///
/// Of equal sizes the lowest index is chosen. Blocks of size 0 and excluded blocks are never
/// chosen. Neither are children: they go with their parent, excluded or not. Returns 1 if there was
/// a block to choose, else 0.
///
/// A result of 1 doesn't mean that memory was freed. If the release is refused, the block stays,
/// and the next call chooses it again. A loop must watch `MemAvailable` or `pool->used`, and end
/// when neither changes. Requires: `list` is not null.
ZELVAN_C_API unsigned short MemListRemoveLargest(MemList* list);

/// Releases the smallest block with its children; see `MemListRemoveLargest`.
ZELVAN_C_API unsigned short MemListRemoveSmallest(MemList* list);

/// Releases the block that was allocated first, with its children; see `MemListRemoveLargest`.
///
/// The block may be a child; its parent then stays.
ZELVAN_C_API unsigned short MemListRemoveOldest(MemList* list);

static_assert(offsetof(MemPool, limit) == 0 && offsetof(MemPool, used) == 4 && sizeof(MemPool) == 8,
              "layout is interface");
static_assert(offsetof(MemEntry, address) == 0 && offsetof(MemEntry, size) == sizeof(void*) &&
                  offsetof(MemEntry, total_size) == sizeof(void*) + 4 &&
                  offsetof(MemEntry, key) == sizeof(void*) + 8 &&
                  offsetof(MemEntry, back_ptr) == 2 * sizeof(void*) + 8 &&
                  offsetof(MemEntry, excluded) == 3 * sizeof(void*) + 8 &&
                  offsetof(MemEntry, sequence) == 3 * sizeof(void*) + 12 &&
                  offsetof(MemEntry, parent) == 3 * sizeof(void*) + 16 &&
                  sizeof(MemEntry) == 4 * sizeof(void*) + 16,
              "layout is interface");
static_assert(offsetof(MemList, n_entries) == 0 && offsetof(MemList, n_used) == 4 &&
                  offsetof(MemList, pool) == 8 &&
                  offsetof(MemList, exception_handler) == 8 + sizeof(void*) &&
                  offsetof(MemList, entries) == 8 + 2 * sizeof(void*) &&
                  sizeof(MemList) == 8 + 3 * sizeof(void*),
              "layout is interface");
static_assert(offsetof(MemException, code) == 0 && offsetof(MemException, list) == sizeof(void*) &&
                  offsetof(MemException, key) == 2 * sizeof(void*) &&
                  offsetof(MemException, size) == 3 * sizeof(void*) &&
                  sizeof(MemException) == 4 * sizeof(void*),
              "layout is interface");
