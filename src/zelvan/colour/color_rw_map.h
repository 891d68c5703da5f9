/// Lists of pens of a colour table: those in read-write use, and from them the others.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// Pen numbers, in a block that the list owns. The caller fills it through the fields.
///
/// A size of 0 or less makes an empty list; so does a heap that refuses.
class ColorRWMap {
 public:
  unsigned int rw_size;   ///< pens of the table, and room in `rw_list`
  unsigned int rw_count;  ///< pens in use in `rw_list`
  unsigned int* rw_list;  ///< of `malloc`, freed by the destructor; null in an empty list

  /// No pens, room for `size`.
  ZELVAN_API explicit ColorRWMap(int size);

  /// Not to be had: two lists would free one block.
  ColorRWMap(const ColorRWMap&) = delete;

  /// Copies the fields as they are, so that both objects hold one block: set `rw_list` of one
  /// to null before it is destroyed. The block held so far is left to the caller.
  ZELVAN_API ColorRWMap& operator=(const ColorRWMap& other);

  /// Frees the block.
  ZELVAN_API ~ColorRWMap();

  /// Fills `*target` with the lowest pens that this list doesn't hold, but for the topmost
  /// `reserved`: its `rw_size` less this list's `rw_count` less `reserved` of them, none if
  /// that is less than nothing and at most `rw_size`.
  ///
  /// Requires: `target` is another list and not null, and this one is in ascending order.
  ZELVAN_API void MakeRoList(ColorRWMap* target, int reserved);
};

static_assert(offsetof(ColorRWMap, rw_size) == 0 && offsetof(ColorRWMap, rw_count) == 4 &&
                  offsetof(ColorRWMap, rw_list) == 8 && sizeof(ColorRWMap) == 8 + sizeof(void*),
              "layout is interface");
