#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>
#include <zelvan/detail/bytes_at_once.h>
#include <zelvan/detail/name.h>
#include <zelvan/text/read_field.h>
#include <zelvan/text/str_field.h>
#include <zelvan/var/name_table.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace {

using zelvan::named_colors;
using zelvan::NamedColor;

constexpr std::size_t row_count = std::size(named_colors);

/// Something for each row, made by the compiler.
template <class Make>
constexpr auto for_each_row(Make make) {
  std::array<decltype(make(named_colors[0])), row_count> results{};
  std::transform(std::begin(named_colors), std::end(named_colors), results.begin(), make);
  return results;
}

// ---- What rows are found by

constexpr std::uint32_t packed(int red, int green, int blue) {
  return static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
}

constexpr auto packed_colors = for_each_row(
    [](const NamedColor& color) { return packed(color.red, color.green, color.blue); });

constexpr std::size_t length_of(const char* text) {
  std::size_t length = 0;
  while (text[length] != '\0') ++length;
  return length;
}

constexpr auto lengths =
    for_each_row([](const NamedColor& color) { return length_of(color.name); });
constexpr std::size_t shortest_name = *std::min_element(lengths.begin(), lengths.end());
constexpr std::size_t longest_name = *std::max_element(lengths.begin(), lengths.end());

/// A name in two words, its letters small: its first eight bytes and its last eight, which are the
/// same or overlap if it is short. The terminator counts as the last byte, and the length stands in
/// its place.
struct NameKey {
  std::uint64_t first;
  std::uint64_t last;

  constexpr bool operator==(const NameKey&) const = default;
};

constexpr std::size_t longest_name_in_key = 15;  // with the terminator, both words

/// Four bytes at a time at places that fit any length, since a branch for each length costs more.
constexpr NameKey key_of_name(const char* name, std::size_t length) {
  static_assert(shortest_name >= 3, "four bytes with the terminator");
  const std::size_t last = length - 3;
  const std::size_t second = std::min<std::size_t>(4, last);
  const auto eight_bytes = [name](std::size_t low, std::size_t high) {
    const std::uint64_t bytes =
        zelvan::four_bytes(name + low) | std::uint64_t{zelvan::four_bytes(name + high)} << 32;
    return bytes | zelvan::case_bits(bytes);
  };
  return {eight_bytes(0, second), eight_bytes(last - second, last) | std::uint64_t{length} << 56};
}

constexpr auto name_keys = for_each_row(
    [](const NamedColor& color) { return key_of_name(color.name, length_of(color.name)); });

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

/// Both words of a key in one. Any odd factor with many bits keeps them apart.
constexpr std::uint64_t number_of(const NameKey& key) {
  return key.first * 0xD6E8FEB86659FD93 ^ key.last;
}

constexpr Index by_name = index_by([](auto row) { return number_of(name_keys[row]); },
                                   [](auto a, auto b) { return name_keys[a] == name_keys[b]; });
constexpr Index by_color =
    index_by([](auto row) { return packed_colors[row]; },
             [](auto a, auto b) { return packed_colors[a] == packed_colors[b]; });

static_assert(std::count(by_name.begin(), by_name.end(), empty_slot) == slot_count - row_count,
              "no two names have the same key");

// ---- The textual value

enum ColorModel { model_rgb, model_hsv, model_name };

constexpr VarNameValue color_models[] = {
    {"RGB", model_rgb}, {"HSV", model_hsv}, {"Name", model_name}, {nullptr, 0}};

/// Sets `color` by a text whose fields `next_field` reads. Returns 1, or 0 where `SetValue`
/// refuses.
template <class NextField>
unsigned short set_by_fields(ColorRGB* color, NextField next_field) {
  const str_field* field = next_field();
  int model;
  if (field->type == STR_END || !VarLookupInt(color_models, field->text, &model)) return 0;

  if (model == model_name) {
    field = next_field();
    return field->type == STR_END ? 0 : color->FindName(field->text);
  }

  float operands[3];
  for (float& operand : operands) {
    field = next_field();
    if (field->type == STR_END) return 0;
    operand = static_cast<float>(field->value);
  }
  return model == model_rgb ? color->SetRGBColor(operands[0], operands[1], operands[2])
                            : color->SetHSVColor(operands[0], operands[1], operands[2]);
}

/// True if the bits of all channels together make a number from 0 to 255.
bool are_channels(int red, int green, int blue) { return ((red | green | blue) & ~0xFF) == 0; }

}  // namespace

unsigned short ColorRGB::FindName(char* name) {
  if (name == nullptr) return 0;
  const std::size_t length = std::strlen(name);
  if (length < shortest_name || length > longest_name) return 0;
  const NameKey key = key_of_name(name, length);
  const std::uint16_t row =
      search(by_name, number_of(key), [&](auto candidate) { return name_keys[candidate] == key; });
  if (row == empty_slot) return 0;
  if (length > longest_name_in_key) {  // the key leaves out some behind the first eight
    if (!zelvan::is_same<zelvan::AsWritten>(named_colors[row].name + 8, name + 8)) return 0;
  }
  Set(named_colors[row].red, named_colors[row].green, named_colors[row].blue);
  return 1;
}

unsigned short ColorRGB::SetNamedColor(char* name) { return FindName(name); }

unsigned short ColorRGB::FindNameForRgb(char** name) {
  if (!are_channels(red, green, blue)) return 0;
  const std::uint32_t wanted = packed(red, green, blue);
  const std::uint16_t row = search(
      by_color, wanted, [wanted](auto candidate) { return packed_colors[candidate] == wanted; });
  if (row == empty_slot) return 0;
  *name = const_cast<char*>(named_colors[row].name);
  return 1;
}

unsigned short ColorRGB::SetValue(unsigned short /*reserved*/, char* text) {
  return set_by_fields(this, [text]() mutable {
    const str_field* const field = str_parse(text);
    text = field->next;
    return field;
  });
}

unsigned short ColorRGB::SetValue(const char* text) {
  zelvan::field_record record;
  return set_by_fields(this, [text, &record]() mutable {
    const str_field* const field = zelvan::read_field(text, &record);
    text = field->next;
    return field;
  });
}
