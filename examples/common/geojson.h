/// Countries from GeoJSON (RFC 7946).
#pragma once

#include "common/countries.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace example {

/// Where in a file one thing with a name stands, to be read by itself.
struct Feature {
  std::size_t start;  ///< offset of its first byte
  std::size_t size;   ///< in bytes
  std::string place;  ///< its JSON pointer, for messages
};

/// Finds the features of a FeatureCollection, in order; anything else is one feature. `text` is
/// the content of the file at `path`.
///
/// Throws `Error`, which names the file and the place in it, for what is no JSON or nested deeper
/// than 64 levels, for a number beyond all finite ones, and for a FeatureCollection that holds
/// anything but Features. A place in a text that is no JSON has line and column; a file cut short
/// names its end.
std::vector<Feature> find_features(const std::string& path, std::string_view text);

/// Reads a Feature or a bare geometry; `text` is the feature's own. The outline is empty when there
/// are no polygons in it: points and lines are passed over.
///
/// The name is the property `name` (or `NAME`, `ADMIN`), or else the id. A ring may come closed,
/// as the standard has it, or open, and may cross the antimeridian: see globe.h. Throws `Error`,
/// which names the file and the place in it, for a ring of fewer than four positions, for a
/// coordinate that is no number of at most a thousand million, and for what is no GeoJSON.
Country read_feature(const std::string& path, const Feature& feature, std::string_view text);

}  // namespace example
