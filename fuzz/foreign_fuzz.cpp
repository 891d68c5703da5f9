// Numbers and texts of other machines: compares conversions of numbers with a model that computes
// their values, byte and bit order with plain loops, and translates character sets there and back.
// Everything runs between two buffers at odd addresses, and again in place.

#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>
#include <zelvan/tra/foreign_floats.h>

#include "bytes.h"
#include "support/float_models.h"

#include <cstdio>

namespace {

using fuzz::require;
using support::Word;

/// Returns the result of `convert` for `input`, after checking that it is the same between odd
/// addresses and in place.
template <class Convert>
std::string converted(const std::string& input, Convert convert) {
  const std::unique_ptr<char[]> from(new char[input.size() + 1]), to(new char[input.size() + 1]);
  std::memcpy(from.get() + 1, input.data(), input.size());
  convert(from.get() + 1, to.get() + 1);
  convert(from.get() + 1, from.get() + 1);
  require(std::memcmp(from.get() + 1, to.get() + 1, input.size()) == 0);
  return std::string(to.get() + 1, input.size());
}

/// Returns the big-endian number at `p`.
Word number_at(const char* p, std::size_t size) {
  Word value = 0;
  for (std::size_t i = 0; i < size; ++i) value = value << 8 | static_cast<unsigned char>(p[i]);
  return value;
}

void convert_floats(const std::string& input, std::size_t size) {
  const unsigned short type = size == 4 ? 0xA4 : 0xB8;
  const auto count = static_cast<unsigned short>(input.size() / size);
  const int bits = size == 4 ? 24 : 56;
  for (const int format : {0, 4, 16}) {
    const std::string output = converted(
        input.substr(0, count * size),
        [&](const char* from, char* to) { tra_convert_flpt(format, type, count, from, to); });
    for (std::size_t i = 0; i < output.size(); i += size) {
      const Word in = number_at(&input[i], size);
      require(number_at(&output[i], size) == (format == 0   ? in
                                              : format == 4 ? support::ibm_of(in, bits)
                                                            : support::ieee_of(in, bits)));
    }
  }
}

void swap_bytes(const std::string& input, std::size_t size, unsigned short type) {
  const std::string whole = input.substr(0, input.size() / size * size);
  const std::string output = converted(whole, [&](const char* from, char* to) {
    tra_swap_bytes(type, static_cast<unsigned>(whole.size() / size), from, to);
  });
  for (std::size_t i = 0; i < whole.size(); i += size) {
    require(std::equal(&whole[i], &whole[i] + size, output.substr(i, size).rbegin()));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 3000));
  const auto count = static_cast<unsigned short>(input.size());
  convert_floats(input, 4);
  convert_floats(input, 8);
  for (const int type : {0x42, 0x52, 0x62}) swap_bytes(input, 2, static_cast<unsigned short>(type));
  for (const int type : {0x74, 0x84, 0x94, 0xA4}) {
    swap_bytes(input, 4, static_cast<unsigned short>(type));
  }
  swap_bytes(input, 8, 0xB8);
  const std::string reversed =
      converted(input, [&](const char* from, char* to) { tra_reverse_bits(count, from, to); });
  const std::string ebcdic = converted(input, [&](const char* from, char* to) {
    tra_convert_charset(TRA_ASCII_TO_EBCDIC, count, from, to);
  });
  const std::string ascii = converted(ebcdic, [&](const char* from, char* to) {
    tra_convert_charset(TRA_EBCDIC_TO_ASCII, count, from, to);
  });
  for (std::size_t i = 0; i < input.size(); ++i) {
    const auto byte = static_cast<unsigned char>(input[i]);
    for (int bit = 0; bit < 8; ++bit) require((byte >> bit & 1) == (reversed[i] >> (7 - bit) & 1));
    const char plain = static_cast<char>(byte & 0x7F);
    require(ascii[i] == (plain == 0x13 ? '\0' : plain == '_' ? '-' : plain));
  }
  return 0;
}
