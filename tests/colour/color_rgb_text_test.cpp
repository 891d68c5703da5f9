#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>

#include "colour/printing.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <strings.h>

namespace {

using zelvan::named_colors;
using zelvan::NamedColor;

ColorRGB color_of(const NamedColor& row) { return {row.red, row.green, row.blue}; }

/// The first row for which `matches` holds, by a plain walk; null if there is none.
template <class Predicate>
const NamedColor* first_row(Predicate matches) {
  const auto* end = std::end(named_colors);
  const auto* row = std::find_if(std::begin(named_colors), end, matches);
  return row == end ? nullptr : row;
}

const NamedColor* row_named(const std::string& name) {
  return first_row([&](const NamedColor& r) { return strcasecmp(r.name, name.c_str()) == 0; });
}

TEST(NamedColors, StandInTheirOrder) {
  ASSERT_EQ(std::size(named_colors), 658u);
  const std::pair<int, const char*> marks[] = {
      {0, "snow"},         {27, "DarkSlateGrey"}, {135, "thistle"},       {136, "snow1"},
      {199, "blue4"},      {200, "dark blue"},    {449, "MediumPurple4"}, {453, "thistle4"},
      {454, "gray0"},      {555, "grey50"},       {556, "medium grey"},   {606, "grey75"},
      {607, "light grey"}, {657, "grey100"},
  };
  for (const auto& [row, name] : marks) EXPECT_STREQ(named_colors[row].name, name);
  int sum = 0;
  int blanks = 0;
  for (const NamedColor& row : named_colors) {
    sum += row.red + row.green + row.blue;
    blanks += std::strchr(row.name, ' ') != nullptr;
  }
  EXPECT_EQ(sum, 288714);
  EXPECT_EQ(blanks, 8);
  for (int n = 0; n <= 100; ++n) {
    const int grey = static_cast<int>(n * 2.55 + 0.5);
    for (const char* spelling : {"gray", "grey"}) {
      const NamedColor* row = row_named(spelling + std::to_string(n));
      ASSERT_NE(row, nullptr);
      EXPECT_EQ(color_of(*row), ColorRGB(grey, grey, grey)) << row->name;
    }
  }
}

// Every name in three cases, and texts beside it, against a walk from row 0 up.
TEST(NamedColors, AreFoundByNameAsAWalkFindsThem) {
  const auto check = [](std::string text) {
    const NamedColor* row = row_named(text);
    const ColorRGB before(1, 2, 3);
    ColorRGB color = before;
    ASSERT_EQ(color.FindName(text.data()), row != nullptr) << text;
    ASSERT_EQ(color, row ? color_of(*row) : before) << text;
    ASSERT_EQ(ColorRGB().SetNamedColor(text.data()), row != nullptr) << text;
  };
  for (const NamedColor& row : named_colors) {
    const std::string name = row.name;
    std::string capitals = name, mixed = name;
    for (char& c : capitals) c = static_cast<char>(std::toupper(c));
    for (std::size_t i = 0; i < name.size(); i += 2) mixed[i] = capitals[i];
    for (const std::string& text : {name, capitals, mixed, name + "0", name + "\xE9", " " + name,
                                    name.substr(1), name.substr(0, name.size() - 1)}) {
      check(text);
    }
  }
  for (const char* text : {"", "DarkBlue", "zzz", "\x01", "\xFF", "gray101"}) check(text);
  EXPECT_EQ(ColorRGB().FindName(nullptr), 0);
}

// Every colour of the table and all of its neighbours, against a walk from row 0 up.
TEST(NamedColors, AreNamedAfterTheirFirstRow) {
  for (const NamedColor& center : named_colors) {
    for (int i = 0; i < 27; ++i) {
      ColorRGB color(center.red + i / 9 - 1, center.green + i / 3 % 3 - 1, center.blue + i % 3 - 1);
      const NamedColor* row = first_row([&](const NamedColor& r) { return color_of(r) == color; });
      char untouched[] = "untouched";
      char* name = untouched;
      ASSERT_EQ(color.FindNameForRgb(&name), row != nullptr) << color;
      ASSERT_STREQ(name, row ? row->name : untouched) << color;
    }
  }
  char* name = nullptr;
  EXPECT_EQ(ColorRGB(256, 0, 0).FindNameForRgb(&name), 0);  // a blend of bits would name it
  EXPECT_EQ(ColorRGB(0, -1, 0).FindNameForRgb(&name), 0);
}

// x11-common's list of colours knows all names but three.
TEST(NamedColors, AgreeWithTheX11List) {
  std::ifstream list("/usr/share/X11/rgb.txt");
  if (!list) GTEST_SKIP() << "needs /usr/share/X11/rgb.txt of x11-common";
  std::set<std::string> known, different;
  for (std::string line; std::getline(list, line);) {
    ColorRGB listed, color;
    char name[64];
    if (std::sscanf(line.c_str(), "%d %d %d %63[^\n]", &listed.red, &listed.green, &listed.blue,
                    name) != 4) {
      continue;  // a comment
    }
    if (!color.FindName(name)) continue;
    known.insert(row_named(name)->name);
    if (!(color == listed)) different.insert(row_named(name)->name);
  }
  EXPECT_EQ(known.size(), 655u);
  EXPECT_EQ(different, (std::set<std::string>{"dark blue", "dark cyan", "dark green",
                                              "dark magenta", "dark red", "light grey"}));
}

TEST(ColorRGB, TakesATextualValue) {
  const auto check = [](const char* text, int is_taken, const ColorRGB& expected) {
    std::string copy = text ? text : "";
    ColorRGB color(11, 12, 13);
    EXPECT_EQ(color.SetValue(77, text ? copy.data() : nullptr), is_taken) << copy;
    EXPECT_EQ(color, expected) << copy;
  };
  const std::pair<const char*, ColorRGB> rows[] = {
      {"RGB 1 0 0", {255, 0, 0}},          {" \trgb 1.0 0 0 comment", {255, 0, 0}},
      {"\"RGB\" 0 1 0", {0, 255, 0}},      {"RGB x 0 1", {0, 0, 255}},
      {"RGB \"1\" $1$ 1", {0, 0, 255}},    {"RGB 1.00000001 -0.0 0", {255, 0, 0}},
      {"hsv 240 1 1", {0, 0, 255}},        {"HSV 120 1 0.5", {0, 128, 0}},
      {"Name snow", {255, 250, 250}},      {"NAME GRAY50 ignored", {127, 127, 127}},
      {"Name \"dark blue\"", {0, 0, 128}}, {"Name $medium grey$", {128, 128, 128}},
  };
  for (const auto& [text, color] : rows) check(text, 1, color);
  for (const char* text : {"RGB 1 0", "RGB 1.5 0 0", "RGB 0 0 -1e-9", "RGB 1e400 0 0", "RGBA 0 0 0",
                           "HSV 360 1 1", "HSV 0 1", "Name dark blue", "Name \"\"", "Name", "snow",
                           "\"\" 1 1 1", "0 1 1 1", "", static_cast<const char*>(nullptr)}) {
    check(text, 0, {11, 12, 13});
  }
}

}  // namespace
