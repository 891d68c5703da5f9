/// Pi to ten digits, as drawings store it.
#pragma once

namespace zelvan {

/// Pi and two pi, to ten digits only: results are stored and compared to the last bit.
///
/// Both are slightly larger than the true values, and results depend on that: an end due north
/// belongs to the quadrant before it, and an angle of exactly pi stays as it is.
constexpr double short_pi = 3.141592654;
constexpr double short_two_pi = 6.283185308;

}  // namespace zelvan
