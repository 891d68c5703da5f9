/// The constants by which angles are brought into range and into quadrants.
#pragma once

namespace zelvan {

/// Pi and two pi to ten digits, and not the full ones. Both lie a little above the true values,
/// and results rest on that: an end due north belongs to the quadrant before it, an angle of
/// exactly pi is left alone, and what was stored with them compares equal to what is computed.
constexpr double short_pi = 3.141592654;
constexpr double short_two_pi = 6.283185308;

}  // namespace zelvan
