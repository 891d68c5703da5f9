#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>
#include <zelvan/text/str_field.h>
#include <zelvan/var/detail/name.h>
#include <zelvan/var/name_table.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <utility>

namespace {

using zelvan::named_colors;
using zelvan::NamedColor;

constexpr std::size_t row_count = std::size(named_colors);

constexpr std::uint32_t packed(int red, int green, int blue) {
  return static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
}

constexpr std::uint32_t packed(const NamedColor& color) {
  return packed(color.red, color.green, color.blue);
}

// ---- The indices, made by the compiler: hash tables of row numbers, three quarters empty. A row
// whose slot is taken goes into the next free one, so a search ends at an empty slot.

constexpr std::size_t slot_count = 4096;  // a power of two
constexpr std::uint16_t empty_slot = 0xFFFF;
using Index = std::array<std::uint16_t, slot_count>;

constexpr std::size_t slot_of(std::uint64_t key) {
  return (key * 0x9E3779B97F4A7C15) >> 52;  // the golden ratio spreads keys that are close together
}

/// The row in the slot where the search for a key ends: one that `matches`, or `empty_slot`.
template <class Matches>
constexpr std::uint16_t search(const Index& index, std::uint64_t key, Matches matches) {
  std::size_t slot = slot_of(key);
  while (index[slot] != empty_slot && !matches(index[slot])) slot = (slot + 1) % slot_count;
  return index[slot];
}

/// Puts every row in, save those that come behind a row with which they are `same`.
template <class KeyOf, class Same>
constexpr Index index_by(KeyOf key_of, Same same) {
  Index index{};
  index.fill(empty_slot);
  for (std::uint16_t row = 0; row < row_count; ++row) {
    const std::uint64_t key = key_of(row);
    if (search(index, key, [&](auto other) { return same(row, other); }) != empty_slot) continue;
    std::size_t slot = slot_of(key);
    while (index[slot] != empty_slot) slot = (slot + 1) % slot_count;
    index[slot] = row;
  }
  return index;
}

constexpr std::size_t length_of(const char* text) {
  std::size_t length = 0;
  while (text[length] != '\0') ++length;
  return length;
}

/// The lengths of the shortest and of the longest name.
constexpr std::pair name_lengths = [] {
  std::pair lengths(length_of(named_colors[0].name), std::size_t{0});
  for (const NamedColor& color : named_colors) {
    lengths.first = std::min(lengths.first, length_of(color.name));
    lengths.second = std::max(lengths.second, length_of(color.name));
  }
  return lengths;
}();
static_assert(name_lengths.first >= 3, "the key of a name is made of its ends");

/// The length of a name and seven of its letters in one word: those at which the names of the
/// table differ most. Setting one bit takes the case off letters and makes few others alike.
constexpr std::uint64_t key_of_name(const char* name, std::size_t length) {
  std::uint64_t key = 0;
  for (std::size_t i : {std::size_t{0}, std::size_t{1}, std::size_t{2}, length / 2, length - 3,
                        length - 2, length - 1}) {
    key = key << 8 | static_cast<unsigned char>(name[i]) | 0x20;
  }
  return key << 8 | length;
}

constexpr Index by_name = index_by(
    [](auto row) {
      const char* name = named_colors[row].name;
      return key_of_name(name, length_of(name));
    },
    [](auto a, auto b) {
      return zelvan::is_same_text(named_colors[a].name, named_colors[b].name);
    });
constexpr Index by_color =
    index_by([](auto row) { return packed(named_colors[row]); },
             [](auto a, auto b) { return packed(named_colors[a]) == packed(named_colors[b]); });

static_assert(std::count(by_name.begin(), by_name.end(), empty_slot) == slot_count - row_count,
              "no two names are equal");

// ---- The textual value

enum ColorModel { model_rgb, model_hsv, model_name };

constexpr VarNameValue color_models[] = {
    {"RGB", model_rgb}, {"HSV", model_hsv}, {"Name", model_name}, {nullptr, 0}};

bool is_channel(int v) { return v >= 0 && v <= 255; }

}  // namespace

unsigned short ColorRGB::FindName(char* name) {
  if (name == nullptr) return 0;
  const std::size_t length = std::strlen(name);
  if (length < name_lengths.first || length > name_lengths.second) return 0;
  const std::uint16_t row = search(by_name, key_of_name(name, length), [name](auto candidate) {
    return zelvan::is_same_text(named_colors[candidate].name, name);
  });
  if (row == empty_slot) return 0;
  Set(named_colors[row].red, named_colors[row].green, named_colors[row].blue);
  return 1;
}

unsigned short ColorRGB::SetNamedColor(char* name) { return FindName(name); }

unsigned short ColorRGB::FindNameForRgb(char** name) {
  if (!is_channel(red) || !is_channel(green) || !is_channel(blue)) return 0;
  const std::uint32_t wanted = packed(red, green, blue);
  const std::uint16_t row = search(by_color, wanted, [wanted](auto candidate) {
    return packed(named_colors[candidate]) == wanted;
  });
  if (row == empty_slot) return 0;
  *name = const_cast<char*>(named_colors[row].name);
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
