#include "common/picker.h"

#include <algorithm>

namespace example {

std::optional<std::size_t> Picker::index_at(double x, double y) {
  for (std::size_t i = entries_.size(); i-- > 0;) {
    std::vector<CPolygon>& polygons = entries_[i].polygons;
    const auto around = std::count_if(polygons.begin(), polygons.end(), [&](CPolygon& polygon) {
      return polygon.isInside(x, y, 0.0);
    });
    if (around % 2 == 1) return i;
  }
  return std::nullopt;
}

const std::string* Picker::at(double x, double y) {
  const auto index = index_at(x, y);
  return index ? &entries_[*index].name : nullptr;
}

}  // namespace example
