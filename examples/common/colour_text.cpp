#include "common/colour_text.h"

// The names are the library's own business; the examples, built beside it, may look.
#include <zelvan/colour/detail/named_color_table.h>
#include <zelvan/text/str_field.h>
#include <zelvan/text/tokenize.h>

#include "common/error.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace example {

namespace {

std::string in_small_letters(std::string text) {
  str_lower_string(text.data());
  return text;
}

// How many letters have to be put in, left out or changed to make `b` of `a` (Levenshtein).
std::size_t letters_between(const std::string& a, const std::string& b) {
  std::vector<std::size_t> steps(b.size() + 1);  // from the letters of `a` so far
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

std::string hint_for(std::string text) {
  const str_field* field = str_parse(text.data());
  const std::string keyword = field->text ? in_small_letters(field->text) : "";
  if (keyword == "rgb") return "RGB takes red, green and blue, each from 0 to 1";
  if (keyword == "hsv") {
    return "HSV takes a hue from 0 to below 360, saturation and value from 0 to 1";
  }
  const std::string wanted = trim(keyword == "name" ? field->next : text.c_str(), " \"$");
  if (wanted.empty()) return "write RGB 1 0.5 0, HSV 240 1 1 or Name orange";
  const std::string name = closest_name(wanted);
  const char* const quote = name.find(' ') == std::string::npos ? "" : "\"";
  return "did you mean 'Name " + (quote + name + quote) + "'?";
}

}  // namespace

ColorRGB read_colour(const std::string& option, std::string text) {
  ColorRGB color;
  if (color.SetValue(0, text.data())) return color;
  throw Error(option + ": '" + text + "' is no colour; " + hint_for(text));
}

}  // namespace example
