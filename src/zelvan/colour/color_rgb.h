/// Colours as three integers on a scale of the caller's choice, and as hue, saturation, value.
///
/// The scale is 255 wherever the library chooses one. No operation clamps a channel. An operation
/// that can refuse its argument returns 1, or 0 with the colour unchanged.
///
/// Threads: plain values, so every operation may be called from any thread, except `SetValue` with
/// two arguments, which uses the one record of `str_parse`: one thread at a time.
#pragma once

#include <zelvan/colour/color_value.h>
#include <zelvan/export.h>

#include <cstddef>

/// Hue in degrees, from 0 up to but not including 360; saturation and value from 0 to 1.
struct ColorHSV {
  float hue;         ///< 0 red, 120 green, 240 blue
  float saturation;  ///< 0 for a grey
  float value;       ///< the largest channel, 0 for black
};

/// A colour as red, green and blue.
class ColorRGB {
 public:
  int red;    ///< from 0 to the end of the scale; below 0 in an unset slot of a `ColorMap`
  int green;  ///< from 0 to the end of the scale
  int blue;   ///< likewise

  /// Makes black, or a colour of the three channels. Their values are not checked.
  ZELVAN_INLINE_API ColorRGB() : red(0), green(0), blue(0) {}
  ZELVAN_INLINE_API ColorRGB(int r, int g, int b) : red(r), green(g), blue(b) {}

  /// Sets the three channels, on the scale 255.
  ZELVAN_INLINE_API void Set(unsigned char r, unsigned char g, unsigned char b) {
    red = r;
    green = g;
    blue = b;
  }

  /// Copies the channels of `color`, on the scale 255; ignores pen and alpha.
  ZELVAN_INLINE_API void SetRGBColorFromColorValue(ColorValue color) {
    Set(color.red, color.green, color.blue);
  }

  /// Sets the channels from numbers of 0 to 1, rounded to the scale 255.
  ///
  /// Refuses a channel below 0 or above 1. A channel of NaN is accepted and becomes the smallest
  /// `int`.
  ZELVAN_API unsigned short SetRGBColor(float r, float g, float b);

  /// Sets the colour from hue, saturation and value, as `HsvToRgb` does on the scale 255.
  ///
  /// Refuses an argument below 0, a hue of 360 or more, and a saturation or value above 1. A NaN is
  /// accepted: as hue or saturation it counts as 0. As value it makes channels of NaN, which become
  /// the smallest `int`.
  ZELVAN_API unsigned short SetHSVColor(float hue, float saturation, float value);

  /// Sets the colour by one of 658 names; the case of ASCII letters is ignored.
  ///
  /// Blanks count: "dark blue" is a name and "DarkBlue" is not. Refuses any other name and a null
  /// pointer.
  ZELVAN_API unsigned short FindName(char* name);
  ZELVAN_API unsigned short SetNamedColor(char* name);

  /// Stores the name of this colour, on the scale 255, in `*name` and returns 1.
  ///
  /// Of several names, stores the first in the table: black, not gray0. The caller must neither
  /// change nor free it. Returns 0 and leaves `*name` unchanged if the colour has no name.
  ///
  /// Requires: no null pointer.
  ZELVAN_API unsigned short FindNameForRgb(char** name);

  /// Sets the colour from a text in one of three forms:
  ///
  ///     RGB 1 0.5 0           channels of 0 to 1
  ///     HSV 240 1 1           as SetHSVColor takes them
  ///     Name "dark blue"      as FindName takes it
  ///
  /// The case of keyword and name is ignored. The fields are those of `str_parse`: a word or a
  /// string in place of a number counts as 0, and text after the last operand is ignored.
  /// Refuses an unknown keyword or name, a missing operand, a number out of range, a null
  /// pointer. Keeps nothing, and may run on any thread while the process keeps its locale.
  ZELVAN_API unsigned short SetValue(const char* text);

  /// Sets the colour from a text, as `SetValue(text)` does, but parses with `str_parse`.
  ///
  /// This overwrites the record and the text that `str_parse` returned before. If you are walking
  /// along a line with `str_parse`, call `SetValue(text)` instead, or first copy what you still
  /// need of the record, such as its field `next`. `reserved` is ignored; pass 0. One thread at a
  /// time.
  ZELVAN_API unsigned short SetValue(unsigned short reserved, char* text);

  /// Unpacks red, green and blue, on the scale 255, from the bits 0-7, 8-15 and 16-23; the upper
  /// bits are ignored.
  ZELVAN_API void Col24BitToRGBColor(int packed);
  ZELVAN_API void RGB32BitToRGBColor(int packed);

  /// Unpacks blue, green and red, on the scale 255, from the bits 0-7, 8-15 and 16-23; the upper
  /// bits are ignored.
  ZELVAN_API void BGR32BitToRGBColor(int packed);

  /// Packs red, green and blue into the bits 0-7, 8-15 and 16-23. A channel outside 0 to 255 also
  /// sets bits above its own.
  ZELVAN_API unsigned int RGBTo24BitColor();
  ZELVAN_API unsigned int RGBToRGB32BitColor();

  /// Packs blue, green and red into the bits 0-7, 8-15 and 16-23. A channel outside 0 to 255 also
  /// sets bits above its own.
  ZELVAN_API unsigned int RGBToBGR32BitColor();

  /// Sets the colour from `*hsv`, with channels from 0 to `scale`.
  ///
  /// If the saturation is not above 0, the result is a grey and the hue is ignored. A hue outside 0
  /// to 360 is wrapped as an angle; one that is not finite counts as 0. Saturation and value are
  /// not checked: a value above 1 can make channels above the scale, and a saturation above 1
  /// channels below 0.
  ///
  /// Requires: no null pointer.
  ZELVAN_API void HsvToRgb(ColorHSV* hsv, int scale);

  /// Stores hue, saturation and value of this colour, whose channels are on the scale `scale`.
  ///
  /// A grey has hue 0 and saturation 0, and so has black. If several channels are the largest, the
  /// first of red, green and blue decides the hue. A hue just below 360 is rounded up to 360 if
  /// channels differ by millions.
  ///
  /// Requires: no null pointer. With a `scale` of 0 the result holds infinities and NaN.
  ZELVAN_API void RgbToHsv(int scale, ColorHSV* hsv);
};

static_assert(offsetof(ColorHSV, hue) == 0 && offsetof(ColorHSV, saturation) == 4 &&
                  offsetof(ColorHSV, value) == 8 && sizeof(ColorHSV) == 12,
              "layout is interface");
static_assert(offsetof(ColorRGB, red) == 0 && offsetof(ColorRGB, green) == 4 &&
                  offsetof(ColorRGB, blue) == 8 && sizeof(ColorRGB) == 12,
              "layout is interface");
