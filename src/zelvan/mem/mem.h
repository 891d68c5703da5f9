/// Heap blocks that can be taken back from their owners.
///
/// A **pool** is a budget of bytes and nothing else: it only counts. A **list** is a table of
/// tracked blocks, charged to one pool; several lists may share a pool. For each block the table
/// knows who asked for it (the key), its size, and where the owner keeps the pointer to it (the
/// back pointer). So the library can take a block away at any moment: it frees the block and
/// writes null into the owner's pointer. An owner that finds null reads its data anew.
///
/// Blocks come from `malloc` one by one, without a header: the address is just what `malloc`
/// returned. All bookkeeping is in the table, and every look-up is a scan of it.
///
/// **Exceptions.** When an allocation can't simply go ahead, the list's handler is called. It may
/// make room and answer non-zero, go on; or answer zero, give up:
///
///     unsigned short evict_oldest(MemException* exception) {
///       MemList* list = exception->list;
///       if (exception->code == MEM_POOL_TOO_SMALL) return 0;  // not for what never fits
///       MemListInitializeSearch(list);
///       MemListRemoveFromSearch(list, exception->key);  // not from the one who asks
///       do {
///         const int before = list->n_used;
///         MemListRemoveOldest(list);
///         if (list->n_used == before) return 0;  // nothing left, or what is left stays
///       } while (MemAvailable(list, exception->size) == 0);
///       return 1;
///     }
///
/// The handler runs inside `MemAllocate` and may do with the list what it likes, allocate from it
/// included, but not delete it or its pool.
///
/// **Parents.** A block whose back pointer lies inside another block of the same list is that
/// block's child. A parent outlives its children: it is never released while it has one. Only
/// one level goes with a parent by itself (`MemListClear`, the removals), so of a child that has
/// children of its own, release these first.
///
/// **Release is refused** when the owner's pointer no longer holds the block's address, or the
/// block has a child. A refusal changes nothing and shows only in the trace.
///
/// *Requires*, throughout: a back pointer stays readable and writable until its block has been
/// released or moved to another one by `MemSetPointer`. So it must not lie in a block of another
/// list that may go first.
///
/// Threads: all lists share the defaults and the counter of serial numbers, so callers let only
/// one thread at a time into the family.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// What `MemAllocate` gives, and the `code` of an exception.
enum : int {
  MEM_SUCCESS = 0,         ///< the block is in the back pointer; never an exception
  MEM_POOL_OVERFLOW = 1,   ///< `pool->used + size` is greater than `pool->limit`
  MEM_TABLE_FAILED = 2,    ///< the table is full and the heap refuses a larger one
  MEM_POOL_TOO_SMALL = 3,  ///< `size` alone is greater than `pool->limit`
  MEM_MALLOC_FAILED = 4    ///< the heap refuses the block
};

/// A budget. From `MemPoolNew`, owned by whoever made it.
struct MemPool {
  int limit;  ///< in bytes; 2147483647 stands for none
  int used;   ///< the sizes of all live blocks of all lists that share the pool
};

struct MemException;

/// Answers an exception: non-zero to go on, zero to give up.
typedef unsigned short (*MemExceptionHandler)(MemException* exception);

/// One row of a list's table. It is empty while `address` is null, and then all else is 0, too,
/// but for `parent`, which is -1, and `excluded`, which counts for nothing then.
struct MemEntry {
  void* address;            ///< the block
  int size;                 ///< as asked for; what the pool is charged
  int total_size;           ///< `size` and the sizes of the children, not of theirs
  void* key;                ///< who owns the block ("object" in the trace); never looked into
  void** back_ptr;          ///< where the owner keeps `address`
  unsigned short excluded;  ///< 1 while the removals may not choose it
  int sequence;             ///< serial number, from 1 on over all lists
  int parent;               ///< index of the entry whose block `back_ptr` lies in; -1 for none
};

/// A table of blocks. From `MemListNew`, owned by whoever made it.
struct MemList {
  int n_entries;  ///< rows of the table, a multiple of 16; never fewer than before
  int n_used;     ///< rows with a block
  MemPool* pool;  ///< charged for the blocks; the caller's, and outlives the list
  MemExceptionHandler exception_handler;  ///< asked whenever an allocation can't go ahead
  MemEntry* entries;  ///< the list's; a block keeps its index for as long as it lives
};

/// What a handler is told.
struct MemException {
  int code;       ///< `MEM_POOL_OVERFLOW` to `MEM_MALLOC_FAILED`
  MemList* list;  ///< the list that allocates
  void* key;      ///< for whom; the default object if the caller gave none
  int size;       ///< how much
};

/// Turns the trace on: while it isn't 0, all that the family does is told on standard output, a
/// line a step. "**" opens a refusal or failure. Set it from the program or from a debugger; the
/// library never writes it.
ZELVAN_C_API int mem_trace;

/// A new pool of `limit` bytes, without a limit if that is 0 or less. Null if the heap refuses.
ZELVAN_C_API MemPool* MemPoolNew(int limit);

/// Frees `*pool` and sets it to null; does nothing if it is null.
/// Requires: `pool` is not null, and no list uses the pool any more.
ZELVAN_C_API void MemPoolDelete(MemPool** pool);

/// A new list with a table of 16 empty rows. Null if the heap refuses.
/// Requires: `pool` and `handler` are not null.
ZELVAN_C_API MemList* MemListNew(MemPool* pool, MemExceptionHandler handler);

/// Clears the list as `MemListClear` does, frees it and sets `*list` to null; does nothing if it
/// is null. If it was the default list, there is none any more.
///
/// Blocks that the clear had to leave stay allocated and with their owners, who give them to
/// `free`; the pool stays charged for them. Requires: `list` is not null.
ZELVAN_C_API void MemListDelete(MemList** list);

/// Gets a block of `size` bytes for `key` and stores its address in `*back_ptr`.
///
/// Null for `list` or 0 for `key` takes the default. With no list at all it is a plain `malloc`,
/// which no pool is charged for. The table grows by 16 rows when it is full, and a block takes
/// the row of lowest index that is free.
///
/// Gives `MEM_SUCCESS` or the reason for giving up; then `*back_ptr`, the pool and the blocks of
/// the list are as they were, but for what handlers have done. Exceptions come in the order
/// `MEM_POOL_TOO_SMALL`, `MEM_TABLE_FAILED`, `MEM_POOL_OVERFLOW`, `MEM_MALLOC_FAILED`, each at
/// most once. When the handler answers that the allocation shall go on,
///
/// - the limit of the pool is not looked at again: the block is charged even beyond it, though
///   never beyond 2147483647 bytes, where `MEM_POOL_OVERFLOW` is given all the same;
/// - what the heap has refused is asked for once more, and given up if it is refused again;
/// - if it has filled the table itself, the table grows again, and `MEM_TABLE_FAILED` is given,
///   without a further exception, when the heap refuses that;
/// - it is given up nevertheless if the handler has released the block of this list in which
///   `back_ptr` lies.
///
/// A negative `size` is one that the heap refuses. Requires: `back_ptr` is not null.
ZELVAN_C_API int MemAllocate(MemList* list, int size, void* key, void** back_ptr);

/// 1 if the pool has `size` bytes left and the table a free row, else 0. So a full table results in
/// 0, though `MemAllocate` would grow it. The heap isn't asked, which may still refuse the block,
/// and a negative size always fits. Requires: `list` is not null.
ZELVAN_C_API unsigned short MemAvailable(MemList* list, int size);

/// The list that null stands for in `MemAllocate`, `MemFree` and `MemSetPointer`. Null, as at
/// the start, for none.
ZELVAN_C_API void MemSetDefaultList(MemList* list);

/// The key that 0 stands for in `MemAllocate`; 0 at the start.
ZELVAN_C_API void MemSetDefaultObject(void* object);

/// Releases a block: gives it and its charge back and writes null into its owner's pointer.
/// Refusals as told above. A null address does nothing.
///
/// Null for `list` takes the default. An address that the list doesn't know, and any address
/// when there is no list, goes straight to `free`: so never pass a block of another list.
ZELVAN_C_API void MemFree(MemList* list, void* address);

/// Tells the list that the owner keeps the pointer to the block at `address` in `*back_ptr` from
/// now on, and stores it there. The old pointer is left as it is. The block becomes the child of
/// the block that `back_ptr` lies in, and no longer of an earlier one.
///
/// Null for `list` takes the default. Nothing happens, to `*back_ptr` neither, without a list or
/// with an address that is null or unknown to it. Requires: `back_ptr` is not null.
ZELVAN_C_API void MemSetPointer(MemList* list, void* address, void** back_ptr);

/// Releases the blocks of the list in one pass, each that has no parent behind its children.
/// What is refused stays: all of a chain of three generations, for one.
/// Requires: `list` is not null.
ZELVAN_C_API void MemListClear(MemList* list);

/// Lets the removals choose any block of the list again. Requires: `list` is not null.
ZELVAN_C_API void MemListInitializeSearch(MemList* list);

/// Keeps the removals from choosing a block that `object` owns now, until the next
/// `MemListInitializeSearch`. Calls for several objects add up. Requires: `list` is not null.
ZELVAN_C_API void MemListRemoveFromSearch(MemList* list, void* object);

/// Releases the largest block with its children, whose sizes count as its own. A tie goes to the
/// lowest index.
///
/// Blocks of size 0 and those taken out of the search are never chosen, nor are children, which
/// go with their parent, taken out or not. Gives 1 if there was a block to choose, else 0.
///
/// A 1 doesn't say that memory came back. A refused release, as told above, leaves the block
/// where it is, and the next call chooses it again. A loop must watch `MemAvailable` or
/// `pool->used`, and end when neither moves. Requires: `list` is not null.
ZELVAN_C_API unsigned short MemListRemoveLargest(MemList* list);

/// The same for the smallest block.
ZELVAN_C_API unsigned short MemListRemoveSmallest(MemList* list);

/// The same for the block that was allocated first, which may be a child: its parent then stays.
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
