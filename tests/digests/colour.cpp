#include <zelvan/colour/detail/named_color_table.h>

#include "colour/closest_model.h"
#include "digests/group.h"

#include <cctype>
#include <climits>
#include <cmath>
#include <functional>
#include <memory>
#include <span>

namespace {

unsigned char byte(int v) { return static_cast<unsigned char>(v); }

void take(Digest& digest, const ColorValue& v) {
  short pen;
  unsigned char alpha, red, green, blue;
  v.GetColorValue(pen, alpha, red, green, blue);
  digest(pen, alpha, red, green, blue);
}

// Colours that are close in all channels, or equal in some; channels as `float` that are a half on
// the scale, just below it, or far beyond.
const Group values("colour.values", [](Digest& digest) {
  Random random(8);
  for (int i = 0; i < 100'000; ++i) {
    const int packed = random.below(1 << 24) | (random.below(256) << 24 & 1 << (24 + i % 8));
    const int wide = random.below(INT_MAX) * (i % 2 == 0 ? 1 : -1);
    ColorValue ground(short(wide), byte(packed >> 3), byte(packed), byte(packed >> 8),
                      byte(packed >> 16));
    ColorValue front = ground, blend = front, v;
    front.SetPen(7);
    front.SetAlpha(3);
    for (unsigned char* c : {&front.red, &front.green, &front.blue, &blend.red}) {
      *c = byte(*c + (random.below(2) == 0 ? 0 : random.below(17) - 8));
    }
    ColorRGB color(packed, packed >> 8, wide);
    const auto mode = static_cast<ColAdjT>(i % 4);
    const float half = (byte(packed) + 0.5f) / 255.0f;
    const float far = std::ldexp(float(wide), i % 48 - 24);  // to 63 bits of product
    const std::function<void()> steps[] = {
        [&] { v = ColorValue(); },
        [&] { v = ground; },
        [&] { v.AdjustForeground(ground, mode); },
        [&] { v.UndoAdjustForeground(ground); },
        [&] { v.SetXorValue(front, blend); },
        [&] { v = front; },
        [&] { v.AdjustForeground(ground, mode); },
        [&] { v.UndoAdjustForeground(ground); },
        [&] { v.SetColorValueFromRGB(color); },
        [&] { v.SetBackgroundColorValueFromRGB(color); },
        [&] { v.SetColorValueFromPackedColor(packed); },
        [&] { v = ColorValue(packed, wide); },
        [&] { v = ColorValue(short(wide)); },
        [&] { v = ColorValue(byte(wide), byte(packed), byte(i)); },
        [&] { v = ColorValue(byte(wide), byte(packed), byte(i), byte(7)); },
        [&] { v = ColorValue(half, std::nextafter(half, 0.0f), i % 16 == 0 ? NAN : far); },
    };
    for (const auto& step : steps) {
      step();
      take(digest, v);
      digest(v == ground, v != ground, v == front, v != blend);
    }
  }
});

// All operations on hard numbers, half degrees, parts of a scale and any numbers. The first three
// show in a last digit how the products for falling and rising channels are grouped.
const Group conversions("colour.conversions", [](Digest& digest) {
  Random random(5);
  const auto number = [&]() -> float {
    const float hard[] = {NAN,           INFINITY,      -INFINITY, -0x1p-149f,   -0.0f,
                          0x1.000002p0f, 0x1.67fffep8f, 360.0f,    0x1.0101p-9f, 0x1.010102p-9f};
    const int kind = random.below(16);
    return kind == 0  ? hard[random.below(10)]
           : kind < 9 ? float(random.below(721)) / 720.0f
                      : float(random.unit());
  };
  const ColorHSV grouped[] = {{0x1.0415p6f, 0x1.6dd8a2p-1f, 0x1.693508p-1f},
                              {0x1.d9078p7f, 0x1.908118p-3f, 0x1.3b2d8p-1f},
                              {0x1.f1d87p6f, 0x1.9134dep-1f, 0x1.95807ap-1f}};
  for (int i = 0; i < 200'000; ++i) {
    const int scales[] = {255, 255, 1, 1000, -7, INT_MAX};
    const int scale = scales[i < 3 ? 5 : random.below(6)];
    const int range = i % 3 == 0 ? 4 : i % 3 == 1 ? 256 : 100'000'000;  // few values: many ties
    const float a = number(), b = number(), c = number();
    ColorHSV hsv = {a * (i % 4 > 0 ? 360.0f : i % 8 == 0 ? 9000.0f : -9000.0f), b, c};
    if (i < 3) hsv = grouped[i];
    ColorRGB color, set;
    color.HsvToRgb(&hsv, scale);
    digest(color, set.SetRGBColor(b, c, a), set);
    digest(set.SetHSVColor(hsv.hue, c, b), set);
    for (int* channel : {&color.red, &color.green, &color.blue}) *channel = random.below(range);
    color.green -= i % 16 == 0 ? range : 0;
    color.RgbToHsv(scale, &hsv);
    digest(hsv.hue, hsv.saturation, hsv.value, color.RGBTo24BitColor(), color.RGBToRGB32BitColor(),
           color.RGBToBGR32BitColor());
    const int packed = random.below(INT_MAX) * (i % 2 == 0 ? 1 : -1);
    set.Col24BitToRGBColor(packed);
    digest(set);
    set.RGB32BitToRGBColor(packed);
    digest(set);
    set.BGR32BitToRGBColor(packed);
    digest(set);
    set.SetRGBColorFromColorValue(ColorValue(packed, 0));
    digest(set);
  }
});

const ColorRGB before(11, 12, 13);  // what a refused setter leaves

// Keywords, or what is none, with all threes of operands. Some are missing; 0.9 as `float` is 229
// on the scale, as `double` 230.
const Group texts("colour.texts", [](Digest& digest) {
  const std::string words[] = {"RGB", " \t\nrGb", "RGB\x02x", "$hsv$",
                               "RG",  "\"\"",     "\x01",     "Name"};
  const std::string operands[] = {"1",   "0.5",       "x",          "\"1\"", "$$", "-0",   "1.5",
                                  "240", "359.99999", "1.00000001", "-1e-9", "",   "\x01", "0.9"};
  ColorMap map(3, 255);
  for (int i = 0; i < 8 * 14 * 14 * 14; ++i) {
    std::string text = words[i % 8];
    int rest = i / 8;
    for (int read = 0; read < 3; ++read, rest /= 14) {
      text += (i % 2 == 0 ? " " : "  \t ") + operands[rest % 14];
    }
    ColorRGB color = before;
    digest(color.SetValue(77, text.data()), color);
    digest(map.SetIndex(i % 5 - 1, 0, text.data()));
    for (int k = 0; k < 3; ++k) digest(map.colors[k]);
  }
  for (std::string text : {"Name snow", "NAME \"dark BLUE\" more", "Name dark blue", "name"}) {
    ColorRGB color = before;
    digest(color.SetValue(0, text.data()), color.SetValue(0, nullptr), color);
  }
});

// Each name with each of its bits turned, the terminator's too, while its letters change case; each
// colour with others beside it, and a good part of all that there are.
const Group names("colour.names", [](Digest& digest) {
  const auto take_name = [&](ColorRGB color) {
    char none[] = "none", *name = none;
    digest(color.FindNameForRgb(&name), name);
  };
  for (const auto& [red, green, blue, row_name] : zelvan::named_colors) {
    std::string name = row_name;
    for (std::size_t i = 0; i <= name.size(); ++i) {
      for (const int bits : {0, 1, 2, 4, 8, 16, 32, 64, 128, int{name[i]}}) {
        std::string text = name + '\0';
        text[i] = static_cast<char>(text[i] ^ bits);
        ColorRGB color = before;
        digest(i % 2 == 0 ? color.FindName(text.data()) : color.SetNamedColor(text.data()), color);
      }
      std::string longer = name.substr(0, i) + name.substr(std::max<std::size_t>(i, 1) - 1);
      digest(ColorRGB().FindName(longer.data()));
      if (i < name.size() && std::isalpha(name[i])) name[i] = static_cast<char>(name[i] ^ 32);
    }
    for (const int step : {0, 1, -1, 256, -256, 65536, -65536, 1 << 24, INT_MIN}) {
      take_name({red + step, green, blue});
      take_name({red, green + step, blue});
      take_name({red, green, blue + step});
    }
  }
  for (int i = 0; i < 1 << 24; i += 61) take_name({i >> 16, i >> 8 & 0xFF, i & 0xFF});
  digest(ColorRGB().FindName(nullptr));
});

void take(Digest& digest, const ColorMap& map) {
  digest(map.map_size, map.map_count, map.max_value, std::span(map.colors, map.map_size));
}

std::pair<int, int> closest(ColorMap& map, ColorRGB target, unsigned short fresh) {
  int distance = -1;
  const int index = map.GetClosestColor(&target, &distance, fresh);
  return {index, distance};
}

/// Before any other search.
const auto black_at_load = closest(*std::make_unique<ColorMap>(2, 255), {}, 0);

// Maps of every size that a vector leaves a rest of, and as many that a translation of many pens
// sorts; then one whose index needs 17 bits. What is found is what a walk finds. With a `fresh` of
// 0 the last answer comes again, from whatever map.
const Group searches("colour.searches", [](Digest& digest) {
  digest(black_at_load.first, black_at_load.second);
  std::mt19937 random(4);
  ColorMap none(0, 255), source(40, 0);
  ColorRGB last(1, 2, 3);
  auto answer = closest(none, last, 1);
  for (int round = 72 * 40; round >= 0; --round) {
    const int size = round % 72 + (round == 0 ? 70000 : round % 72 < 36 ? 0 : 28);
    ColorMap map = random_map(size, random);
    if (round == 0) std::fill_n(map.colors, 65537, ColorRGB(-1, 0, 0));
    ColorXfm xfm(40 - round % 3);
    for (ColorRGB& target : std::span(source.colors, 40)) {
      const auto fresh = static_cast<unsigned short>(random() % 2 << 8);
      target = random() % 4 == 0 ? last : random_target(map, random);
      const bool is_last =
          target.red == last.red && target.green == last.green && target.blue == last.blue;
      if (fresh != 0 || !is_last) answer = closest_in(map, target);
      digest.expect(closest(map, last = target, fresh) == answer);
      int distance = -1;
      answer = closest_in(map, last);
      digest.expect(ColGetClosestColor(&last, &map, &distance) == answer.first);
      digest(distance, map.GetSimilarColor(&last));
    }
    ColMapColors(&source, &map, &xfm);
    answer = closest_in(map, source.colors[xfm.xfm_size - 1]);
    last = source.colors[xfm.xfm_size - 1];
    for (unsigned pen = 0; pen < 42; ++pen) digest(xfm.DoColorXfm(pen));
    digest(xfm.hist_exact, xfm.hist_3, xfm.hist_7, xfm.hist_15, xfm.hist_31);
  }
});

// Colours so far away that a step makes less of a difference than the last digit of a `float`; and
// a full scale away, where the last digit tells whether that is too far.
const Group distant("colour.distant", [](Digest& digest) {
  Random random(6);
  for (int i = 0; i < 20'000; ++i) {
    ColorMap map(2 + i % 19, i % 2 == 0 ? 2300 + i / 2 : 100'000'000);
    ColorRGB target(map.max_value, map.max_value, map.max_value);
    for (ColorRGB& color : std::span(map.colors, map.map_size)) {
      if (i % 2 != 0) color = {random.below(9), random.below(9), random.below(9)};
    }
    const auto [index, distance] = closest(map, target, 1);
    digest(index, distance);
  }
});

__attribute__((noinline, no_sanitize("null"))) unsigned value_of(ColorMap* map, int type, int order,
                                                                 int index) {
  return map->GetValue(static_cast<ImageType>(type), static_cast<RGBOrder>(order), index);
}

// All operations on two maps that are often equal but for a channel or the count.
const Group maps("colour.maps", [](Digest& digest) {
  std::mt19937 random(9);
  ColorMap* volatile none = nullptr;  // so that no compiler warns of calls through it
  for (int i = 0; i < 12'000; ++i) {
    const int size = static_cast<int>(random() % 9) - 1, n = static_cast<int>(random()) >> i % 32;
    const int index = i % 8 == 0 ? n : i % 11 - 1;
    ColorMap map = random_map(size, random), other = random_map(i % 9, random);
    if (i % 4 > 0) other = map;
    take(digest, other);
    void* const made = ColNewColorMap(size, n, reinterpret_cast<int*>(map.colors));
    take(digest, *static_cast<ColorMap*>(made));
    ColDeleteColorMap(made);
    const unsigned entries = other.map_size;
    if (i % 3 == 0 && entries > 0) (&other.colors->red)[random() % (3 * entries)] ^= 1;
    if (i % 5 == 0 && entries > 0) other.map_count -= 1;
    if (i % 10 == 0 && size > 0) map.map_count -= 1;
    digest(map.Identical(&other), other.Identical(&map));

    ColorRGB color = random_target(map, random);
    for (auto find : {&ColorValue::GetClosestColor, &ColorValue::SetColorValuePenFromRGB,
                      &ColorValue::SetExactColorValuePenFromRGB}) {
      ColorValue value(7, 8, byte(color.red), byte(color.green), byte(color.blue));
      (value.*find)(map);
      take(digest, value);
    }
    ColorXfm *xfm = ColOpenXfm(i % 7 - 1), same(0);
    for (int use = i % 3; use > 0; --use) ColMapColors(use == 1 ? &map : &other, &other, xfm);
    same = *xfm;
    digest(std::span(same.xfm_table, same.xfm_size), same.xfm_table == nullptr, same.DoColorXfm(i),
           same.hist_exact, same.hist_3, same.hist_7, same.hist_15, same.hist_31);
    same.xfm_table = nullptr;
    ColCloseXfm(&xfm);

    ColorRWMap used(9), rest(i % 8 - 1), same_rest(0);
    for (unsigned pen = 0; pen < 9; ++pen) {
      if (random() % 2 == 0) used.rw_list[used.rw_count++] = pen;
    }
    digest(map.ColxGetReadOnlyColor(&used, color.red, color.green, color.blue, n),
           map.ColxGetReadOnlyColor(&used, color.red, color.green, color.blue, i % 9));
    used.MakeRoList(&rest, i % 9 - 1);
    same_rest = rest;
    digest(same_rest.rw_list == nullptr, std::span(same_rest.rw_list, same_rest.rw_count));
    same_rest.rw_list = nullptr;

    digest(value_of(none, i % 33, i % 3, index));
    for (int type : {0, 1, 2, 8, 31, 32}) digest(value_of(&map, type, i % 3, index));
    digest(map.SetRGBIndex(index, 0.5f, 0.25f, static_cast<float>(i % 3)));
    if (map.map_size > 0) map.SetMap(static_cast<int>(map.map_size) - 1, &color);
    take(digest, map);
    map.CopyColorMap(&other);
    take(digest, other);
    other = map;
    take(digest, other);
    take(digest, ColorMap(other));
    map = static_cast<const ColorMap&>(map);
    take(digest, map);
  }
  ColDeleteColorMap(none);
});

}  // namespace
