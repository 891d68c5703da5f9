#include "common/picker.h"

#include <algorithm>

namespace example {

namespace {

// Counts the edges to the right of the point; one that goes through it is on its right, as it is
// for CPolygon.
bool has_odd_winding(CPolygon& ring, double x, double y) {
  bool is_odd = false;
  const DblPt* a = ring.end() - 1;
  for (const DblPt* b = ring.start(); b != ring.end(); a = b++) {
    const bool rises = b->y > y;
    if ((a->y > y) == rises) continue;
    const double turn = (b->x - a->x) * (y - a->y) - (x - a->x) * (b->y - a->y);
    if (rises ? turn >= 0.0 : turn <= 0.0) is_odd = !is_odd;
  }
  return is_odd;
}

// CPolygon fills by the non-zero rule and is fast. Only where it holds the point can the even-odd
// rule differ.
bool is_inside(CPolygon& ring, double x, double y) {
  return ring.isInside(x, y, 0.0) && has_odd_winding(ring, x, y);
}

}  // namespace

// The last country of which an odd number of rings holds the point.
template <class IsInside>
std::optional<std::size_t> Picker::index_by(IsInside is_inside_ring) {
  for (std::size_t i = entries_.size(); i-- > 0;) {
    auto& rings = entries_[i].rings;
    const auto n = std::count_if(rings.begin(), rings.end(), is_inside_ring);
    if (n % 2 == 1) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> Picker::index_at(double x, double y) {
  return index_by([=](Ring& ring) { return is_inside(ring.polygon, x, y); });
}

const std::string* Picker::name_of(std::optional<std::size_t> index) const {
  return index ? &entries_[*index].name : nullptr;
}

const std::string* Picker::at(double x, double y) { return name_of(index_at(x, y)); }

const std::string* Picker::at_place(double longitude, double latitude) {
  return name_of(index_by([=](Ring& ring) {
    const auto holds = [&](double x) { return is_inside(ring.polygon, x, latitude); };
    if (!ring.repeats) return holds(longitude);
    // Where copies of the ring overlap, they cancel out, as in the picture.
    return (holds(longitude) != holds(longitude + 360.0)) != holds(longitude - 360.0);
  }));
}

}  // namespace example
