/// The colour that a drawing attribute holds: a pen of a colour table, and channels of its own.
///
/// Plain values of 6 bytes, without heap: every operation may be called from any thread, except
/// those that look a pen up in a map (see color_map.h).
#pragma once

#include <zelvan/export.h>

#include <cstddef>

class ColorMap;
class ColorRGB;

/// Ways to change a foreground that is too close to its background, for
/// `ColorValue::AdjustForeground`. Any other value changes nothing.
enum ColAdjT : int {
  ColAdjNudge = 1,   ///< moves red by one step, which can be undone
  ColAdjInvert = 2,  ///< turns each channel into 255 minus itself
};

/// A pen, an alpha and three channels of 0 to 255.
///
/// A pen of -1 means that only the channels are known, not a place in a table. Alpha is 255 for a
/// foreground made of channels, 0 for a background or a value made of a pen.
class ColorValue {
 public:
  short pen;            ///< a place in a colour table, or -1
  unsigned char alpha;  ///< 255 opaque; nothing in the library blends
  unsigned char red;    ///< from 0 to 255
  unsigned char green;  ///< from 0 to 255
  unsigned char blue;   ///< from 0 to 255

  /// Makes pen 1, opaque black.
  ZELVAN_INLINE_API ColorValue() : ColorValue(short{1}, 255, 0, 0, 0) {}

  /// Makes a value of a pen alone: alpha and channels are 0.
  ZELVAN_INLINE_API ColorValue(short pen0) : ColorValue(pen0, 0, 0, 0, 0) {}

  /// Makes a value of channels alone: pen -1, alpha 255.
  ZELVAN_INLINE_API ColorValue(unsigned char r, unsigned char g, unsigned char b)
      : ColorValue(short{-1}, 255, r, g, b) {}

  /// Makes a value of alpha (first) and channels; pen -1.
  ZELVAN_INLINE_API ColorValue(unsigned char a, unsigned char r, unsigned char g, unsigned char b)
      : ColorValue(short{-1}, a, r, g, b) {}

  /// Makes a value of all five fields, in their order.
  ZELVAN_INLINE_API ColorValue(short pen0, unsigned char a, unsigned char r, unsigned char g,
                               unsigned char b)
      : pen(pen0), alpha(a), red(r), green(g), blue(b) {}

  /// Unpacks red, green and blue from the bits 0-7, 8-15 and 16-23 of `packed`; alpha 0.
  ///
  /// The pen is -1 if one of the bits 24-31 is set, else the low 16 bits of `pen0`.
  ZELVAN_API ColorValue(int packed, int pen0);

  /// Makes a value of channels of 0 to 1, rounded to the scale 255; pen -1, alpha 255.
  ///
  /// Nothing is checked: a channel out of range keeps its low 8 bits, and a NaN becomes 0.
  ZELVAN_API ColorValue(float r, float g, float b);

  /// Copies all five fields. An assignment returns nothing.
  ColorValue(const ColorValue&) = default;
  ZELVAN_INLINE_API void operator=(const ColorValue& other) {
    SetColorValue(other.pen, other.alpha, other.red, other.green, other.blue);
  }

  /// Returns the field that the function is named after, unchanged.
  ZELVAN_INLINE_API short GetPen() const { return pen; }
  ZELVAN_INLINE_API short GetPen() { return pen; }
  ZELVAN_INLINE_API unsigned char GetAlpha() const { return alpha; }
  ZELVAN_INLINE_API unsigned char GetAlpha() { return alpha; }
  ZELVAN_INLINE_API unsigned char GetRed() const { return red; }
  ZELVAN_INLINE_API unsigned char GetRed() { return red; }
  ZELVAN_INLINE_API unsigned char GetGreen() const { return green; }
  ZELVAN_INLINE_API unsigned char GetGreen() { return green; }
  ZELVAN_INLINE_API unsigned char GetBlue() const { return blue; }
  ZELVAN_INLINE_API unsigned char GetBlue() { return blue; }

  /// Sets the field that the function is named after; the value is not checked.
  ZELVAN_INLINE_API void SetPen(short pen0) { pen = pen0; }
  ZELVAN_INLINE_API void SetAlpha(unsigned char a) { alpha = a; }
  ZELVAN_INLINE_API void SetRed(unsigned char r) { red = r; }
  ZELVAN_INLINE_API void SetGreen(unsigned char g) { green = g; }
  ZELVAN_INLINE_API void SetBlue(unsigned char b) { blue = b; }

  /// Writes all five fields, in their order.
  ZELVAN_INLINE_API void GetColorValue(short& pen0, unsigned char& a, unsigned char& r,
                                       unsigned char& g, unsigned char& b) const {
    pen0 = pen;
    a = alpha;
    r = red;
    g = green;
    b = blue;
  }

  /// Replaces all five fields, in their order, by any values.
  ZELVAN_INLINE_API void SetColorValue(short pen0, unsigned char a, unsigned char r,
                                       unsigned char g, unsigned char b) {
    pen = pen0;
    alpha = a;
    red = r;
    green = g;
    blue = b;
  }

  /// Sets the channels to the low 8 bits of those of `color`, on the scale 255, and alpha to 255.
  /// The pen stays.
  ZELVAN_API void SetColorValueFromRGB(ColorRGB& color);

  /// Sets the channels to the low 8 bits of those of `color`, on the scale 255, and alpha to 0. The
  /// pen stays.
  ZELVAN_API void SetBackgroundColorValueFromRGB(ColorRGB& color);

  /// Unpacks a number that is a colour or a pen. If any of the bits 24-31 is set, it is a colour:
  /// pen -1, alpha 255, and red, green and blue from the bits 0-7, 8-15 and 16-23. Otherwise it is
  /// the pen in the bits 0-7; all other fields become 0.
  ZELVAN_API void SetColorValueFromPackedColor(unsigned int packed);

  /// Sets the pen to that of `a`, and each channel to the exclusive-or of those of `a` and `b`.
  /// Alpha stays.
  ZELVAN_API void SetXorValue(ColorValue& a, ColorValue& b);

  /// Moves this foreground away from `background` if the differences of their channels sum up
  /// to less than 15. Pen and alpha are ignored.
  ///
  /// A nudge adds 1 to red, or subtracts 1 if red is 255.
  ZELVAN_API void AdjustForeground(ColorValue& background, ColAdjT mode);

  /// Undoes a nudge: copies all of `saved`, the value from before, if red differs from its red by
  /// exactly 1 and green and blue are equal. Otherwise does nothing, so an inverted foreground
  /// stays inverted.
  ZELVAN_API void UndoAdjustForeground(ColorValue& saved);

  /// Sets the pen to the one that `ColorMap::GetClosestColor` finds for the channels, its low 16
  /// bits. The map's scale must be 255, as that of the channels is.
  ZELVAN_API void GetClosestColor(ColorMap& map);
  ZELVAN_API void SetColorValuePenFromRGB(ColorMap& map);

  /// Sets the pen as `GetClosestColor` does, if the distance reported is 0; otherwise the pen
  /// stays.
  ///
  /// The distance may be 0 for a neighbour one step away, too.
  ZELVAN_API void SetExactColorValuePenFromRGB(ColorMap& map);

  /// Returns 1 if all five fields are equal, else 0.
  ZELVAN_INLINE_API unsigned short operator==(const ColorValue& other) const {
    return pen == other.pen && alpha == other.alpha && red == other.red && green == other.green &&
           blue == other.blue;
  }
  ZELVAN_INLINE_API unsigned short operator!=(const ColorValue& other) const {
    return !(*this == other);
  }
};

static_assert(offsetof(ColorValue, pen) == 0 && offsetof(ColorValue, alpha) == 2 &&
                  offsetof(ColorValue, red) == 3 && offsetof(ColorValue, green) == 4 &&
                  offsetof(ColorValue, blue) == 5 && sizeof(ColorValue) == 6,
              "layout is interface");
