// Fills two colour maps with texts and numbers, searches them for pens, and translates the pens of
// one into those of the other. The translation must find what a separate search for each pen finds.

#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include "bytes.h"

#include <climits>

namespace {

using fuzz::require;

bool is_same(const ColorRGB& a, const ColorRGB& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

/// Returns a channel, mostly on the scale, sometimes of any bits.
int channel(fuzz::Bytes& bytes) { return bytes.below(8) == 0 ? bytes.any<int>() : bytes.byte(); }

bool is_on_scale(const ColorRGB& color) {
  const auto [low, high] = std::minmax({color.red, color.green, color.blue});
  return low >= 0 && high <= 65535;
}

void change(ColorMap& map, fuzz::Bytes& bytes) {
  static const char* const keywords[] = {"", "RGB ", "HSV ", "Name "};
  const int index = static_cast<std::int8_t>(bytes.byte());
  const bool has_index = index >= 0 && index < static_cast<int>(map.map_size);
  int is_set = 0;
  switch (bytes.below(3)) {
    case 0: {
      const std::string keyword = keywords[bytes.below(4)];
      fuzz::ExactText text(keyword + bytes.text(12));
      is_set = map.SetIndex(index, text.get());
      break;
    }
    case 1:
      is_set = map.SetRGBIndex(index, bytes.any<float>(), bytes.any<float>(), bytes.any<float>());
      break;
    default: {
      ColorRGB color;
      for (int* value : {&color.red, &color.green, &color.blue}) *value = channel(bytes);
      if (has_index) map.SetMap(index, &color);
      return;
    }
  }
  require(is_set == 0 || has_index);
}

void ask(ColorMap& map, fuzz::Bytes& bytes) {
  const int size = static_cast<int>(map.map_size);
  ColorRGB target;
  for (int* value : {&target.red, &target.green, &target.blue}) *value = channel(bytes);
  int distance = -1;
  const int closest = map.GetClosestColor(&target, &distance, 1);
  require(closest >= 0 && closest < std::max(size, 1));
  // The distance is the mean difference of the channels. Only channels outside the map's scale can
  // make it too large for an int; it then wraps, and may be negative.
  require(distance >= 0 || !is_on_scale(map.colors[closest]) || !is_on_scale(target));
  int again = -1;
  require(map.GetClosestColor(&target, &again, 0) == closest && again == distance);

  const int similar = map.GetSimilarColor(&target);
  require(similar >= 0 && similar < std::max(size, 1));
  require(similar == 0 || !is_same(map.colors[similar], target));

  const int index = static_cast<std::int8_t>(bytes.byte());
  const bool has_index = index >= 0 && index < size;
  require(map.GetValue(ImageType8Bit, RGBOrderRedHigh, index) == static_cast<unsigned>(index));
  for (const ImageType type : {ImageType1Bit, ImageType32Bit}) {
    const unsigned value = map.GetValue(type, RGBOrderRedHigh, index);
    require(has_index || value == 1);
  }
}

void translate(ColorMap& source, ColorMap& target) {
  ColorXfm table(static_cast<int>(source.map_size));
  require(table.DoColorXfm(source.map_size + 7) == 0);
  table.MapColors(&source, &target);
  for (unsigned pen = 0; pen < source.map_size; ++pen) {
    ColorRGB color = source.colors[pen];
    int distance = 0;
    const int closest = target.GetClosestColor(&color, &distance, 1);
    require(table.DoColorXfm(pen) == static_cast<unsigned>(closest));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const int most = bytes.below(2) == 0 ? 255 : 65535;
  ColorMap map(static_cast<std::int8_t>(bytes.byte()) / 4, most);
  require(map.map_size <= 31 && map.map_count == map.map_size);
  ColorMap target(static_cast<std::int8_t>(bytes.byte()) / 4, most);
  while (bytes.left() > 0) {
    ColorMap& changed = bytes.below(4) == 0 ? target : map;
    change(changed, bytes);
    ask(changed, bytes);
  }
  translate(map, target);
  translate(target, map);
  ColorMap copy(map);
  require(copy.Identical(&map) == 1);
  ColorMap other(static_cast<int>(map.map_size), 255);
  map.CopyColorMap(&other);
  require(other.Identical(&map) == 1);
  return 0;
}
