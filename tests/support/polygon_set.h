/// Polygon sets as lists of vertices, for tests to write, compare and print.
#pragma once

#include <ostream>
#include <vector>

#include <support/printers.h>

namespace support {

template <class Point>
struct Vertex {
  Point point;
  int flag;  ///< a `drw_edge_flag`
  bool operator==(const Vertex& other) const { return point == other.point && flag == other.flag; }
};

template <class Point>
void PrintTo(const Vertex<Point>& vertex, std::ostream* out) {
  PrintTo(vertex.point, out);
  *out << " flag " << vertex.flag;
}

template <class Point>
using Vertices = std::vector<Vertex<Point>>;

/// The two arrays that a `drw_pset_t` or `drw_dpset_t` points to.
template <class Point>
struct SetArrays {
  /// Makes arrays with room for `room` vertices, for a function to fill.
  explicit SetArrays(std::size_t room) : points(room), flags(room) {}

  /// Copies the vertices.
  explicit SetArrays(const Vertices<Point>& from) {
    for (const auto& vertex : from) {
      points.push_back(vertex.point);
      flags.push_back(vertex.flag);
    }
  }

  /// Returns the first `n` vertices.
  Vertices<Point> first(int n) const {
    Vertices<Point> out;
    for (int i = 0; i < n; ++i) out.push_back({points[i], flags[i]});
    return out;
  }

  std::vector<Point> points;
  std::vector<int> flags;
};

}  // namespace support
