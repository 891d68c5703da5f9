#include "common/picker.h"

#include <algorithm>
#include <new>

namespace example {

void Picker::prepare() {
  odd_.clear();
  if (index_) return;
  const drw_pset_t set = {static_cast<int>(polygons_.points.size()), polygons_.points.data(),
                          polygons_.edge_flags.data()};
  index_.emplace(set);
  if (!index_->isReady()) throw std::bad_alloc();
  numbers_.resize(origins_.size());
}

// Appends to `odd_` the country of each polygon that winds about the point an odd number of times.
// With `repeating_only`, skips polygons that don't repeat every 360 degrees.
void Picker::find_odd(double x, double y, bool repeating_only) {
  const int room = static_cast<int>(numbers_.size());
  const int n = index_->findPolygons(x, y, numbers_.data(), room);
  for (int i = 0; i < n; ++i) {
    const Origin& origin = origins_[static_cast<std::size_t>(numbers_[i])];
    if (repeating_only && !origin.repeats) continue;
    if (index_->windingNumber(numbers_[i], x, y) % 2 != 0) odd_.push_back(origin.country);
  }
}

// Returns, of the countries that are in `odd_` an odd number of times, the one drawn last: a point
// is inside a country if an odd number of its polygons cover it.
std::optional<std::size_t> Picker::top_country() {
  std::sort(odd_.begin(), odd_.end());
  while (!odd_.empty()) {
    const std::size_t last = odd_.back();
    const auto first = std::lower_bound(odd_.begin(), odd_.end(), last);
    if ((odd_.end() - first) % 2 == 1) return last;
    odd_.erase(first, odd_.end());
  }
  return std::nullopt;
}

std::optional<std::size_t> Picker::index_at(double x, double y) {
  prepare();
  find_odd(x, y, false);
  return top_country();
}

const std::string* Picker::name_of(std::optional<std::size_t> index) const {
  return index ? &names_[*index] : nullptr;
}

const std::string* Picker::at(double x, double y) { return name_of(index_at(x, y)); }

// A map in degrees repeats every 360 degrees. Where a polygon overlaps its own repetition, both
// cancel out, as in the picture, which is filled by the even-odd rule.
const std::string* Picker::at_place(double longitude, double latitude) {
  prepare();
  find_odd(longitude, latitude, false);
  find_odd(longitude + 360.0, latitude, true);
  find_odd(longitude - 360.0, latitude, true);
  return name_of(top_country());
}

}  // namespace example
