/// Tables of colours, and the search for the entry closest to a colour. A *pen* is the index of an
/// entry.
///
/// The channels of a map's entries run from 0 to the map's `max_value`. An entry whose red is
/// negative is an unset slot: searches for a close colour skip it.
///
/// Threads: all maps share one cache, without a lock. `GetClosestColor` stores the colour and the
/// answer of each search there. So do `ColGetClosestColor`, `ColorXfm::MapColors` and the three
/// operations of `ColorValue` that set its pen by a search; they search with `fresh` 1.
///
/// With `fresh` 1 the cache is written but not read, so the result is right whatever other threads
/// do. Two such searches at once are formally a data race, and can leave a mixture in the cache. So
/// use `fresh` 0, which reads the cache, only if the program never lets two threads search at once.
///
/// `SetIndex` with three arguments overwrites the record that `str_parse` returns, of which there
/// is only one: only one thread at a time may call either. All else may be called from many threads
/// on one map, as long as no thread changes the map.
#pragma once

#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/color_rw_map.h>
#include <zelvan/export.h>

#include <cstddef>

/// Image types of `ColorMap::GetValue`, by their bits per pixel.
enum ImageType : int {
  ImageType1Bit = 1,    ///< takes a packed colour as the value, as 32 bits do
  ImageType8Bit = 8,    ///< takes a pen
  ImageType32Bit = 32,  ///< takes a packed colour
};

/// Orders of the channels in a packed colour. Any other value acts like `RGBOrderBlueHigh`.
enum RGBOrder : int {
  RGBOrderBlueHigh = 0,  ///< red in the bits 0-7, green in 8-15, blue in 16-23
  RGBOrderRedHigh = 1,   ///< blue in the bits 0-7, green in 8-15, red in 16-23
};

/// A table of colours, which owns its entries.
///
/// A size of 0 or less makes an empty map. If the heap refuses, a constructor or an assignment
/// makes an empty map, too; neither throws.
class ColorMap {
 public:
  unsigned int map_size;   ///< entries in `colors`
  unsigned int map_count;  ///< equal to `map_size`; `Identical` and `CopyColorMap` use it
  unsigned int max_value;  ///< the scale: the largest value of a channel, often 255
  ColorRGB* colors;        ///< the entries, allocated by `new`; null in an empty map

  /// Makes a map of `size` black entries on the scale `max_value0`.
  ZELVAN_API ColorMap(int size, int max_value0);

  /// Makes a map of `size` entries from `rgb`: red, green and blue of each in turn, copied.
  /// Requires: 3 * `size` numbers.
  ZELVAN_API ColorMap(int size, int max_value0, int* rgb);

  /// Copies scale and entries. An assignment frees the old entries.
  ZELVAN_API ColorMap(const ColorMap& other);
  ZELVAN_API ColorMap& operator=(const ColorMap& other);
  ZELVAN_API ~ColorMap();

  // ---- setting entries

  /// Sets entry `index` as `ColorRGB::SetValue(text)` does, and returns its result; 0 if the map
  /// has no such entry. The channels are on the scale 255, whatever the map's is. The record of
  /// `str_parse` is not used.
  ZELVAN_API unsigned short SetIndex(int index, const char* text);

  /// Sets entry `index` as `SetIndex(index, text)` does, but parses with `str_parse`: it overwrites
  /// the record and the text that `str_parse` returned before. `reserved` is ignored; pass 0.
  ZELVAN_API unsigned short SetIndex(int index, unsigned short reserved, char* text);

  /// Sets entry `index` as `ColorRGB::SetRGBColor` does, and returns its result; 0 if the map has
  /// no such entry. Channels of 0 to 1 are converted to the scale 255, whatever the map's scale is.
  ZELVAN_API unsigned short SetRGBIndex(int index, float red, float green, float blue);

  /// Copies the colour into entry `index`. Requires: 0 <= `index` < `map_size`, and `color` is not
  /// null.
  ZELVAN_API void SetMap(int index, ColorRGB* color);

  // ---- comparing and copying

  /// Copies scale and entries into `*target` if both maps have the same number of entries;
  /// otherwise does nothing. Requires: no null pointer.
  ZELVAN_API void CopyColorMap(ColorMap* target);

  /// Returns 1 if both maps have equal entries, else 0. The scale is not compared. Requires: no
  /// null pointer.
  ZELVAN_API unsigned short Identical(ColorMap* other);

  // ---- searching

  /// Returns the index of the entry closest to `*target`; of equally close ones the lowest index.
  ///
  /// Closest is the entry with the smallest sum of the squared differences of the channels,
  /// computed in `float`. Entry 0 is not searched. 0 is returned only if all other entries are
  /// unset or farther away than black is from white. (With a `max_value` above 37837 that bound
  /// exceeds 32 bits and wraps.)
  ///
  /// `*distance` becomes the mean of the three absolute differences to the entry returned, also if
  /// that is entry 0. It is rounded, so it may be 0 for another colour: one that differs by 1 in
  /// one channel. In an empty map the index is 0 and the distance is the largest `int`.
  ///
  /// With `fresh` 0, a search for the same colour as the last search returns the index and distance
  /// of that search at once, even if it was in another map or the entries have changed since.
  /// Before the first search, the last colour is black, with index 0 and distance 0.
  ///
  /// Requires: no null pointer.
  ZELVAN_API int GetClosestColor(ColorRGB* target, int* distance, unsigned short fresh);

  /// Returns the index of the closest entry that is not equal to `*target`; of equally close ones
  /// the lowest index.
  ///
  /// Closest is the entry with the smallest sum of the squared differences of the channels. Entry 0
  /// is searched, too; unset entries are not. Returns 0 if there is no such entry, or if all are
  /// farther away than black is from white. The cache is neither read nor written.
  ///
  /// The sum is a 32-bit integer that wraps, so the result is right only for a `max_value` up to
  /// 26754 and channels on that scale. Requires: no null pointer.
  ZELVAN_API int GetSimilarColor(ColorRGB* target);

  /// Returns 1 if one of the map's first `list->rw_count` entries is equal or similar to the
  /// colour, else 0. If the map has fewer entries, all are compared.
  ///
  /// An entry is similar if each channel differs by less than `tolerance`, and the three absolute
  /// differences add up to less than 3 * `max_value`. Channels and tolerance are on the map's
  /// scale. Unset entries count like any other. Of `list` only the count is used: the pens in it
  /// are not read. Requires: no null pointer.
  ZELVAN_API unsigned short ColxGetReadOnlyColor(ColorRWMap* list, int red, int green, int blue,
                                                 int tolerance);

  // ---- export

  /// Returns the pixel value of pen `index` in an image of that type. For `ImageType8Bit` that is
  /// `index` itself. For `ImageType1Bit` and `ImageType32Bit` it is the packed colour of the entry,
  /// its channels in `order`. They are neither scaled nor masked: a channel outside 0 to 255 can
  /// change bits of the others.
  ///
  /// If the map has no such pen, the result is `index` for `ImageType8Bit` and 1 for the other two
  /// types. It is 1 for an unknown type.
  ///
  /// The function may be called through a null pointer: it then returns 1 for `index` 0, else 0,
  /// whatever the type. (A compiler may conclude from the call that the pointer isn't null, and
  /// drop a test for null that comes after it.)
  ZELVAN_API unsigned int GetValue(ImageType type, RGBOrder order, int index);
};

/// Returns a new `ColorMap`, made as by the constructor with three arguments; null if the heap
/// refuses the map or its entries. Release it with `ColDeleteColorMap`.
ZELVAN_API void* ColNewColorMap(int size, int max_value, int* rgb);

/// Releases a map of `ColNewColorMap` or of `ColOpen` (color_xfm.h), its entries with it. Null does
/// nothing.
ZELVAN_API void ColDeleteColorMap(void* map);

static_assert(offsetof(ColorMap, map_size) == 0 && offsetof(ColorMap, map_count) == 4 &&
                  offsetof(ColorMap, max_value) == 8 &&
                  offsetof(ColorMap, colors) == 8 + sizeof(void*) &&
                  sizeof(ColorMap) == 8 + 2 * sizeof(void*),
              "layout is interface");
