/// Countries from a small file.
///
/// After a line of text, `outlines in 1/500 degree`, come the countries to the end of the file,
/// each made up of
///
///     its name                      a line of text in UTF-8
///     how many polygons             a number, then for each
///       how many vertices           a number, then for each
///         longitude, latitude       steps from the vertex before, in 1/500 degree
///
/// A country's first vertex is a step from 0, 0; the first vertex of a polygon is not repeated at
/// its end, and a hole is one more polygon. A number has seven bits in a byte, the lowest first,
/// and 128 is added to each byte but the last. A step is the number 0, 1, 2, 3, 4 for 0, -1, 1,
/// -2, 2 and so on: most take a byte.
#pragma once

#include "common/countries.h"
#include "common/geojson.h"

#include <string>
#include <string_view>
#include <vector>

namespace example {

/// True for the text of such a file.
bool is_compact(std::string_view text);

/// The countries of the file at `path`, in order; `text` is its content. Throws `Error`, which
/// names file and byte, where it ends too early, and for a polygon of fewer than three vertices.
std::vector<Feature> find_compact_features(const std::string& path, std::string_view text);

/// The country that a feature is; `text` is the feature's own. Throws `Error` as above.
Country read_compact_feature(const std::string& path, const Feature& feature,
                             std::string_view text);

}  // namespace example
