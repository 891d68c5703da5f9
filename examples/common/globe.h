/// Rings of longitudes and latitudes, unwrapped onto a flat map.
#pragma once

#include "common/countries.h"

#include <cmath>
#include <vector>

namespace example {

/// True if a number can be a longitude in degrees: at most one and a half turns. A larger one has
/// some other unit, in which the map does not repeat.
inline bool is_longitude(double x) { return std::abs(x) <= 540.0; }

/// Appends a ring that may cross the antimeridian, where longitudes jump from 180 to -180.
///
/// A step of more than 180 degrees of longitude goes the short way round: the vertices after it
/// move by a whole turn, so a ring from 170 to -170 becomes one from 170 to 190. A step of a whole
/// turn or more stays, since the edge of a world map is such a step. A ring that runs once round
/// the globe contains the pole that it is nearer to on average, and is closed over it by invisible
/// edges. A ring with a number that is no longitude stays as it is.
///
/// Requires: at least one vertex; the first is not repeated at the end.
void add_ring_of_globe(MapPolygons& polygons, std::vector<real_pt_t> ring);

}  // namespace example
