#include "common/globe.h"

#include <algorithm>
#include <cmath>

namespace example {

namespace {

constexpr double whole_turn = 360.0;

// Returns by how many degrees to move the vertices after a step of longitude, so that the step goes
// the short way round: -360, 0 or 360.
double turn_after(double step) {
  constexpr double rounding = 1e-6;
  const double length = std::abs(step);
  const bool is_long_way = length > whole_turn / 2 && length < whole_turn - rounding;
  return is_long_way ? -std::copysign(whole_turn, step) : 0.0;
}

double nearer_pole(const std::vector<real_pt_t>& ring) {
  double sum = 0.0;
  for (const real_pt_t& p : ring) sum += p.y;
  return sum < 0.0 ? -90.0 : 90.0;
}

}  // namespace

void add_ring_of_globe(MapPolygons& polygons, std::vector<real_pt_t> ring) {
  const bool is_in_degrees =
      std::all_of(ring.begin(), ring.end(), [](const real_pt_t& p) { return is_longitude(p.x); });
  if (!is_in_degrees) {
    add_polygon(polygons, ring);
    return;
  }

  const real_pt_t first = ring.front();
  double previous = first.x;  // longitude of the vertex before, as it was read
  double turn = 0.0;
  for (real_pt_t& p : ring) {
    turn += turn_after(p.x - previous);
    previous = p.x;
    p.x += turn;
  }
  turn += turn_after(first.x - previous);
  if (turn == 0.0) {
    add_polygon(polygons, ring);
    return;
  }

  // The ring may lie outside the range in which the map repeats, as one from 350 to 710 does.
  const double middle = first.x + turn / 2;
  const double shift = -whole_turn * std::round(middle / whole_turn);
  for (real_pt_t& p : ring) p.x += shift;
  const double start = first.x + shift;
  const double end = start + turn;

  const double pole = nearer_pole(ring);
  ring.push_back({end, first.y});
  ring.push_back({end, pole});
  ring.push_back({start, pole});
  add_polygon(polygons, ring);
  int* const after_last = polygons.edge_flags.data() + polygons.edge_flags.size();
  after_last[-3] = drw_edge_invisible;        // to the pole
  after_last[-2] = drw_edge_invisible;        // along it
  after_last[-1] = drw_edge_close_invisible;  // and back
}

}  // namespace example
