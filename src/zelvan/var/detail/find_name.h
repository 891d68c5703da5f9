/// Finding a name among others.
#pragma once

#include <zelvan/detail/bytes_at_once.h>
#include <zelvan/detail/name.h>

#include <cstddef>
#include <cstdint>

namespace zelvan {

/// A name of eight bytes or more, for comparisons with many that begin alike (Layer_1, Layer_2):
/// the beginning is compared eight bytes at a time. Nothing behind the end of a name is read: eight
/// bytes are there if none of the first seven is the terminator.
template <class Rule>
class LongName {
 public:
  /// True if the name has eight bytes that count.
  static bool has_eight(const char* name) {
    for (int i = 0; i < 8; ++i) {
      if (meaning<Rule>(name[i]) == '\0') return false;
    }
    return true;
  }

  /// *Requires:* `has_eight(name)`, and `name` outlives this.
  explicit LongName(const char* name) : name_(name) {
    do {
      const std::uint64_t bytes = eight_bytes(name);
      case_bits_[word_count_] = case_bits(bytes);
      words_[word_count_] = bytes | case_bits(bytes);
      ++word_count_;
      name += 8;
    } while (word_count_ < most_words && has_eight(name));
  }

  /// The same as `is_same`.
  bool is(const char* other) const {
    std::size_t start = 0;
    for (std::size_t i = 0; i < word_count_; ++i, start += 8) {
      const char* const bytes = other + start;
      const std::uint64_t first = static_cast<unsigned char>(bytes[0]);
      // Behind this the first byte is no terminator either, since the one sought isn't.
      if ((((first | case_bits_[i]) ^ words_[i]) & 0xFF) != 0) return false;
      if (ends_early(bytes) || (eight_bytes(bytes) | case_bits_[i]) != words_[i]) return false;
    }
    return first_difference<Rule>(name_, other, start) == Rule::most;
  }

 private:
  static constexpr std::size_t most_words = 4;  // names that are alike for longer are rare

  static bool ends_early(const char* bytes) {
    return bytes[1] == '\0' || bytes[2] == '\0' || bytes[3] == '\0' || bytes[4] == '\0' ||
           bytes[5] == '\0' || bytes[6] == '\0';
  }

  const char* name_;
  std::size_t word_count_ = 0;
  std::uint64_t words_[most_words];      // the beginning, its letters small
  std::uint64_t case_bits_[most_words];  // what makes the letters of another small at their places
};

/// Moves on to the first place whose name is the same as `name`, or to the end. A `Place` has
/// `name()`, `is_end()` and `advance()`.
template <class Rule, class Place>
Place find_name(Place place, const char* name) {
  for (std::size_t alike = 4; !place.is_end(); place.advance()) {
    const std::size_t difference = first_difference<Rule>(place.name(), name);
    if (difference == Rule::most) return place;
    if (difference < alike) continue;
    if (LongName<Rule>::has_eight(name)) {  // the next ones are sooner compared by eight bytes
      place.advance();
      break;
    }
    alike = Rule::most;
  }
  if (place.is_end()) return place;
  const LongName<Rule> sought(name);
  while (!place.is_end() && !sought.is(place.name())) place.advance();
  return place;
}

}  // namespace zelvan
