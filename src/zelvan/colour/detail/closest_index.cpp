#include <zelvan/colour/detail/closest_index.h>
#include <zelvan/detail/new_array.h>

#include <utility>

namespace zelvan {
namespace {

// With channels from 0 to this, a `float` holds the sum of three squared differences exactly.
constexpr int largest_channel = 2047;

// Each count is stored two places after its green, so that the prefix sums become start indices.
constexpr int n_counts = largest_channel + 1 + 2;

// With fewer searches or entries than these, sorting costs more than it saves.
constexpr unsigned int fewest_searches = 32;
constexpr unsigned int fewest_entries = 64;

// Sentinel greens at the ends of the table. Their distance in green alone exceeds that of any entry
// in all channels.
constexpr float below_all = -16'000.0f;
constexpr float above_all = 16'000.0f;

bool is_exact(int channel) { return channel >= 0 && channel <= largest_channel; }

bool is_exact(const ColorRGB& color) {
  return is_exact(color.red) && is_exact(color.green) && is_exact(color.blue);
}

FloatColor in_float(const ColorRGB& color) {
  return {static_cast<float>(color.red), static_cast<float>(color.green),
          static_cast<float>(color.blue)};
}

void put(ColorBlock* blocks, unsigned int place, const FloatColor& color, unsigned int index) {
  ColorBlock& block = blocks[place / ColorBlock::size];
  const unsigned int lane = place % ColorBlock::size;
  block.red[lane] = color.red;
  block.green[lane] = color.green;
  block.blue[lane] = color.blue;
  block.index[lane] = index;
}

}  // namespace

ClosestIndex::ClosestIndex(const ColorMap& map, unsigned int searches) : map_(map) {
  if (searches < fewest_searches || map.map_size < fewest_entries) return;
  if (map.max_value > largest_channel) return;
  // Filled blocks hold the entries; sentinels fill the rest of the last one. A further block at
  // each end holds only sentinels.
  const unsigned int n_filled = map.map_size / ColorBlock::size + 1;
  const unsigned int n_blocks = n_filled + 2;
  first_ = new_array<unsigned int>(n_counts);
  auto blocks = new_array<ColorBlock>(n_blocks);
  if (first_ == nullptr || blocks == nullptr) return;

  // A stable counting sort by green: entries of equal green keep their order.
  for (unsigned int i = 1; i < map.map_size; ++i) {
    if (map.colors[i].red < 0) continue;
    if (!is_exact(map.colors[i])) return;
    ++first_[map.colors[i].green + 2];
  }
  first_[0] = first_[1] = ColorBlock::size;
  for (int green = 2; green < n_counts; ++green) first_[green] += first_[green - 1];
  for (unsigned int i = 1; i < map.map_size; ++i) {
    const ColorRGB& color = map.colors[i];
    if (color.red >= 0) put(blocks.get(), first_[color.green + 1]++, in_float(color), i);
  }
  for (unsigned int place = 0; place < ColorBlock::size; ++place) {
    put(blocks.get(), place, {0.0f, below_all, 0.0f}, 0);
  }
  const unsigned int n_places = n_blocks * ColorBlock::size;
  for (unsigned int place = first_[largest_channel + 1]; place < n_places; ++place) {
    put(blocks.get(), place, {0.0f, above_all, 0.0f}, 0);
  }
  blocks_ = std::move(blocks);
}

Closest closest_around(Plain, const ColorBlock* start, const FloatColor& target, Closest best) {
  return walk_blocks(start, target, best, [&target](const ColorBlock& block, Closest& nearest) {
    for (unsigned int i = 0; i < ColorBlock::size; ++i) {
      const float dr = block.red[i] - target.red;
      const float dg = block.green[i] - target.green;
      const float db = block.blue[i] - target.blue;
      take_closer(dr * dr + dg * dg + db * db, block.index[i], nearest);
    }
  });
}

Closest ClosestIndex::find(const ColorRGB& target, Closest best) const {
  if (blocks_ == nullptr || !is_exact(target)) return find_closest(map_, target, best);
  const ColorBlock* const start = &blocks_[first_[target.green] / ColorBlock::size];
  const FloatColor t = in_float(target);
  return with_best_form([&](auto form) { return closest_around(form, start, t, best); });
}

}  // namespace zelvan
