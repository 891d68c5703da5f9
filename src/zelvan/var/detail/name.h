/// How names compare in look-ups.
#pragma once

#include <zelvan/detail/comparison.h>

#include <array>

namespace zelvan {

constexpr bool is_control(char c) { return c >= 1 && c <= 31; }

/// A name to compare with many others. Ignores case, and what follows the first control character
/// or the first 1600 characters.
class SoughtName {
 public:
  /// Requires: `name` is not null and outlives this object.
  explicit SoughtName(const char* name) : name_(name), first_(byte_of_other(*name)) {}

  /// Returns true if the names are equal. Most names differ in their first byte, so the test of
  /// that byte is inline.
  bool is(const char* other) const { return byte_of_other(*other) == first_ && is_all_of(other); }

 private:
  static constexpr int significant_characters = 1600;
  using Bytes = std::array<unsigned char, 256>;

  /// Returns a table that maps letters to lower case, all bytes that end a name (0 to 31) to `end`,
  /// and other bytes to themselves.
  static constexpr Bytes name_bytes(unsigned char end) {
    Bytes bytes = small_forms;
    for (int c = 0; c < 32; ++c) bytes[c] = end;
    return bytes;
  }

  static unsigned char byte_of_other(char c) {
    static constexpr Bytes bytes = name_bytes(0);
    return bytes[static_cast<unsigned char>(c)];
  }

  /// Maps a byte of the sought name. Bytes that end it become 1, which no byte of another name
  /// becomes: so one test ends the loop both at a difference and at the end.
  static unsigned char byte_of_sought(char c) {
    static constexpr Bytes bytes = name_bytes(1);
    return bytes[static_cast<unsigned char>(c)];
  }

  bool is_all_of(const char* other) const {
    int n = 0;
    while (n < significant_characters && byte_of_other(other[n]) == byte_of_sought(name_[n])) ++n;
    return n == significant_characters ||
           (byte_of_other(other[n]) == 0 && byte_of_other(name_[n]) == 0);
  }

  const char* name_;
  unsigned char first_;
};

}  // namespace zelvan
