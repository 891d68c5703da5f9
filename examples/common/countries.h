/// Countries and their outlines, for all the map programs.
#pragma once

#include <zelvan/transforms/records.h>

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace example {

/// The arrays of a `drw_pset_t` or a `drw_dpset_t`: polygons one after the other, with an edge flag
/// for each vertex. A hole is one more polygon.
template <class Point>
struct Polygons {
  std::vector<Point> points;
  std::vector<int> edge_flags;  ///< one `drw_edge_flag` for each point

  bool empty() const { return points.empty(); }
};

using MapPolygons = Polygons<real_pt_t>;    ///< x is the longitude, y the latitude, in degrees
using DevicePolygons = Polygons<int_pt_t>;  ///< in device units, y down; see view.h

/// Calls `visit(first, count)` for each polygon; `first` is the index of its first vertex.
template <class Point, class Visit>
void for_each_polygon(const Polygons<Point>& polygons, Visit visit) {
  std::size_t first = 0;
  for (std::size_t i = 0; i < polygons.edge_flags.size(); ++i) {
    if (polygons.edge_flags[i] < drw_edge_close_invisible) continue;
    visit(first, i + 1 - first);
    first = i + 1;
  }
}

/// Appends a polygon whose edges are all visible. Requires: at least one vertex; the first is not
/// repeated at the end.
void add_polygon(MapPolygons& polygons, std::span<const real_pt_t> ring);

/// Makes the edges along the antimeridian and the poles invisible: a flat map is cut open there, so
/// they are no coast. Skips the polygons before the one whose first vertex has the index `start`.
void hide_cuts(MapPolygons& polygons, std::size_t start = 0);

/// A country, or any other feature of the data with a name.
struct Country {
  std::string name;     ///< not empty, without control characters
  MapPolygons outline;  ///< filled by the even-odd rule
};

/// Countries in drawing order: where two overlap, the later one is on top.
class World {
 public:
  virtual ~World() = default;
  virtual std::size_t size() const = 0;
  virtual const std::string& name(std::size_t i) const = 0;

  /// Returns the outline of a country. The reference is valid until the next call of `outline`.
  virtual const MapPolygons& outline(std::size_t i) = 0;
};

/// A world that is wholly in memory.
class LoadedWorld final : public World {
 public:
  explicit LoadedWorld(std::vector<Country> countries) : countries_(std::move(countries)) {}
  std::size_t size() const override { return countries_.size(); }
  const std::string& name(std::size_t i) const override { return countries_[i].name; }
  const MapPolygons& outline(std::size_t i) override { return countries_[i].outline; }

 private:
  std::vector<Country> countries_;
};

}  // namespace example
