#include <zelvan/colour/color_xfm.h>
#include <zelvan/colour/detail/closest_index.h>

#include <algorithm>
#include <cstdlib>
#include <new>

ColorXfm::ColorXfm(int size)
    : xfm_size(0), xfm_table(nullptr), hist_exact(0), hist_3(0), hist_7(0), hist_15(0), hist_31(0) {
  if (size <= 0) return;
  xfm_table =
      static_cast<unsigned int*>(std::calloc(static_cast<std::size_t>(size), sizeof *xfm_table));
  if (xfm_table != nullptr) xfm_size = static_cast<unsigned int>(size);
}

ColorXfm& ColorXfm::operator=(const ColorXfm& other) = default;

ColorXfm::~ColorXfm() { std::free(xfm_table); }

void ColorXfm::MapColors(ColorMap* source, ColorMap* target) {
  hist_exact = hist_3 = hist_7 = hist_15 = hist_31 = 0;
  const unsigned int count = std::min(xfm_size, source->map_size);
  const zelvan::ClosestIndex index(*target, count);
  const zelvan::Closest none = zelvan::closest_to_beat(*target);
  for (unsigned int pen = 0; pen < count; ++pen) {
    const ColorRGB& color = source->colors[pen];
    int distance;
    const int closest = zelvan::closest_answer(*target, color, index.find(color, none), &distance);
    xfm_table[pen] = static_cast<unsigned int>(closest);
    if (pen == 0) continue;
    if (distance == 0) {
      ++hist_exact;
    } else if (distance <= 3) {
      ++hist_3;
    } else if (distance <= 7) {
      ++hist_7;
    } else if (distance <= 15) {
      ++hist_15;
    } else if (distance <= 31) {
      ++hist_31;
    }
  }
}

unsigned int ColorXfm::DoColorXfm(unsigned int pen) {
  return xfm_size == 0 ? 0 : xfm_table[std::min(pen, xfm_size - 1)];
}

ColorMap* ColOpen(int size, int max_value) {
  ColorMap* const map = new (std::nothrow) ColorMap(size, max_value);
  if (map != nullptr && map->colors == nullptr && size > 0) {
    delete map;
    return nullptr;
  }
  return map;
}

ColorXfm* ColOpenXfm(int size) {
  ColorXfm* const xfm = new (std::nothrow) ColorXfm(size);
  if (xfm != nullptr && xfm->xfm_table == nullptr && size > 0) {
    delete xfm;
    return nullptr;
  }
  return xfm;
}

void ColCloseXfm(ColorXfm** xfm) { delete *xfm; }

int ColGetClosestColor(ColorRGB* target, ColorMap* map, int* distance) {
  return map->GetClosestColor(target, distance, 1);
}

void ColMapColors(ColorMap* source, ColorMap* target, ColorXfm* xfm) {
  xfm->MapColors(source, target);
}
