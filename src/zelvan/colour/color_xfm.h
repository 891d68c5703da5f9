/// Tables that translate the pens of one colour map into those of another, and flat functions
/// over maps and tables.
///
/// Threads: a translation searches the target map, see color_map.h; a table belongs to one
/// thread at a time.
#pragma once

#include <zelvan/colour/color_map.h>
#include <zelvan/export.h>

#include <cstddef>

/// A table with the closest pen of a target map for each pen of a source map, and counts of how
/// close they are.
///
/// Each count is a number of source pens: those whose distance to their target pen, as reported by
/// `GetClosestColor`, is in the range named. Source pen 0 is not counted, nor are pens at a
/// distance above 31.
///
/// A size of 0 or less makes an empty table; so does a request that the heap refuses.
class ColorXfm {
 public:
  unsigned int xfm_size;    ///< pens in the table
  unsigned int* xfm_table;  ///< from `malloc`, freed by the destructor; null in an empty table
  unsigned int hist_exact;  ///< source pens at distance 0
  unsigned int hist_3;      ///< at distance 1 to 3
  unsigned int hist_7;      ///< at distance 4 to 7
  unsigned int hist_15;     ///< at distance 8 to 15
  unsigned int hist_31;     ///< at distance 16 to 31

  /// Makes a table that translates each of `size` pens into pen 0; all counts are 0.
  ZELVAN_API explicit ColorXfm(int size);

  /// Deleted: both tables would free the same block.
  ColorXfm(const ColorXfm&) = delete;

  /// Copies the fields, so that both objects hold the same block: set `xfm_table` of one to null
  /// before it is destroyed. The old block is not freed; the caller frees it.
  ZELVAN_API ColorXfm& operator=(const ColorXfm& other);

  /// Frees the block.
  ZELVAN_API ~ColorXfm();

  /// Finds the closest pen of `*target` for each pen of `*source`, and counts anew.
  ///
  /// Unset entries of the source are searched for like any other. If the source has fewer pens than
  /// the table, the rest of the table keeps its translations. If it has more, the surplus pens are
  /// ignored.
  ///
  /// Requires: no null pointer.
  ZELVAN_API void MapColors(ColorMap* source, ColorMap* target);

  /// Returns the translation of `pen`; for a pen beyond the table, that of its last pen; 0 if the
  /// table is empty.
  ZELVAN_API unsigned int DoColorXfm(unsigned int pen);
};

/// Returns a new map of `size` black entries on the scale `max_value`; null if the heap refuses.
///
/// It is empty if `size` is 0 or less. Release it with `ColDeleteColorMap`.
ZELVAN_C_API ColorMap* ColOpen(int size, int max_value);

/// Returns a new table that translates each of `size` pens into pen 0; null if the heap refuses.
///
/// It is empty if `size` is 0 or less. Release it with `ColCloseXfm`.
ZELVAN_C_API ColorXfm* ColOpenXfm(int size);

/// Releases `**xfm` with its block; does nothing if `*xfm` is null. The caller's pointer is not
/// changed. Requires: `xfm` is not null.
ZELVAN_C_API void ColCloseXfm(ColorXfm** xfm);

/// Calls `map->GetClosestColor(target, distance, 1)`: always a fresh search.
/// Requires: no null pointer.
ZELVAN_C_API int ColGetClosestColor(ColorRGB* target, ColorMap* map, int* distance);

/// Calls `xfm->MapColors(source, target)`. Requires: no null pointer.
ZELVAN_C_API void ColMapColors(ColorMap* source, ColorMap* target, ColorXfm* xfm);

static_assert(offsetof(ColorXfm, xfm_size) == 0 && offsetof(ColorXfm, xfm_table) == sizeof(void*) &&
                  offsetof(ColorXfm, hist_exact) == 2 * sizeof(void*) &&
                  offsetof(ColorXfm, hist_3) == 2 * sizeof(void*) + 4 &&
                  offsetof(ColorXfm, hist_7) == 2 * sizeof(void*) + 8 &&
                  offsetof(ColorXfm, hist_15) == 2 * sizeof(void*) + 12 &&
                  offsetof(ColorXfm, hist_31) == 2 * sizeof(void*) + 16 &&
                  sizeof(ColorXfm) == 3 * sizeof(void*) + 16,
              "layout is interface");
