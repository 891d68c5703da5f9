/// The built-in line types as arrays of dashes, for a drawing library.
#pragma once

#include <optional>
#include <vector>

namespace example {

/// Returns the lengths of a built-in line type in pixels: dash, gap and so on.
///
/// Empty for a type of one fragment, which is a solid line. Returns nothing if there is no such
/// type.
std::optional<std::vector<double>> line_dashes(int line_type);

}  // namespace example
