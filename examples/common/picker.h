/// Which country lies under a point?
#pragma once

#include <zelvan/pick/polygon.h>

#include "common/countries.h"
#include "common/globe.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace example {

/// Outlines that answer picks, in whatever coordinates they were added in.
///
/// The rule is that of the picture: even-odd over all polygons of a country, so that a hole is a
/// hole and what a ring winds about twice is outside, and of two countries the later is on top.
class Picker {
 public:
  template <class Point>
  void add(const std::string& name, const Polygons<Point>& outline) {
    Entry entry{name, {}};
    for_each_polygon(outline, [&](std::size_t first, std::size_t count) {
      Ring ring{CPolygon(static_cast<unsigned>(count)), true};
      for (std::size_t i = 0; i < count; ++i) {
        const Point& p = outline.points[first + i];
        ring.polygon.set(static_cast<int>(i), p.x, p.y);
        ring.repeats = ring.repeats && is_longitude(p.x);
      }
      entry.rings.push_back(std::move(ring));
    });
    entries_.push_back(std::move(entry));
  }

  /// The country at the point, counted in the order in which they were added; nothing where there
  /// is none.
  std::optional<std::size_t> index_at(double x, double y);

  /// Its name; null where there is none. The name is the picker's.
  const std::string* at(double x, double y);

  /// Returns the name of the country at a place of the globe, or null. Of outlines in
  /// degrees, those a turn to the east or west of the place count as well.
  const std::string* at_place(double longitude, double latitude);

 private:
  struct Ring {
    CPolygon polygon;
    bool repeats;  // every 360 degrees of longitude
  };
  struct Entry {
    std::string name;
    std::vector<Ring> rings;
  };

  template <class IsInside>
  std::optional<std::size_t> index_by(IsInside is_inside);
  const std::string* name_of(std::optional<std::size_t> index) const;

  std::vector<Entry> entries_;
};

}  // namespace example
