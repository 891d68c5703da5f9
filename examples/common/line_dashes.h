/// The built-in line types as a drawing library takes them.
#pragma once

#include <optional>
#include <vector>

namespace example {

/// The dashes of a built-in line type in pixels: dash, gap and so on. Empty for one of a single
/// fragment, a solid line; nothing if there is no such type.
std::optional<std::vector<double>> line_dashes(int line_type);

}  // namespace example
