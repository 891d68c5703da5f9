/// Pi to ten digits, the value with which this library computes.
#pragma once

namespace zelvan {

/// Pi and two pi, to ten digits only. More digits would change the last bits of results, which
/// programs store and compare.
///
/// Both are slightly larger than the true values, and two operations depend on that. In
/// `utl_maxmin_arc`, the angle of an end due north is less than half of `short_pi`, so the end
/// belongs to the quadrant from east to north. In `utl_angle2d`, an angle of exactly pi is not
/// above `short_pi`, so it stays; with a constant below pi it would be moved to nearly -pi.
constexpr double short_pi = 3.141592654;
constexpr double short_two_pi = 6.283185308;

}  // namespace zelvan
