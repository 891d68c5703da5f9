/// Rings of longitudes and latitudes, laid flat.
#pragma once

#include "common/countries.h"

#include <cmath>
#include <vector>

namespace example {

/// True for a longitude in degrees: within one and a half turns. Anything beyond is in some other
/// measure, in which the map does not repeat.
inline bool is_longitude(double x) { return std::abs(x) <= 540.0; }

/// Appends a ring that may cross the antimeridian, where longitudes jump from 180 to -180.
///
/// A step of more than 180 degrees of longitude is taken the short way round: what follows moves
/// by whole turns, so a ring from 170 to -170 becomes one from 170 to 190. A step of a whole turn
/// stays, as the edge of a world map has it. A ring that runs once round the globe holds the pole
/// that its latitudes are nearer to on average; it is closed over that pole by invisible edges. A
/// ring in some other measure stays as it is.
///
/// Requires: at least one vertex; the first is not repeated at the end.
void add_ring_of_globe(MapPolygons& polygons, std::vector<real_pt_t> ring);

}  // namespace example
