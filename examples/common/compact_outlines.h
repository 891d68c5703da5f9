/// Countries from a compact binary file.
///
/// The file begins with a line of text, `outlines in 1/500 degree`. Then the countries follow, to
/// the end of the file. Each consists of
///
///     its name                      a line of text in UTF-8
///     how many polygons             a number, then for each
///       how many vertices           a number, then for each
///         longitude, latitude       steps from the vertex before, in 1/500 degree
///
/// The first vertex of a country is a step from 0, 0. The first vertex of a polygon is not repeated
/// at its end. A hole is one more polygon. A number is stored in groups of seven bits, the lowest
/// first, one in a byte; 128 is added to each byte but the last. Steps are signed: 0, -1, 1, -2, 2
/// and so on are stored as the numbers 0, 1, 2, 3, 4, so most steps take one byte.
#pragma once

#include "common/countries.h"
#include "common/geojson.h"

#include <string>
#include <string_view>
#include <vector>

namespace example {

/// True if the text begins with the first line of such a file.
bool is_compact(std::string_view text);

/// Finds the countries of the file at `path`, in order. `text` is its content.
///
/// Throws `Error`, which names the file and the byte, if the file ends too early, a polygon has
/// fewer than three vertices, or a number takes more than five bytes.
std::vector<Feature> find_compact_features(const std::string& path, std::string_view text);

/// Reads one country. `text` is the feature's part of the file. Throws `Error` as
/// `find_compact_features` does.
Country read_compact_feature(const std::string& path, const Feature& feature,
                             std::string_view text);

}  // namespace example
