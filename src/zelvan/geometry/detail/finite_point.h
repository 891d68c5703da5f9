/// Points without infinities and NaN.
#pragma once

#include <zelvan/transforms/records.h>

#include <cmath>

namespace zelvan {

/// True if neither coordinate is infinite or NaN.
inline bool is_finite(const real_pt_t& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

}  // namespace zelvan
