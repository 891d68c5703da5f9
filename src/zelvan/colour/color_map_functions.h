/// Functions with C linkage that make, fill and release colour maps.
///
/// The rules of `ColorMap` hold, also those for threads: see color_map.h. Requires: no null
/// pointer, except where a comment allows one.
#pragma once

#include <zelvan/colour/color_map.h>
#include <zelvan/export.h>

/// Returns a new map of `size` entries on the scale `max_value`; null if the heap refuses.
///
/// `rgb` holds 3 * `size` numbers: red, green and blue of each entry in turn. It is copied, and may
/// be null for black entries. A `size` of 0 or less makes an empty map. Release the map with
/// `zelvan_delete_color_map`.
ZELVAN_C_API ColorMap* zelvan_new_color_map(int size, int max_value, const int* rgb);

/// Releases a map from `zelvan_new_color_map` or `ColOpen`, and its entries. Null does nothing.
ZELVAN_C_API void zelvan_delete_color_map(ColorMap* map);

/// Sets entry `index` to the colour that `text` describes, as `ColorMap::SetIndex` does.
///
/// The texts are those of `ColorRGB::SetValue`, such as "RGB 1 0.5 0" and "HSV 240 1 1". Channels
/// are on the scale 255, whatever the map's is. Returns 1, or 0 with the entry as it was: for an
/// `index` that the map doesn't have, a null `text`, or a `text` that `SetValue` refuses.
ZELVAN_C_API int zelvan_set_color(ColorMap* map, int index, const char* text);

/// Sets entry `index` to the colour of that name, one of those that `ColorRGB::FindName` knows.
///
/// Channels are on the scale 255, whatever the map's is. Returns 1, or 0 with the entry as it was:
/// for an `index` that the map doesn't have, a null or an unknown name.
ZELVAN_C_API int zelvan_set_named_color(ColorMap* map, int index, const char* name);
