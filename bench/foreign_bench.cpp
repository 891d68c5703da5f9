// Measures the conversion of other machines' bytes, bits, numbers and characters, inside and
// outside the cache, compared with the plain loops that a user would write. IBM numbers of single
// precision are also compared with segyio, where it is installed.

#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>
#include <zelvan/tra/foreign_floats.h>

#include "contest.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#ifdef ZELVAN_HAS_SEGYIO
#include <segyio/segy.h>
#endif

namespace {

using Bytes = std::vector<unsigned char>;

struct Buffers {
  explicit Buffers(std::size_t n) : in(n), out(n), other(n) {
    std::mt19937 random(1);
    for (unsigned char& b : in) b = static_cast<unsigned char>(random());
  }
  bool are_same() const { return out == other; }
  Bytes in, out, other;
};

template <class T>
T big_endian(const unsigned char* p) {
  T value;
  std::memcpy(&value, p, sizeof value);
  if constexpr (sizeof(T) == 8)
    return __builtin_bswap64(value);
  else
    return __builtin_bswap32(value);
}

template <class T>
void store_big_endian(T value, unsigned char* p) {
  if constexpr (sizeof(T) == 8)
    value = __builtin_bswap64(value);
  else
    value = __builtin_bswap32(value);
  std::memcpy(p, &value, sizeof value);
}

// The usual hand-written form: computes by value, and handles only normal numbers.
void ibm_singles_by_hand(const Bytes& in, Bytes& out) {
  for (std::size_t i = 0; i < in.size(); i += 4) {
    const auto word = big_endian<std::uint32_t>(&in[i]);
    const float fraction = static_cast<float>(word & 0xFFFFFF);
    const float value = std::ldexp(fraction, 4 * static_cast<int>(word >> 24 & 0x7F) - 280);
    store_big_endian(std::bit_cast<std::uint32_t>(word >> 31 ? -value : value), &out[i]);
  }
}

void ibm_doubles_by_hand(const Bytes& in, Bytes& out) {
  for (std::size_t i = 0; i < in.size(); i += 8) {
    const auto word = big_endian<std::uint64_t>(&in[i]);
    std::uint64_t fraction = word & 0xFF'FFFF'FFFF'FFFF;
    const int excess = std::max(static_cast<int>(std::bit_width(fraction)) - 53, 0);
    fraction = fraction >> excess << excess;
    const double value =
        std::ldexp(static_cast<double>(fraction), 4 * static_cast<int>(word >> 56 & 0x7F) - 312);
    store_big_endian(std::bit_cast<std::uint64_t>(word >> 63 ? -value : value), &out[i]);
  }
}

template <class T>
void ieee_by_hand(const Bytes& in, Bytes& out) {
  constexpr bool is_single = sizeof(T) == 4;
  using Word = std::conditional_t<is_single, std::uint32_t, std::uint64_t>;
  constexpr int bits = is_single ? 24 : 56;
  for (std::size_t i = 0; i < in.size(); i += sizeof(T)) {
    int exponent;
    const Word word = big_endian<Word>(&in[i]);
    const T fraction = std::frexp(std::fabs(std::bit_cast<T>(word)), &exponent);
    const int shift = (exponent & 3) == 0 ? 0 : 4 - (exponent & 3);
    const auto digits = static_cast<Word>(std::ldexp(fraction, bits - shift));
    const auto characteristic = static_cast<Word>((exponent + shift) / 4 + 64);
    store_big_endian<Word>(word >> (bits + 7) << (bits + 7) | characteristic << bits | digits,
                           &out[i]);
  }
}

/// Returns normal numbers in the range of both formats, the only ones that the plain loops convert.
template <class T>
Bytes ieee_numbers(std::size_t n) {
  std::mt19937_64 random(1);
  Bytes bytes(n * sizeof(T));
  using Word = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
  for (std::size_t i = 0; i < n; ++i) {
    const T value = static_cast<T>(std::ldexp(static_cast<double>(random() >> 11), -40)) + T{1};
    store_big_endian(std::bit_cast<Word>(random() % 2 == 0 ? value : -value),
                     &bytes[i * sizeof(T)]);
  }
  return bytes;
}

template <class T>
void floats(const char* kind) {
  constexpr unsigned short type = sizeof(T) == 4 ? 0xA4 : 0xB8;
  constexpr std::size_t n = 4096;
  const auto ieee = std::make_shared<Buffers>(n * sizeof(T));
  ieee->in = ieee_numbers<T>(n);
  const auto ibm = std::make_shared<Buffers>(n * sizeof(T));
  const auto convert = [](int format, const std::shared_ptr<Buffers>& b) {
    return [=] {
      tra_convert_flpt(format, type, static_cast<unsigned short>(n), b->in.data(), b->out.data());
    };
  };
  const auto to_ibm = convert(4, ieee), from_ibm = convert(16, ibm);
  to_ibm();
  ibm->in = ieee->out;
  const auto ieee_hand = [ieee] { ieee_by_hand<T>(ieee->in, ieee->other); };
  const auto ibm_hand = [ibm] {
    (sizeof(T) == 4 ? ibm_singles_by_hand : ibm_doubles_by_hand)(ibm->in, ibm->other);
  };
  bench::contest(
      std::string("IEEE to IBM, ") + kind, [=] { return to_ibm(), ieee_hand(), ieee->are_same(); },
      {{"zelvan", to_ibm}, {"plain loop", ieee_hand}}, n);
  bench::contest(
      std::string("IBM to IEEE, ") + kind, [=] { return from_ibm(), ibm_hand(), ibm->are_same(); },
      {{"zelvan", from_ibm}, {"plain loop", ibm_hand}}, n);
#ifdef ZELVAN_HAS_SEGYIO
  if (sizeof(T) == 8) return;
  // segyio converts in place, and the result has this machine's byte order. To do the same work,
  // the library converts in place, too, and then swaps the bytes.
  const auto segyio = [ibm] {
    ibm->other = ibm->in;
    segy_to_native(1, n, reinterpret_cast<char*>(ibm->other.data()));
  };
  const auto native = [ibm] {
    ibm->out = ibm->in;
    tra_convert_flpt(16, type, static_cast<unsigned short>(n), ibm->out.data(), ibm->out.data());
    tra_swap_bytes(type, n, ibm->out.data(), ibm->out.data());
  };
  bench::contest(
      "IBM to native, singles", [=] { return segyio(), native(), ibm->are_same(); },
      {{"zelvan", native}, {"segyio", segyio}}, n);
#endif
}

template <class T>
void swap_by_hand(const unsigned char* in, unsigned char* out, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    T value;
    std::memcpy(&value, in + i * sizeof value, sizeof value);
    if constexpr (sizeof(T) == 8) value = __builtin_bswap64(value);
    if constexpr (sizeof(T) == 4) value = __builtin_bswap32(value);
    if constexpr (sizeof(T) == 2) value = __builtin_bswap16(value);
    std::memcpy(out + i * sizeof value, &value, sizeof value);
  }
}

void reverse_by_hand(const unsigned char* in, unsigned char* out, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    unsigned v = in[i];
    v = (v & 0x55) << 1 | (v & 0xAA) >> 1;
    v = (v & 0x33) << 2 | (v & 0xCC) >> 2;
    out[i] = static_cast<unsigned char>((v & 0x0F) << 4 | (v & 0xF0) >> 4);
  }
}

void translate_by_hand(const unsigned char* table, const unsigned char* in, unsigned char* out,
                       std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) out[i] = table[in[i]];
}

template <class T>
void swap_bytes(unsigned short type, std::size_t bytes, const char* where) {
  const auto b = std::make_shared<Buffers>(bytes);
  const auto count = static_cast<unsigned>(bytes / sizeof(T));
  const auto ours = [=] { tra_swap_bytes(type, count, b->in.data(), b->out.data()); };
  const auto by_hand = [=] { swap_by_hand<T>(b->in.data(), b->other.data(), count); };
  bench::contest(
      "swap " + std::to_string(sizeof(T)) + " bytes, " + where,
      [=] { return ours(), by_hand(), b->are_same(); }, {{"zelvan", ours}, {"plain loop", by_hand}},
      count);
}

void bits_and_characters() {
  constexpr std::size_t n = 4096;
  const auto b = std::make_shared<Buffers>(n);
  const auto reverse = [=] { tra_reverse_bits(n, b->in.data(), b->out.data()); };
  const auto by_hand = [=] { reverse_by_hand(b->in.data(), b->other.data(), n); };
  bench::contest(
      "reverse bits", [=] { return reverse(), by_hand(), b->are_same(); },
      {{"zelvan", reverse}, {"plain loop", by_hand}}, n);

  unsigned char table[256];
  for (int i = 0; i < 256; ++i) table[i] = static_cast<unsigned char>(i);
  tra_convert_charset(TRA_EBCDIC_TO_ASCII, 256, table, table);
  const auto translate = [=] {
    tra_convert_charset(TRA_EBCDIC_TO_ASCII, n, b->in.data(), b->out.data());
  };
  const Bytes copy(table, table + 256);
  const auto by_table = [=] { translate_by_hand(copy.data(), b->in.data(), b->other.data(), n); };
  bench::contest(
      "EBCDIC to ASCII", [=] { return translate(), by_table(), b->are_same(); },
      {{"zelvan", translate}, {"plain loop", by_table}}, n);
}

const bench::Rows rows([] {
  floats<float>("singles");
  floats<double>("doubles");
  swap_bytes<std::uint16_t>(0x42, 1 << 14, "in cache");
  swap_bytes<std::uint32_t>(0x74, 1 << 14, "in cache");
  swap_bytes<std::uint64_t>(0xB8, 1 << 14, "in cache");
  swap_bytes<std::uint32_t>(0x74, 1 << 26, "64 MB");
  bits_and_characters();
});

}  // namespace
