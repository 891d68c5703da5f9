#include <zelvan/colour/color_map_functions.h>
#include <zelvan/colour/color_xfm.h>

ColorMap* zelvan_new_color_map(int size, int max_value, const int* rgb) {
  if (rgb == nullptr) return ColOpen(size, max_value);
  return static_cast<ColorMap*>(ColNewColorMap(size, max_value, const_cast<int*>(rgb)));
}

void zelvan_delete_color_map(ColorMap* map) { ColDeleteColorMap(map); }

int zelvan_set_color(ColorMap* map, int index, const char* text) {
  return map->SetIndex(index, text);
}

int zelvan_set_named_color(ColorMap* map, int index, const char* name) {
  ColorRGB color;
  const bool has_index = index >= 0 && static_cast<unsigned int>(index) < map->map_size;
  if (!has_index || !color.FindName(const_cast<char*>(name))) return 0;
  map->SetMap(index, &color);
  return 1;
}
