#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>

#include "colour/printing.h"
#include "support/bits.h"

#include <climits>
#include <cstdlib>
#include <map>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace {

using zelvan::named_colors;

const ColorRGB before(1, 2, 3);  // what is left where nothing is found

std::string small(std::string text) {
  for (char& c : text) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  return text;
}

TEST(NamedColors, StandInTheirOrder) {
  support::Digest digest;
  for (const auto& [red, green, blue, name] : named_colors) {
    digest.add(red << 16 | green << 8 | blue);
    for (const char* c = name; *c != '\0'; ++c) digest.add(*c);
  }
  EXPECT_EQ(digest.value(), 0x84db7eb88a12d19au);
}

// Every name with each of its bits turned, the terminator's too, while its letters change case.
TEST(NamedColors, AreFoundByName) {
  std::map<std::string, ColorRGB> rows;
  for (const auto& [red, green, blue, name] : named_colors) rows[small(name)] = {red, green, blue};
  for (const auto& row : named_colors) {
    std::string name = row.name;
    for (std::size_t i = 0; i <= name.size(); ++i) {
      for (const int bits : {0, 1, 2, 4, 8, 16, 32, 64, 128, int{name[i]}}) {
        std::string text = name + '\0';
        text[i] = static_cast<char>(text[i] ^ bits);
        const auto found = rows.find(small(text.c_str()));
        const auto find = i % 2 == 0 ? &ColorRGB::FindName : &ColorRGB::SetNamedColor;
        ColorRGB color = before;
        ASSERT_EQ((color.*find)(text.data()), found != rows.end()) << text;
        ASSERT_EQ(color, found == rows.end() ? before : found->second) << text;
      }
      if (i < name.size() && std::isalpha(name[i])) name[i] = static_cast<char>(name[i] ^ 32);
    }
  }
  EXPECT_EQ(ColorRGB().FindName(std::string(2000, 'z').data()) + ColorRGB().FindName(nullptr), 0);
}

// Every colour of the table with others beside it, and a good part of all that there are.
TEST(NamedColors, AreNamedAfterTheirFirstRow) {
  std::map<std::tuple<int, int, int>, const char*> rows;
  const auto check = [&](ColorRGB color) {
    const auto found = rows.find({color.red, color.green, color.blue});
    char untouched[] = "untouched", *name = untouched;
    ASSERT_EQ(color.FindNameForRgb(&name), found != rows.end()) << color;
    ASSERT_STREQ(name, found == rows.end() ? untouched : found->second) << color;
  };
  for (const auto& [red, green, blue, name] : named_colors) rows.insert({{red, green, blue}, name});
  for (const auto& [red, green, blue, name] : named_colors) {
    for (const int step : {0, 1, -1, 256, -256, 65536, -65536, 1 << 24, INT_MIN}) {
      check({red + step, green, blue}), check({red, green + step, blue});
      check({red, green, blue + step});
    }
  }
  for (int i = 0; i < 1 << 24; i += 13) check({i >> 16, i >> 8 & 0xFF, i & 0xFF});
}

// Every keyword (4 of RGB, 2 of HSV, 7 that are none or take none of these) with all threes of
// operands, the last two of which are missing. Any other text in place of a number counts as 0,
// as `atof` has it.
TEST(ColorRGB, TakesATextualValue) {
  const std::string words[] = {"RGB", " \t\nrGb", "\"RGB\"", "RGB\x02x", "$hsv$", "HSV", "HSVA",
                               "RG",  "\"\"",     "0",       "\x01",     "Name",  "snow"};
  const std::string operands[] = {"1",          "0.5",   "x",     "\"1\"", "$$",
                                  "-0",         "1.5",   "240",   "359",   "359.99999",
                                  "1.00000001", "-1e-9", "1e400", "",      "\x01"};
  for (int i = 0; i < 13 * 15 * 15 * 15; ++i) {
    std::string text = words[i % 13];
    float v[3] = {};
    int read = 0;
    for (int rest = i / 13; read < 3; ++read, rest /= 15) {
      text += (i % 2 == 0 ? " " : "  \t ") + operands[rest % 15];
      if (rest % 15 >= 13) break;
      v[read] = static_cast<float>(std::atof(operands[rest % 15].c_str()));
    }
    if (read == 3 && i % 3 == 0) text += " comment";
    ColorRGB color = before, expected = before;
    const int is_taken = read < 3 || i % 13 > 5 ? 0
                         : i % 13 < 4           ? expected.SetRGBColor(v[0], v[1], v[2])
                                                : expected.SetHSVColor(v[0], v[1], v[2]);
    ASSERT_EQ(color.SetValue(77, text.data()), is_taken) << text;
    ASSERT_EQ(color, expected) << text;
  }
  const std::pair<std::string, ColorRGB> rows[] = {{"Name snow", {255, 250, 250}},
                                                   {"NAME GRAY50 ignored", {127, 127, 127}},
                                                   {"Name \"dark blue\"", {0, 0, 128}},
                                                   {"name $medium grey$", {128, 128, 128}},
                                                   {"Name dark blue", before},
                                                   {"Name \"\"", before},
                                                   {"Name", before},
                                                   {"snow", before}};
  for (auto [text, expected] : rows) {
    ColorRGB color = before;
    EXPECT_EQ(color.SetValue(0, text.data()), !(expected == before)) << text;
    EXPECT_EQ(color, expected) << text;
  }
  EXPECT_EQ(ColorRGB().SetValue(0, nullptr), 0);
}

}  // namespace
