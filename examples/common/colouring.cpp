#include "common/colouring.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace example {

namespace {

struct Corner {
  real_pt_t point;
  std::size_t country;

  auto key() const { return std::tie(point.x, point.y, country); }
};

std::vector<std::vector<std::size_t>> neighbours_in(World& world) {
  std::vector<Corner> corners;
  for (std::size_t i = 0; i < world.size(); ++i) {
    for (const real_pt_t point : world.outline(i).points) corners.push_back({point, i});
  }
  std::sort(corners.begin(), corners.end(),
            [](const Corner& a, const Corner& b) { return a.key() < b.key(); });
  std::vector<std::vector<std::size_t>> neighbours(world.size());
  for (std::size_t i = 1; i < corners.size(); ++i) {
    const Corner &a = corners[i - 1], &b = corners[i];
    if (a.point.x != b.point.x || a.point.y != b.point.y || a.country == b.country) continue;
    neighbours[a.country].push_back(b.country);
    neighbours[b.country].push_back(a.country);
  }
  return neighbours;
}

}  // namespace

std::vector<std::size_t> colour_apart(World& world, std::size_t n_colours) {
  const auto neighbours = neighbours_in(world);
  // Countries that share the most vertices with others choose first.
  std::vector<std::size_t> order(world.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return neighbours[a].size() > neighbours[b].size();
  });

  std::vector<std::size_t> colour(world.size(), n_colours);  // n_colours: none yet
  std::vector<std::size_t> uses(n_colours, 0);
  for (const std::size_t i : order) {
    std::vector<std::size_t> clashes(n_colours + 1, 0);
    for (const std::size_t neighbour : neighbours[i]) ++clashes[colour[neighbour]];
    std::size_t best = 0;
    for (std::size_t c = 1; c < n_colours; ++c) {
      if (std::pair(clashes[c], uses[c]) < std::pair(clashes[best], uses[best])) best = c;
    }
    colour[i] = best;
    ++uses[best];
  }
  return colour;
}

}  // namespace example
