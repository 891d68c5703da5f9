/// How names compare when they are looked up.
#pragma once

#include <zelvan/detail/comparison.h>

#include <array>

namespace zelvan {

constexpr bool is_control(char c) { return c >= 1 && c <= 31; }

/// A name that is compared with many others: up to its first control character, and without case.
class SoughtName {
 public:
  /// Requires: `name` is not null and outlives this.
  explicit SoughtName(const char* name) : name_(name), first_(byte_of_other(*name)) {}

  /// True if the names are the same. Most differ in their first byte, so that one is tested inline.
  bool is(const char* other) const { return byte_of_other(*other) == first_ && is_all_of(other); }

 private:
  static constexpr int significant_characters = 1600;
  static constexpr int block = 8;  // of characters, whose loop the compiler unrolls
  static_assert(significant_characters % block == 0);
  using Bytes = std::array<unsigned char, 256>;

  /// What each byte counts as: a letter as its small form, whatever ends a name as `end`.
  static constexpr Bytes name_bytes(unsigned char end) {
    Bytes bytes = small_forms;
    for (int c = 0; c < 32; ++c) bytes[c] = end;
    return bytes;
  }

  static unsigned char byte_of_other(char c) {
    static constexpr Bytes bytes = name_bytes(0);
    return bytes[static_cast<unsigned char>(c)];
  }

  /// The end of the sought name differs from that of the other, and so from every byte of it: one
  /// test ends a loop over both, at a difference and at the end alike.
  static unsigned char byte_of_sought(char c) {
    static constexpr Bytes bytes = name_bytes(1);
    return bytes[static_cast<unsigned char>(c)];
  }

  bool is_all_of(const char* other) const {
    for (int n = 0; n < significant_characters; n += block) {
      for (int i = n; i < n + block; ++i) {
        if (byte_of_other(other[i]) == byte_of_sought(name_[i])) continue;
        return byte_of_other(other[i]) == 0 && byte_of_other(name_[i]) == 0;
      }
    }
    return true;
  }

  const char* name_;
  unsigned char first_;
};

}  // namespace zelvan
