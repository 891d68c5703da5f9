/// Finds the country under a point.
#pragma once

#include <zelvan/pick/pick_index.h>

#include "common/countries.h"
#include "common/globe.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace example {

/// Outlines that answer picks, in the coordinates in which they were added.
///
/// The rule is that of the picture: even-odd over all polygons of a country. So a hole is outside,
/// and so is a region that a ring winds about twice. Where countries overlap, the later one is
/// found. The first pick after an addition builds an index of all outlines, which later picks use.
class Picker {
 public:
  template <class Point>
  void add(const std::string& name, const Polygons<Point>& outline) {
    for_each_polygon(outline, [&](std::size_t first, std::size_t count) {
      bool repeats = true;
      for (std::size_t i = first; i < first + count; ++i) {
        const Point& p = outline.points[i];
        polygons_.points.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
        polygons_.edge_flags.push_back(outline.edge_flags[i]);
        repeats = repeats && is_longitude(p.x);
      }
      origins_.push_back({names_.size(), repeats});
    });
    names_.push_back(name);
    index_.reset();
  }

  /// Returns the index of the country at the point, in the order of addition, or nothing.
  std::optional<std::size_t> index_at(double x, double y);

  /// Returns the name of the country at the point, which the picker owns, or null.
  const std::string* at(double x, double y);

  /// Returns the name of the country at a place of the globe, or null. Also finds outlines in
  /// degrees that lie 360 degrees to the east or west of the place.
  const std::string* at_place(double longitude, double latitude);

 private:
  struct Origin {
    std::size_t country;
    bool repeats;  ///< every 360 degrees of longitude
  };

  void prepare();
  void find_odd(double x, double y, bool repeating_only);
  std::optional<std::size_t> top_country();
  const std::string* name_of(std::optional<std::size_t> index) const;

  std::vector<std::string> names_;
  MapPolygons polygons_;         ///< of all countries
  std::vector<Origin> origins_;  ///< of each polygon
  std::optional<CPickIndex> index_;
  std::vector<int> numbers_;      ///< of polygons at the point; has room for all
  std::vector<std::size_t> odd_;  ///< for each polygon that winds about the point an odd number of
                                  ///< times: its country
};

}  // namespace example
