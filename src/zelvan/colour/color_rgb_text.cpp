#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>
#include <zelvan/detail/comparison.h>
#include <zelvan/text/read_field.h>
#include <zelvan/text/str_field.h>
#include <zelvan/var/name_table.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace {

using zelvan::named_colors;
using zelvan::NamedColor;

constexpr std::size_t row_count = std::size(named_colors);

constexpr std::uint32_t number_of_color(int red, int green, int blue) {
  return static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
}

/// Returns a hash of a name without regard to case; no two names of the table share one.
constexpr std::uint32_t number_of_name(const char* name) {
  std::uint32_t number = 0;
  for (; *name != '\0'; ++name) {
    number = number * 31 + static_cast<std::uint32_t>(zelvan::small_form(*name));
  }
  return number;
}

/// A hash table of row numbers, more than 80 % empty, built at compile time. Collisions are
/// resolved by linear probing: a row goes into the next free slot, and a search ends at an empty
/// one.
class Index {
 public:
  static constexpr std::uint16_t no_row = 0xFFFF;

  /// Indexes rows by the result of `number_of_row`: of rows with equal numbers, the first.
  template <class NumberOfRow>
  constexpr explicit Index(NumberOfRow number_of_row) {
    for (std::uint16_t row = 0; row < row_count; ++row) {
      const std::uint32_t number = number_of_row(named_colors[row]);
      std::size_t slot = slot_of(number);
      while (slots_[slot].row != no_row && slots_[slot].number != number) slot = next(slot);
      if (slots_[slot].row == no_row) slots_[slot] = {number, row};
    }
  }

  /// Returns the row that has this number, or `no_row`.
  constexpr std::uint16_t row_of(std::uint32_t number) const {
    std::size_t slot = slot_of(number);
    while (slots_[slot].row != no_row && slots_[slot].number != number) slot = next(slot);
    return slots_[slot].row;
  }

  constexpr std::size_t size() const {
    return std::count_if(slots_.begin(), slots_.end(), [](Slot s) { return s.row != no_row; });
  }

 private:
  struct Slot {
    std::uint32_t number = 0;
    std::uint16_t row = no_row;
  };

  static constexpr std::size_t slot_of(std::uint32_t number) {
    return number * 0x9E3779B9u >> 20;  // golden-ratio hashing spreads close numbers
  }
  static constexpr std::size_t next(std::size_t slot) { return (slot + 1) % slot_count; }

  static constexpr std::size_t slot_count = 4096;
  std::array<Slot, slot_count> slots_{};
};

constexpr Index by_name([](const NamedColor& color) { return number_of_name(color.name); });
constexpr Index by_color([](const NamedColor& color) {
  return number_of_color(color.red, color.green, color.blue);
});

static_assert(by_name.size() == row_count, "no two names have one number");

// ---- The textual value

enum ColorModel { model_rgb, model_hsv, model_name };

constexpr VarNameValue color_models[] = {
    {"RGB", model_rgb}, {"HSV", model_hsv}, {"Name", model_name}, {nullptr, 0}};

/// Sets `color` from a text whose fields `next_field` reads. Returns 1, or 0 if `SetValue` must
/// refuse the text.
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

/// True if every channel is from 0 to 255: no bit above the low eight is set in any.
bool are_channels(int red, int green, int blue) { return ((red | green | blue) & ~0xFF) == 0; }

}  // namespace

unsigned short ColorRGB::FindName(char* name) {
  if (name == nullptr) return 0;
  const std::uint16_t row = by_name.row_of(number_of_name(name));
  if (row == Index::no_row || zelvan::_stricmp(named_colors[row].name, name) != 0) return 0;
  Set(named_colors[row].red, named_colors[row].green, named_colors[row].blue);
  return 1;
}

unsigned short ColorRGB::SetNamedColor(char* name) { return FindName(name); }

unsigned short ColorRGB::FindNameForRgb(char** name) {
  if (!are_channels(red, green, blue)) return 0;
  const std::uint16_t row = by_color.row_of(number_of_color(red, green, blue));
  if (row == Index::no_row) return 0;
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
