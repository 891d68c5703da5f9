// Builds an index of a set of polygons, each of up to 400 vertices, and tests points at and beside
// the coordinates of vertices. For each polygon the index must have the result of `CPolygon`.

#include <zelvan/pick/pick_index.h>
#include <zelvan/pick/polygon_of.h>

#include "bytes.h"

#include <cmath>
#include <vector>

namespace {

using fuzz::require;

struct Polygons {
  std::vector<real_pt_t> points;
  std::vector<int> flags;

  void add(const real_pt_t& p) {
    points.push_back(p);
    flags.push_back(drw_edge_visible);
  }
};

// Adds a polygon: a figure of a few vertices from the input, repeated, and moved by a step each
// time.
void add_polygon(fuzz::Bytes& bytes, Polygons& polygons) {
  real_pt_t figure[4];
  const int n_figure = 1 + bytes.below(4);
  for (int i = 0; i < n_figure; ++i) figure[i] = {bytes.number(), bytes.number()};
  const double scale = std::ldexp(1.0, bytes.below(4) == 0 ? 8 * bytes.any<std::int8_t>() : 0);
  const real_pt_t step = {bytes.small() / 16.0, bytes.small() / 16.0};
  const int n_times = 1 + bytes.below(2) * bytes.below(100);
  for (int time = 0; time < n_times; ++time) {
    for (int i = 0; i < n_figure; ++i) {
      polygons.add({(figure[i].x + time * step.x) * scale, (figure[i].y + time * step.y) * scale});
    }
  }
  polygons.flags.back() = drw_edge_close_visible;
}

double one_bit_on(double v, int kind) {
  return kind == 0 ? v : std::nextafter(v, kind == 1 ? HUGE_VAL : -HUGE_VAL);
}

// Returns the x of one of the points and the y of another, each exact or moved to the next `double`
// up or down. One place in eight has any coordinates.
DblPt read_place(fuzz::Bytes& bytes, const std::vector<real_pt_t>& points) {
  if (bytes.below(8) == 0) return {bytes.number(), bytes.number()};
  const real_pt_t& column = points[bytes.any<std::uint16_t>() % points.size()];
  const real_pt_t& row = points[bytes.any<std::uint16_t>() % points.size()];
  const int kind = bytes.below(9);
  return {one_bit_on(column.x, kind % 3), one_bit_on(row.y, kind / 3)};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  Polygons polygons;
  for (int n = 1 + bytes.below(2) * bytes.below(20); n > 0; --n) add_polygon(bytes, polygons);
  const drw_pset_t set = {static_cast<int>(polygons.points.size()), polygons.points.data(),
                          polygons.flags.data()};
  const CPickIndex index(set);
  require(index.isReady() && index.countBytes() <= 64 * polygons.points.size() + 512);
  const int n = zelvan::count_polygons(set);
  std::vector<CPolygon> model;
  for (int k = 0; k < n; ++k) model.push_back(zelvan::polygon_of(set, k));

  std::vector<int> numbers(static_cast<std::size_t>(n));
  do {
    const DblPt p = read_place(bytes, polygons.points);
    const int n_found = index.findPolygons(p.x, p.y, numbers.data(), n);
    int n_expected = 0;
    int sum = 0;
    for (int k = 0; k < n; ++k) {
      const bool holds = model[k].isInside(p.x, p.y, 0.0);
      const int winding = index.windingNumber(k, p.x, p.y);
      require((winding != 0) == holds);
      if (holds) require(numbers[n_expected++] == k);
      sum += winding;
    }
    require(n_found == n_expected && index.isInside(p) == (n_expected != 0));
    require(index.windingNumber(0, n, p.x, p.y) == sum);
  } while (bytes.left() > 0);
  return 0;
}
