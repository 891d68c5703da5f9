/// Countries and their outlines: what all the map programs work on.
#pragma once

#include <zelvan/transforms/records.h>

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace example {

/// Polygons end to end, with an edge flag for each vertex: the arrays of a `drw_pset_t` or a
/// `drw_dpset_t`, owned. A hole is one more polygon.
template <class Point>
struct Polygons {
  std::vector<Point> points;
  std::vector<int> edge_flags;  ///< one `drw_edge_flag` for each point

  bool empty() const { return points.empty(); }
};

using MapPolygons = Polygons<real_pt_t>;    ///< x is the longitude, y the latitude, in degrees
using DevicePolygons = Polygons<int_pt_t>;  ///< in device units, y down; see view.h

/// Calls `visit(first, count)` for each polygon: its vertices are those from `first` on.
template <class Point, class Visit>
void for_each_polygon(const Polygons<Point>& polygons, Visit visit) {
  std::size_t first = 0;
  for (std::size_t i = 0; i < polygons.edge_flags.size(); ++i) {
    if (polygons.edge_flags[i] < drw_edge_close_invisible) continue;
    visit(first, i + 1 - first);
    first = i + 1;
  }
}

/// Appends a polygon, all of its edges visible. Requires: at least one vertex; the first is not
/// repeated at the end.
void add_polygon(MapPolygons& polygons, std::span<const real_pt_t> ring);

/// Makes edges along the antimeridian and the poles invisible, from the polygon on that begins at
/// vertex `start`: a flat map is cut open there, and there is no coast.
void hide_cuts(MapPolygons& polygons, std::size_t start = 0);

/// What carries one name: a country as a rule, else any feature of the data.
struct Country {
  std::string name;
  MapPolygons outline;  ///< filled by the even-odd rule
};

/// Countries in drawing order: of two that overlap the later one is on top.
class World {
 public:
  virtual ~World() = default;
  virtual std::size_t size() const = 0;
  virtual const std::string& name(std::size_t i) const = 0;

  /// What this gives stays until its next call: see country_cache.h.
  virtual const MapPolygons& outline(std::size_t i) = 0;
};

/// A world that is all in memory.
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
