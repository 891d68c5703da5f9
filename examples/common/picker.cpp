#include "common/picker.h"

#include <algorithm>

namespace example {

const std::string* Picker::at(double x, double y) {
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
    const auto around =
        std::count_if(entry->polygons.begin(), entry->polygons.end(),
                      [&](CPolygon& polygon) { return polygon.isInside(x, y, 0.0); });
    if (around % 2 == 1) return &entry->name;
  }
  return nullptr;
}

}  // namespace example
