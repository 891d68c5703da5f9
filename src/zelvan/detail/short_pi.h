/// Pi as drawings have it: to ten digits.
#pragma once

namespace zelvan {

/// Pi and two pi to ten digits, and not the full ones: results are stored and compared to the last
/// bit. Both lie a little above the true values, and results rest on that: an end due north belongs
/// to the quadrant before it, and an angle of exactly pi is left alone.
constexpr double short_pi = 3.141592654;
constexpr double short_two_pi = 6.283185308;

}  // namespace zelvan
