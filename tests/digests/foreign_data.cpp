#include "digests/group.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes some_bytes(Random& random, std::size_t n) {
  Bytes bytes(n);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random.below(256));
  return bytes;
}

/// Converts the same array in both directions: read as IEEE to IBM, and read as IBM to IEEE.
void log_converted(Log& log, unsigned short type, const Bytes& from) {
  const auto n = static_cast<unsigned short>(from.size() / (type & 15));
  for (const int format : {4, 16}) {
    Bytes to(from.size());
    tra_convert_flpt(format, type, n, from.data(), to.data());
    log("tra_convert_flpt", inputs(format, type, n, from), to);
  }
}

// Numbers of any bits, in arrays of every length modulo that of a vector; then all values of sign
// and exponent, with fractions next to each power of two.
void log_numbers(Log& log, unsigned short type) {
  const int size = type & 15;
  Random random(2);
  for (int n = 0; n <= 70; ++n) log_converted(log, type, some_bytes(random, n * size));
  for (std::uint64_t exponent = 0; exponent < 4096; ++exponent) {
    Bytes numbers;
    for (int bit = 0; bit < 52; ++bit) {
      const std::uint64_t fraction = (std::uint64_t{1} << bit) - random.below(2);
      const std::uint64_t number = exponent << 52 | fraction;
      for (int byte = 0; byte < size; ++byte) {
        numbers.push_back(static_cast<unsigned char>(number >> (56 - 8 * byte)));
      }
    }
    log_converted(log, type, numbers);
  }
}

const Group singles("tra.convert_singles", [](Log& log) { log_numbers(log, 0xA4); });
const Group doubles("tra.convert_doubles", [](Log& log) { log_numbers(log, 0xB8); });

}  // namespace
