#include "common/pens.h"

#include <zelvan/colour/color_xfm.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

namespace example {

namespace {

struct Use {
  ColorRGB colour;
  double count;  // of pixels
};

ColorRGB colour_of(std::uint32_t pixel) {
  ColorRGB colour;
  colour.BGR32BitToRGBColor(static_cast<int>(pixel));
  return colour;
}

std::vector<Use> colours_in(std::span<const std::uint32_t> pixels) {
  std::map<std::uint32_t, double> counts;
  for (const std::uint32_t pixel : pixels) ++counts[pixel & 0xFFFFFF];
  std::vector<Use> uses;
  for (const auto& [pixel, count] : counts) uses.push_back({colour_of(pixel), count});
  return uses;
}

double squared_distance(const ColorRGB& a, const ColorRGB& b) {
  const double red = a.red - b.red, green = a.green - b.green, blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}

// Pen 0 is left unset: a search never finds it, and a transform doesn't count it.
ColorMap map_of(const std::vector<ColorRGB>& colours) {
  ColorMap map(static_cast<int>(colours.size()) + 1, 255);
  map.colors[0].red = -1;
  std::copy(colours.begin(), colours.end(), map.colors + 1);
  return map;
}

// The commonest colour, and then again and again the one that is missed most: far from all pens
// so far, and used often.
ColorMap pens_for(const std::vector<Use>& uses, int n_pens) {
  std::vector<double> missed(uses.size(), 1.0);  // by one pixel of each colour
  std::vector<ColorRGB> pens;
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
    pens.push_back(pen);
  }
  return map_of(pens);
}

}  // namespace

Reduction reduce_to_pens(Picture& picture, int n_pens) {
  const std::span<std::uint32_t> pixels = picture.pixels();
  const std::vector<Use> uses = colours_in(pixels);
  std::vector<ColorRGB> used;
  for (const Use& use : uses) used.push_back(use.colour);
  ColorMap colours = map_of(used);
  ColorMap pens = pens_for(uses, n_pens);
  ColorXfm to_pens(static_cast<int>(colours.map_size));
  to_pens.MapColors(&colours, &pens);

  std::unordered_map<std::uint32_t, std::uint32_t> pen_pixels;
  for (unsigned int i = 1; i < colours.map_size; ++i) {
    const unsigned int pen = to_pens.DoColorXfm(i);
    pen_pixels[colours.colors[i].RGBToBGR32BitColor()] = pens.colors[pen].RGBToBGR32BitColor();
  }
  for (std::uint32_t& pixel : pixels) pixel = pen_pixels[pixel & 0xFFFFFF];

  Reduction found = {colours.map_size - 1,
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

}  // namespace example
