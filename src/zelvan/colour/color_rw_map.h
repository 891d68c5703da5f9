/// Lists of pens of a colour table: those in read-write use, and the read-only rest.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// A list of pen numbers, in a block that the list owns. The caller fills it through the fields.
///
/// A size of 0 or less makes an empty list; so does a request that the heap refuses.
class ColorRWMap {
 public:
  unsigned int rw_size;   ///< number of pens in the colour table; as many fit into `rw_list`
  unsigned int rw_count;  ///< number of pens stored in `rw_list`
  unsigned int* rw_list;  ///< from `malloc`, freed by the destructor; null in an empty list

  /// Makes a list that holds no pens and has room for `size` of them.
  ZELVAN_API explicit ColorRWMap(int size);

  /// Deleted: both lists would free the same block.
  ColorRWMap(const ColorRWMap&) = delete;

  /// Copies the fields, so that both objects hold the same block: set `rw_list` of one to null
  /// before it is destroyed. The old block is not freed; the caller frees it.
  ZELVAN_API ColorRWMap& operator=(const ColorRWMap& other);

  /// Frees the block.
  ZELVAN_API ~ColorRWMap();

  /// Fills `*target` with the lowest pens that this list doesn't hold.
  ///
  /// `target->rw_count` becomes the number of pens stored: `target->rw_size - rw_count - reserved`,
  /// where `rw_count` is that of this list. A negative number becomes 0, one above
  /// `target->rw_size` becomes that. Pens are stored in ascending order. If `target->rw_size` is
  /// the size of the colour table, they are all pens that this list doesn't hold, except the
  /// topmost `reserved` ones.
  ///
  /// Requires: `target` is another list and not null, and this one is in ascending order.
  ZELVAN_API void MakeRoList(ColorRWMap* target, int reserved);
};

static_assert(offsetof(ColorRWMap, rw_size) == 0 && offsetof(ColorRWMap, rw_count) == 4 &&
                  offsetof(ColorRWMap, rw_list) == 8 && sizeof(ColorRWMap) == 8 + sizeof(void*),
              "layout is interface");
