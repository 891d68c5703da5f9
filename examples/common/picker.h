/// Which country lies under a point?
#pragma once

#include <zelvan/pick/polygon.h>

#include "common/countries.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace example {

/// Outlines that answer picks, in whatever coordinates they were added in.
///
/// The rule is that of the picture: within a country even-odd over its polygons, so that a hole
/// is a hole, and of two countries the later one is on top.
class Picker {
 public:
  template <class Point>
  void add(const std::string& name, const Polygons<Point>& outline) {
    Entry entry{name, {}};
    for_each_polygon(outline, [&](std::size_t first, std::size_t count) {
      CPolygon polygon(static_cast<unsigned>(count));
      for (std::size_t i = 0; i < count; ++i) {
        polygon.set(static_cast<int>(i), outline.points[first + i].x, outline.points[first + i].y);
      }
      entry.polygons.push_back(polygon);
    });
    entries_.push_back(std::move(entry));
  }

  /// The country at the point, counted in the order in which they were added; nothing where there
  /// is none.
  std::optional<std::size_t> index_at(double x, double y);

  /// Its name; null where there is none. The name is the picker's.
  const std::string* at(double x, double y);

 private:
  struct Entry {
    std::string name;
    std::vector<CPolygon> polygons;
  };
  std::vector<Entry> entries_;
};

}  // namespace example
