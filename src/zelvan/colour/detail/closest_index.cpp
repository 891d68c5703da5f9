#include <zelvan/colour/detail/closest_index.h>

#include <new>
#include <utility>

namespace zelvan {
namespace {

// Up to here the sum of three squared differences is a whole number that a float holds exactly.
constexpr int largest_channel = 2047;

// Below either, the searches cost less than the sorting.
constexpr unsigned int fewest_searches = 32;
constexpr unsigned int fewest_entries = 64;

constexpr int entries_a_turn = 12;

// The greens at the ends of the table are farther away than any entry with all its channels.
constexpr short below_all = -16'000;
constexpr short above_all = 16'000;

bool is_exact(int channel) { return channel >= 0 && channel <= largest_channel; }

bool is_exact(const ColorRGB& color) {
  return is_exact(color.red) && is_exact(color.green) && is_exact(color.blue);
}

int squared(int difference) { return difference * difference; }

}  // namespace

ClosestIndex::ClosestIndex(const ColorMap& map, unsigned int searches) : map_(map) {
  if (searches < fewest_searches || map.map_size < fewest_entries) return;
  if (map.max_value > largest_channel) return;
  first_.reset(new (std::nothrow) unsigned int[largest_channel + 3]());
  std::unique_ptr<Entry[]> entries(new (std::nothrow) Entry[std::size_t{map.map_size} + 2]);
  if (first_ == nullptr || entries == nullptr) return;

  // Sorted by counting, which keeps entries of one green in their order. The counts stand two
  // places on, so that they are the first places in the end.
  for (unsigned int i = 1; i < map.map_size; ++i) {
    if (map.colors[i].red < 0) continue;
    if (!is_exact(map.colors[i])) return;
    ++first_[map.colors[i].green + 2];
  }
  first_[0] = first_[1] = 1;
  for (int green = 2; green < largest_channel + 3; ++green) first_[green] += first_[green - 1];
  for (unsigned int i = 1; i < map.map_size; ++i) {
    const ColorRGB& color = map.colors[i];
    if (color.red < 0) continue;
    entries[first_[color.green + 1]++] = {static_cast<short>(color.red),
                                          static_cast<short>(color.green),
                                          static_cast<short>(color.blue), i};
  }
  entries[0] = {0, below_all, 0, 0};
  entries[first_[largest_channel + 1]] = {0, above_all, 0, 0};
  entries_ = std::move(entries);
}

Closest ClosestIndex::find(const ColorRGB& target, Closest best) const {
  if (entries_ == nullptr || !is_exact(target)) {
    return closest_in_vectors(map_.colors, 1, map_.map_size, target, best);
  }
  int nearest = static_cast<int>(best.distance);
  unsigned int found = best.index;
  // False once green alone is farther away than the nearest entry. One that is just as far is
  // looked at: with the lower index it is the answer.
  const auto look = [&](const Entry& entry) {
    const int by_green = squared(entry.green - target.green);
    if (by_green > nearest) return false;
    const int distance =
        by_green + squared(entry.red - target.red) + squared(entry.blue - target.blue);
    if (distance < nearest || (distance == nearest && entry.index < found)) {
      nearest = distance;
      found = entry.index;
    }
    return true;
  };
  // In turns, so that what one side finds soon ends the search on the other.
  const Entry* above = &entries_[first_[target.green]];
  const Entry* below = above - 1;
  for (bool goes_up = true, goes_down = true; goes_up || goes_down;) {
    for (int i = 0; i < entries_a_turn && goes_up; ++i) goes_up = look(*above++);
    for (int i = 0; i < entries_a_turn && goes_down; ++i) goes_down = look(*below--);
  }
  return {static_cast<float>(nearest), found};
}

}  // namespace zelvan
