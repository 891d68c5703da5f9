/// Colours as the tests compare and print them.
#pragma once

#include <zelvan/colour/color_rgb.h>

#include <ostream>

inline bool operator==(const ColorRGB& a, const ColorRGB& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

inline std::ostream& operator<<(std::ostream& out, const ColorRGB& c) {
  return out << c.red << ' ' << c.green << ' ' << c.blue;
}
