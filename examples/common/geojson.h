/// Countries from GeoJSON (RFC 7946).
#pragma once

#include "common/countries.h"

#include <string>

namespace example {

/// Reads the polygons of a FeatureCollection, a Feature or a bare geometry.
///
/// Each feature that has polygons becomes a country, named after its property `name` (or
/// `NAME`, `ADMIN`, or its id). Points and lines are passed over. A ring may come closed, as
/// the standard has it, or open.
///
/// Throws `Error`, which names the file and the place in it, for a file that can't be read or
/// is no JSON, a ring of fewer than four positions, a coordinate that is no finite number of
/// at most a thousand million, and a file without any polygon.
World read_geojson(const std::string& path);

}  // namespace example
