// Colours as numbers and as text: takes the first bytes as channels and converts them to hue,
// saturation and value and back; then reads the rest as a definition and as a name.

#include <zelvan/colour/color_rgb.h>

#include "bytes.h"

namespace {

using fuzz::require;

bool is_same(const ColorRGB& a, const ColorRGB& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

void read_text(const std::string& text) {
  fuzz::ExactText line(text);
  const ColorRGB before(-1, -2, -3);
  ColorRGB defined = before, named = before;
  require(defined.SetValue(0, line.get()) || is_same(defined, before));
  if (!named.FindName(line.get())) return require(is_same(named, before));
  char* first = nullptr;
  ColorRGB again;
  require(named.FindNameForRgb(&first) && again.SetNamedColor(first) && is_same(again, named));
  std::string definition = "nAmE \"" + std::string(line.get()) + '"';
  require(again.SetValue(0, definition.data()) && is_same(again, named));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const char* const keywords[] = {"", "RGB ", "HSV ", "Name "};
  fuzz::Bytes bytes(data, size);
  ColorRGB color(bytes.byte(), bytes.byte(), bytes.byte()), back;
  ColorHSV hsv;
  color.RgbToHsv(255, &hsv);
  require(hsv.hue >= 0 && hsv.hue < 360 && hsv.saturation >= 0 && hsv.saturation <= 1);
  back.HsvToRgb(&hsv, 255);
  require(is_same(color, back) && hsv.value >= 0 && hsv.value <= 1);
  require(back.SetHSVColor(hsv.hue, hsv.saturation, hsv.value) && is_same(color, back));

  hsv = {bytes.any<float>(), bytes.any<float>(), bytes.any<float>()};
  back.HsvToRgb(&hsv, 255);
  if (back.SetHSVColor(hsv.hue, hsv.saturation, hsv.value)) back.RGBTo24BitColor();
  back.SetRGBColor(hsv.hue, hsv.saturation, hsv.value);

  const std::string rest = keywords[bytes.below(4)] + bytes.text(4000);
  read_text(rest);
  return 0;
}
