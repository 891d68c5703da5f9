#include "common/pens.h"

#include <zelvan/colour/color_xfm.h>

#include <algorithm>

namespace example {

namespace {

constexpr std::uint32_t channels = 0xFFFFFF;
constexpr std::uint32_t opaque = 0xFF000000;

struct Use {
  std::uint32_t pixel;
  ColorRGB colour;
  double count;  // of pixels
};

ColorRGB colour_of(std::uint32_t pixel) {
  ColorRGB colour;
  colour.BGR32BitToRGBColor(static_cast<int>(pixel));
  return colour;
}

// Returns the colours in ascending order. Counts runs, since most pixels repeat the one before.
std::vector<Use> colours_in(std::span<const std::uint32_t> pixels) {
  std::unordered_map<std::uint32_t, double> counts;
  for (std::size_t i = 0, run_start = 0; i < pixels.size(); run_start = i) {
    const std::uint32_t pixel = pixels[i] & channels;
    while (i < pixels.size() && (pixels[i] & channels) == pixel) ++i;
    counts[pixel] += static_cast<double>(i - run_start);
  }
  std::vector<Use> uses;
  for (const auto& [pixel, count] : counts) uses.push_back({pixel, colour_of(pixel), count});
  std::sort(uses.begin(), uses.end(), [](const Use& a, const Use& b) { return a.pixel < b.pixel; });
  return uses;
}

double squared_distance(const ColorRGB& a, const ColorRGB& b) {
  const double red = a.red - b.red, green = a.green - b.green, blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}

// Puts the colours into the slots from 1 on: `GetClosestColor` never searches slot 0, and a
// `ColorXfm` never counts it. It stays unset.
ColorMap map_of(const std::vector<std::uint32_t>& pixels) {
  ColorMap map(static_cast<int>(pixels.size()) + 1, 255);
  map.colors[0].red = -1;
  std::transform(pixels.begin(), pixels.end(), map.colors + 1, colour_of);
  return map;
}

// Chooses the commonest colour first, then repeatedly the one with the largest product of its count
// and its squared distance from the closest pen so far.
std::vector<std::uint32_t> pens_for(const std::vector<Use>& uses, int n_pens) {
  // squared distance of each colour from the closest pen; 1 as long as there is no pen
  std::vector<double> missed(uses.size(), 1.0);
  std::vector<std::uint32_t> pens;
  while (static_cast<int>(pens.size()) < n_pens) {
    std::size_t most = 0;
    for (std::size_t i = 1; i < uses.size(); ++i) {
      if (missed[i] * uses[i].count > missed[most] * uses[most].count) most = i;
    }
    if (missed[most] == 0.0) break;  // there is a pen for every colour
    const ColorRGB pen = uses[most].colour;
    for (std::size_t i = 0; i < uses.size(); ++i) {
      const double distance = squared_distance(uses[i].colour, pen);
      missed[i] = pens.empty() ? distance : std::min(missed[i], distance);
    }
    pens.push_back(uses[most].pixel);
  }
  return pens;
}

}  // namespace

Pens::Pens(std::span<const std::uint32_t> pixels, int n_pens) : map_(0, 255) {
  const std::vector<Use> uses = colours_in(pixels);
  pixels_ = pens_for(uses, n_pens);
  map_ = map_of(pixels_);
  std::vector<std::uint32_t> colours;
  for (const Use& use : uses) colours.push_back(use.pixel);
  reduction_ = look_up(colours);
}

// Finds the pens of colours that are not in `pen_of_`, and adds them.
Reduction Pens::look_up(const std::vector<std::uint32_t>& colours) {
  ColorMap map = map_of(colours);
  ColorXfm to_pens(static_cast<int>(map.map_size));
  to_pens.MapColors(&map, &map_);
  for (std::size_t i = 0; i < colours.size(); ++i) {
    const unsigned int pen = to_pens.DoColorXfm(static_cast<unsigned int>(i) + 1);
    pen_of_[colours[i]] = pixels_[pen - 1];
  }
  Reduction found = {map.map_size - 1,
                     to_pens.hist_exact,
                     to_pens.hist_3,
                     to_pens.hist_7,
                     to_pens.hist_15,
                     to_pens.hist_31,
                     0};
  found.farther = found.colours - found.exact - found.within_3 - found.within_7 - found.within_15 -
                  found.within_31;
  return found;
}

void Pens::apply(std::span<std::uint32_t> pixels) {
  std::vector<std::uint32_t> unknown;
  std::uint32_t before = ~channels;  // which no pixel has
  for (const std::uint32_t pixel : pixels) {
    const std::uint32_t colour = pixel & channels;
    if (colour == before) continue;
    if (pen_of_.try_emplace(colour, 0).second) unknown.push_back(colour);
    before = colour;
  }
  look_up(unknown);
  std::uint32_t pen = 0;
  before = ~channels;
  for (std::uint32_t& pixel : pixels) {
    const std::uint32_t colour = pixel & channels;
    if (colour != before) pen = pen_of_.find(colour)->second | opaque;
    before = colour;
    pixel = pen;
  }
}

}  // namespace example
