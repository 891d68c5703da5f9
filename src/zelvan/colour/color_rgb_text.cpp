#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>
#include <zelvan/platform/comparison.h>
#include <zelvan/text/str_field.h>
#include <zelvan/var/name_table.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace {

using zelvan::named_colors;
using zelvan::NamedColor;

// ---- The indices: the rows in the order of their names and in that of their colours, made by
// the compiler. A search by halves finds the row that a walk from row 0 up would find.

constexpr std::size_t row_count = std::size(named_colors);
using RowOrder = std::array<std::uint16_t, row_count>;

template <class Before>
constexpr RowOrder rows_ordered(Before before) {
  RowOrder rows{};
  for (std::size_t i = 0; i < row_count; ++i) rows[i] = static_cast<std::uint16_t>(i);
  std::sort(rows.begin(), rows.end(), before);
  return rows;
}

constexpr unsigned char small_letter(char c) {
  return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}

/// True if row a's name comes before row b's as `_stricmp` has it.
constexpr bool is_named_before(std::uint16_t a, std::uint16_t b) {
  const char* p = named_colors[a].name;
  const char* q = named_colors[b].name;
  while (*p != '\0' && small_letter(*p) == small_letter(*q)) ++p, ++q;
  return small_letter(*p) < small_letter(*q);
}

constexpr std::uint32_t packed(int red, int green, int blue) {
  return static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
}

constexpr std::uint32_t packed(const NamedColor& color) {
  return packed(color.red, color.green, color.blue);
}

/// True if row a's colour comes before row b's, or is the same and a is the earlier row.
constexpr bool is_coloured_before(std::uint16_t a, std::uint16_t b) {
  const std::uint32_t color_a = packed(named_colors[a]);
  const std::uint32_t color_b = packed(named_colors[b]);
  return color_a != color_b ? color_a < color_b : a < b;
}

constexpr RowOrder by_name = rows_ordered(is_named_before);
constexpr RowOrder by_color = rows_ordered(is_coloured_before);

static_assert(std::adjacent_find(by_name.begin(), by_name.end(),
                                 [](auto a, auto b) { return !is_named_before(a, b); }) ==
                  by_name.end(),
              "no two names are equal");

// ---- The textual value

enum ColorModel { model_rgb, model_hsv, model_name };

constexpr VarNameValue color_models[] = {
    {"RGB", model_rgb}, {"HSV", model_hsv}, {"Name", model_name}, {nullptr, 0}};

bool is_channel(int v) { return v >= 0 && v <= 255; }

}  // namespace

unsigned short ColorRGB::FindName(char* name) {
  if (name == nullptr) return 0;
  const auto place = std::partition_point(by_name.begin(), by_name.end(), [name](auto row) {
    return zelvan::platform::_stricmp(named_colors[row].name, name) < 0;
  });
  if (place == by_name.end()) return 0;
  const NamedColor& found = named_colors[*place];
  if (zelvan::platform::_stricmp(found.name, name) != 0) return 0;
  Set(found.red, found.green, found.blue);
  return 1;
}

unsigned short ColorRGB::SetNamedColor(char* name) { return FindName(name); }

unsigned short ColorRGB::FindNameForRgb(char** name) {
  if (!is_channel(red) || !is_channel(green) || !is_channel(blue)) return 0;
  const std::uint32_t wanted = packed(red, green, blue);
  const auto place = std::partition_point(by_color.begin(), by_color.end(), [wanted](auto row) {
    return packed(named_colors[row]) < wanted;
  });
  if (place == by_color.end() || packed(named_colors[*place]) != wanted) return 0;
  *name = const_cast<char*>(named_colors[*place].name);
  return 1;
}

unsigned short ColorRGB::SetValue(unsigned short /*reserved*/, char* text) {
  const str_field* field = str_parse(text);
  int model;
  if (field->type == STR_END || !VarLookupInt(color_models, field->text, &model)) return 0;

  if (model == model_name) {
    field = str_parse(field->next);
    return field->type == STR_END ? 0 : FindName(field->text);
  }

  float operands[3];
  for (float& operand : operands) {
    field = str_parse(field->next);
    if (field->type == STR_END) return 0;
    operand = static_cast<float>(field->value);
  }
  return model == model_rgb ? SetRGBColor(operands[0], operands[1], operands[2])
                            : SetHSVColor(operands[0], operands[1], operands[2]);
}
