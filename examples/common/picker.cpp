#include "common/picker.h"

#include <algorithm>
#include <ranges>

namespace example {

const std::string* Picker::at(double x, double y) {
  for (Entry& entry : entries_ | std::views::reverse) {
    const auto around = std::ranges::count_if(
        entry.polygons, [&](CPolygon& polygon) { return polygon.isInside(x, y, 0.0); });
    if (around % 2 == 1) return &entry.name;
  }
  return nullptr;
}

}  // namespace example
