#include "common/colour_text.h"

// A private header of the library. The examples are built with it and may read its table.
#include <zelvan/colour/detail/named_color_table.h>
#include <zelvan/text/str_field.h>
#include <zelvan/text/tokenize.h>

#include "common/error.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <optional>
#include <vector>

namespace example {

namespace {

std::string in_small_letters(std::string text) {
  str_lower_string(text.data());
  return text;
}

// Returns the edit distance (Levenshtein): the fewest letters to insert, delete or change to turn
// `a` into `b`.
std::size_t letters_between(const std::string& a, const std::string& b) {
  // steps[i]: the distance from the letters of `a` so far to the first i letters of `b`
  std::vector<std::size_t> steps(b.size() + 1);
  std::iota(steps.begin(), steps.end(), std::size_t{0});
  for (const char letter : a) {
    std::size_t diagonal = steps[0]++;
    for (std::size_t i = 0; i < b.size(); ++i) {
      const std::size_t changed = diagonal + (letter != b[i]);
      diagonal = steps[i + 1];
      steps[i + 1] = std::min({changed, steps[i] + 1, diagonal + 1});
    }
  }
  return steps.back();
}

std::string closest_name(const std::string& wanted) {
  const auto distance = [&](const zelvan::NamedColor& color) {
    return letters_between(in_small_letters(wanted), in_small_letters(color.name));
  };
  return std::min_element(std::begin(zelvan::named_colors), std::end(zelvan::named_colors),
                          [&](const auto& a, const auto& b) { return distance(a) < distance(b); })
      ->name;
}

// Reads # and six hexadecimal digits.
std::optional<ColorRGB> read_hexadecimal(const std::string& text) {
  constexpr std::size_t length = 7;
  if (text.size() != length || text.front() != '#') return std::nullopt;
  const char* const end = text.data() + length;
  unsigned int rgb = 0;
  if (std::from_chars(text.data() + 1, end, rgb, 16).ptr != end) return std::nullopt;
  ColorRGB colour;
  colour.BGR32BitToRGBColor(static_cast<int>(rgb));
  return colour;
}

std::string hint_for(std::string text) {
  if (text.starts_with('#')) return "after # come six hexadecimal digits, as in #ff8000";
  const str_field* field = str_parse(text.data());
  const std::string keyword = field->text ? in_small_letters(field->text) : "";
  if (keyword == "rgb") return "RGB takes red, green and blue, each from 0 to 1";
  if (keyword == "hsv") {
    return "HSV takes a hue from 0 to below 360, saturation and value from 0 to 1";
  }
  const std::string wanted = trim(keyword == "name" ? field->next : text.c_str(), " \"$");
  if (wanted.empty()) return "write RGB 1 0.5 0, HSV 240 1 1, Name orange or #ff8000";
  const std::string name = closest_name(wanted);
  const char* const quote = name.find(' ') == std::string::npos ? "" : "\"";
  return "did you mean 'Name " + (quote + name + quote) + "'?";
}

}  // namespace

ColorRGB read_colour(const std::string& option, std::string text) {
  if (const auto color = read_hexadecimal(text)) return *color;
  ColorRGB color;
  if (color.SetValue(0, text.data())) return color;
  throw Error(option + ": '" + text + "' is no colour; " + hint_for(text));
}

}  // namespace example
