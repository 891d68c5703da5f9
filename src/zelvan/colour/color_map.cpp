#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>
#include <zelvan/colour/detail/closest_color.h>
#include <zelvan/detail/new_array.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>

namespace {

/// The cache of GetClosestColor: the colour of the last search, the index found and the distance
/// reported. The map is not stored, so a search in another map can return this answer. Module
/// state, all zero at load; the header has the rule for threads.
struct {
  int red, green, blue;
  int index;
  int distance;
} last_answer;

/// Returns `count` black entries; null if `count` is 0 or the heap refuses.
ColorRGB* new_colors(unsigned int count) {
  return count == 0 ? nullptr : zelvan::new_array<ColorRGB>(count).release();
}

/// Sets all entries from red, green and blue of each in turn.
void set_colors(ColorMap* map, const int* rgb) {
  for (unsigned int i = 0; i < map->map_size; ++i, rgb += 3) {
    map->colors[i] = {rgb[0], rgb[1], rgb[2]};
  }
}

bool are_equal(const ColorRGB& a, const ColorRGB& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

// ---- 32-bit arithmetic that wraps where a sum doesn't fit

unsigned int wrapped_difference(int a, int b) {
  return static_cast<unsigned int>(a) - static_cast<unsigned int>(b);
}

unsigned int wrapped_square(unsigned int v) { return v * v; }

/// Returns the squared distance from black to white on the scale `max_value`, in 32 bits; wraps.
unsigned int farthest(unsigned int max_value) { return 3 * wrapped_square(max_value); }

unsigned int absolute_difference(int a, int b) {
  const unsigned int difference = wrapped_difference(a, b);
  return static_cast<int>(difference) < 0 ? 0 - difference : difference;
}

/// Returns the mean absolute difference of the channels, the distance that is reported. No third
/// ends in a half, so adding one to the sum before the integer division rounds correctly. A mean of
/// 2^31 does not fit an `int` and becomes the smallest `int`, as in the conversion of a double. It
/// occurs only if all three channels differ by 2^31, or one of them by 1 less.
int mean_difference(const ColorRGB& a, const ColorRGB& b) {
  const auto sum = std::uint64_t{absolute_difference(a.red, b.red)} +
                   absolute_difference(a.green, b.green) + absolute_difference(a.blue, b.blue);
  return static_cast<int>((sum + 1) / 3);
}

/// Returns `map`, and hides from the optimiser where it came from. The optimiser assumes that
/// `this` is not null, and would remove a test for null.
const ColorMap* hide_from_optimiser(const ColorMap* map) {
  asm("" : "+r"(map));
  return map;
}

}  // namespace

zelvan::Closest zelvan::find_closest(const ColorMap& map, const ColorRGB& target, Closest best) {
  return with_best_form(
      [&](auto form) { return find_closest(form, map.colors, 1, map.map_size, target, best); });
}

zelvan::Closest zelvan::closest_to_beat(const ColorMap& map) {
  return {static_cast<float>(farthest(map.max_value)) + 1.0f, 0};
}

int zelvan::closest_answer(const ColorMap& map, const ColorRGB& target, const Closest& found,
                           int* distance) {
  const ColorRGB key = target;  // a copy: writing `*distance` may overwrite the target
  const int index = static_cast<int>(found.index);
  const int reported = map.map_size == 0 ? INT_MAX : mean_difference(map.colors[found.index], key);
  *distance = reported;
  // Only stored here, never read back: a search on another thread may overwrite it at any time.
  last_answer = {key.red, key.green, key.blue, index, reported};
  return index;
}

ColorMap::ColorMap(int size, int max_value0)
    : map_size(0), map_count(0), max_value(static_cast<unsigned int>(max_value0)), colors(nullptr) {
  if (size > 0) colors = new_colors(static_cast<unsigned int>(size));
  if (colors != nullptr) map_size = map_count = static_cast<unsigned int>(size);
}

ColorMap::ColorMap(int size, int max_value0, int* rgb) : ColorMap(size, max_value0) {
  set_colors(this, rgb);
}

ColorMap::ColorMap(const ColorMap& other) : ColorMap(0, 0) { *this = other; }

ColorMap& ColorMap::operator=(const ColorMap& other) {
  if (this == &other) return *this;
  if (map_size != other.map_size) {
    delete[] colors;
    colors = new_colors(other.map_size);
  }
  max_value = other.max_value;
  map_size = colors == nullptr ? 0 : other.map_size;
  map_count = colors == nullptr ? 0 : other.map_count;
  std::copy_n(other.colors, map_size, colors);
  return *this;
}

ColorMap::~ColorMap() { delete[] colors; }

unsigned short ColorMap::SetIndex(int index, unsigned short reserved, char* text) {
  if (index < 0 || static_cast<unsigned int>(index) >= map_size) return 0;
  return colors[index].SetValue(reserved, text);
}

unsigned short ColorMap::SetIndex(int index, const char* text) {
  if (index < 0 || static_cast<unsigned int>(index) >= map_size) return 0;
  return colors[index].SetValue(text);
}

unsigned short ColorMap::SetRGBIndex(int index, float red, float green, float blue) {
  if (index < 0 || static_cast<unsigned int>(index) >= map_size) return 0;
  return colors[index].SetRGBColor(red, green, blue);
}

void ColorMap::SetMap(int index, ColorRGB* color) { colors[index] = *color; }

void ColorMap::CopyColorMap(ColorMap* target) {
  if (map_count != target->map_count) return;
  target->max_value = max_value;
  std::copy_n(colors, map_count, target->colors);
}

unsigned short ColorMap::Identical(ColorMap* other) {
  return std::equal(colors, colors + map_count, other->colors, other->colors + other->map_count,
                    are_equal);
}

int ColorMap::GetClosestColor(ColorRGB* target, int* distance, unsigned short fresh) {
  if (fresh == 0) {
    const ColorRGB last(last_answer.red, last_answer.green, last_answer.blue);
    if (are_equal(*target, last)) {
      *distance = last_answer.distance;
      return last_answer.index;
    }
  }

  const zelvan::Closest found =
      zelvan::find_closest(*this, *target, zelvan::closest_to_beat(*this));
  return zelvan::closest_answer(*this, *target, found, distance);
}

int ColorMap::GetSimilarColor(ColorRGB* target) {
  int best = static_cast<int>(farthest(max_value) + 1);
  int found = 0;
  for (unsigned int i = 0; i < map_size; ++i) {
    const ColorRGB& entry = colors[i];
    if (entry.red < 0) continue;
    const int distance =
        static_cast<int>(wrapped_square(wrapped_difference(entry.red, target->red)) +
                         wrapped_square(wrapped_difference(entry.green, target->green)) +
                         wrapped_square(wrapped_difference(entry.blue, target->blue)));
    if (distance < best && distance != 0) {
      best = distance;
      found = static_cast<int>(i);
    }
  }
  return found;
}

unsigned short ColorMap::ColxGetReadOnlyColor(ColorRWMap* list, int red, int green, int blue,
                                              int tolerance) {
  const std::int64_t limit = 3 * std::int64_t{max_value};
  const unsigned int count = std::min(list->rw_count, map_size);
  bool is_available = false;
  for (unsigned int i = 0; i < count; ++i) {
    const std::int64_t dr = std::abs(std::int64_t{colors[i].red} - red);
    const std::int64_t dg = std::abs(std::int64_t{colors[i].green} - green);
    const std::int64_t db = std::abs(std::int64_t{colors[i].blue} - blue);
    const std::int64_t sum = dr + dg + db;
    if (sum == 0) return 1;
    if (sum < limit && dr < tolerance && dg < tolerance && db < tolerance) is_available = true;
  }
  return is_available;
}

#ifdef __clang__
__attribute__((no_sanitize("null")))
#endif
unsigned int
ColorMap::GetValue(ImageType type, RGBOrder order, int index) {
  const ColorMap* const map = hide_from_optimiser(this);
  if (map == nullptr) return index == 0 ? 1 : 0;
  if (type == ImageType8Bit) return static_cast<unsigned int>(index);
  if (type != ImageType1Bit && type != ImageType32Bit) return 1;
  if (map->colors == nullptr || index < 0) return 1;
  if (static_cast<unsigned int>(index) >= map->map_size) return 1;
  ColorRGB color = map->colors[index];
  return order == RGBOrderRedHigh ? color.RGBToBGR32BitColor() : color.RGBToRGB32BitColor();
}

void* ColNewColorMap(int size, int max_value, int* rgb) {
  ColorMap* const map = ColOpen(size, max_value);
  if (map != nullptr) set_colors(map, rgb);
  return map;
}

void ColDeleteColorMap(void* map) { delete static_cast<ColorMap*>(map); }
