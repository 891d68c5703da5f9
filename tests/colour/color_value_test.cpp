#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/color_value.h>

#include "support/bits.h"

#include <array>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace {

using Fields = std::array<int, 5>;  // pen, alpha, red, green, blue

Fields fields(const ColorValue& v) {
  return {v.GetPen(), v.GetAlpha(), v.GetRed(), v.GetGreen(), v.GetBlue()};
}

unsigned char byte(int v) { return static_cast<unsigned char>(v); }

ColorValue moved(ColorValue front, int mode, ColorValue background = {8, 9, 254, 100, 0}) {
  front.AdjustForeground(background, static_cast<ColAdjT>(mode));
  return front;
}

TEST(ColorValue, IsMadeOfPenOrChannels) {
  const std::pair<ColorValue, Fields> rows[] = {
      {ColorValue(), {1, 255, 0, 0, 0}},
      {ColorValue(short{-7}), {-7, 0, 0, 0, 0}},
      {ColorValue(byte(1), byte(2), byte(3)), {-1, 255, 1, 2, 3}},
      {ColorValue(byte(1), byte(2), byte(3), byte(4)), {-1, 1, 2, 3, 4}},
      {ColorValue(1.01f, -0.01f, NAN), {-1, 255, 2, 254, 0}},          // 258 and -2
      {ColorValue(8421505.0f, 1e30f, -0.001f), {-1, 255, 127, 0, 0}},  // first needs 33 bits
      {moved({2, 3, 255, 106, 7}, 1), {2, 3, 254, 106, 7}},            // differences of 14 in all
      {moved({2, 3, 253, 107, 7}, 1), {2, 3, 253, 107, 7}},            // of 15
  };
  for (const auto& [value, expected] : rows) EXPECT_EQ(fields(value), expected);
  for (int field = 0; field < 5; ++field) {  // each counts in a comparison
    const ColorValue a(short{0}), b(field == 0, field == 1, field == 2, field == 3, field == 4);
    EXPECT_TRUE(a != b && b == ColorValue(b) && !(a == b) && !(b != ColorValue(b))) << field;
  }
}

// All operations on colours that are close in all channels.
TEST(ColorValue, KeepsEveryField) {
  support::FnvDigest digest;
  std::mt19937 random(8);
  const auto add = [&](const ColorValue& value) {
    for (int field : fields(value)) digest.add(field);
  };
  for (int i = 0; i < 200000; ++i) {
    const unsigned int p = random() & (0xFFFFFF | 1u << (24 + i % 8)), q = random();
    const int pen = static_cast<int>(q), packed = static_cast<int>(p);
    ColorValue ground(short(pen), byte(p >> 3), byte(p), byte(p >> 8), byte(p >> 16));
    ColorValue front = ground, blend = front, taken = moved(front, i % 4, ground);
    front.pen = 7, front.alpha = 3;
    for (unsigned char* c : {&front.red, &front.green, &front.blue, &blend.red}) {
      *c = byte(*c + (random() % 2 == 0 ? 0 : static_cast<int>(random() % 17) - 8));
    }
    add(moved(front, i % 4, ground)), add(taken);
    blend.SetXorValue(front, taken), add(blend);
    front.UndoAdjustForeground(ground), add(front);
    ColorRGB wide(packed, packed >> 8, pen);
    taken.SetColorValueFromRGB(wide), add(taken);
    taken.SetBackgroundColorValueFromRGB(wide), add(taken);
    taken.SetColorValueFromPackedColor(p), add(taken), add(ColorValue(packed, pen));
    const float half = (byte(packed) + 0.5f) / 255.0f;
    const float wild = std::ldexp(static_cast<float>(pen), i % 48 - 24);  // to 63 bits of product
    add(ColorValue(half, std::nextafter(half, 0.0f), wild));
  }
  EXPECT_EQ(digest.value(), 0x6fada71519fe3599u);
}

}  // namespace
