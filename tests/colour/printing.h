/// Colours as the tests compare, print and digest them.
#pragma once

#include <zelvan/colour/color_rgb.h>

#include "support/bits.h"

#include <ostream>

inline bool operator==(const ColorRGB& a, const ColorRGB& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

inline std::ostream& operator<<(std::ostream& out, const ColorRGB& c) {
  return out << c.red << ' ' << c.green << ' ' << c.blue;
}

/// A running digest of colours and whole numbers, any count of them at once.
struct ColorDigest : support::FnvDigest {
  using FnvDigest::add;
  void add(const ColorRGB& c) { add(c.red), add(c.green), add(c.blue); }
  void operator()(const auto&... values) { (add(values), ...); }
};
