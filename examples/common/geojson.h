/// Countries from GeoJSON (RFC 7946).
#pragma once

#include "common/countries.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace example {

/// The part of a file that holds one country, so that it can be read by itself.
struct Feature {
  std::size_t start;  ///< offset of its first byte
  std::size_t size;   ///< in bytes
  std::string place;  ///< its JSON pointer, for messages
};

/// Finds the features of a FeatureCollection, in order; an empty one, or any other JSON, is one
/// feature. `text` is the content of the file at `path`.
///
/// Throws `Error`, which names the file, if the text is no JSON or nested deeper than 64 levels, or
/// if a number is not finite. It also names the line and the column, except for text that is not
/// UTF-8 and for a control character in a string. If a FeatureCollection holds anything but
/// Features, throws `Error` with the JSON pointer of the element.
std::vector<Feature> find_features(const std::string& path, std::string_view text);

/// Reads a Feature or a bare geometry. `text` is the feature's part of the file.
///
/// Points and lines are skipped, so the outline of a feature without polygons is empty. The name is
/// the property `name`, `NAME` or `ADMIN`, or else the id, or else "unnamed". A ring may be closed,
/// as the standard asks, or open, and may cross the antimeridian: see globe.h. Throws `Error`,
/// which names the file and the place in it, if a ring has fewer than four positions, if a
/// coordinate is no number or beyond a thousand million, or if the JSON is no GeoJSON.
Country read_feature(const std::string& path, const Feature& feature, std::string_view text);

}  // namespace example
