/// Translations of arrays, element by element.
#pragma once

#include <zelvan/detail/vector_forms.h>
#include <zelvan/tra/detail/byte_strings.h>

#include <cstddef>
#include <cstdint>

namespace zelvan {

// A step translates one element. `Word` is the type of the element in memory.

/// Reverses the bytes of an element.
template <class Element>
struct SwapBytes {
  using Word = Element;
  Word operator()(Word element) const { return reversed(element); }
};

/// Reverses the bits of a byte.
struct ReverseBits {
  using Word = std::uint8_t;
  Word operator()(Word byte) const;
};

/// Looks a byte up in a table of 256, or in one of 128 by its lower seven bits.
struct LookUp {
  using Word = std::uint8_t;

  unsigned char table[256];
  /// The table for vector look-ups, in rows of 16 bytes and two halves of 8 rows. In each half the
  /// first row is stored as it is, and every other row as its XOR with the row before. So the XOR
  /// of the stored rows of a half, up to row r, is row r of the table: see elements_avx2.cpp.
  alignas(16) unsigned char steps[16][16];

  template <int n>
  constexpr explicit LookUp(const unsigned char (&bytes)[n]) : table{}, steps{} {
    for (int i = 0; i < 256; ++i) table[i] = bytes[i % n];
    for (int row = 0; row < 16; ++row) {
      for (int i = 0; i < 16; ++i) {
        const unsigned char before = row % 8 == 0 ? 0 : table[16 * (row - 1) + i];
        steps[row][i] = table[16 * row + i] ^ before;
      }
    }
  }
  Word operator()(Word byte) const { return table[byte]; }
};

std::uint32_t tra_ieee_to_ibm_single(std::uint32_t ieee);
std::uint32_t tra_ibm_to_ieee_single(std::uint32_t ibm);
std::uint64_t tra_ieee_to_ibm_double(std::uint64_t ieee);
std::uint64_t tra_ibm_to_ieee_double(std::uint64_t ibm);

/// Converts a floating-point number that is stored with the highest byte first.
template <class Number, Number convert(Number)>
struct ConvertNumber {
  using Word = Number;
  Word operator()(Word number) const { return reversed(convert(reversed(number))); }
};

using IeeeToIbmSingle = ConvertNumber<std::uint32_t, tra_ieee_to_ibm_single>;
using IbmToIeeeSingle = ConvertNumber<std::uint32_t, tra_ibm_to_ieee_single>;
using IeeeToIbmDouble = ConvertNumber<std::uint64_t, tra_ieee_to_ibm_double>;
using IbmToIeeeDouble = ConvertNumber<std::uint64_t, tra_ibm_to_ieee_double>;

/// The source and target of a translation.
struct Buffers {
  std::size_t bytes;
  const unsigned char* from;
  unsigned char* to;

  /// True if several elements may be read before the first is written. False only if the target
  /// begins inside the source, after its start: what is written there is read again later, so
  /// elements must be translated one by one.
  bool allows_vectors() const {
    const auto distance =
        reinterpret_cast<std::uintptr_t>(to) - reinterpret_cast<std::uintptr_t>(from);
    return distance == 0 || distance >= bytes;
  }
};

/// Translates as many leading bytes as fill whole vectors, and returns their number.
template <class Step>
std::size_t translate_vectors(Plain /*form*/, const Step& /*step*/, const Buffers& /*buffers*/) {
  return 0;
}
template <class Step>
std::size_t translate_vectors(Avx2, const Step& step, const Buffers& buffers);

/// Translates `count` elements in ascending order, each read before it is written.
template <class Step>
void translate(const Step& step, std::size_t count, const void* src, void* dst) {
  using Word = typename Step::Word;
  const Buffers buffers = {count * sizeof(Word), static_cast<const unsigned char*>(src),
                           static_cast<unsigned char*>(dst)};
  std::size_t i = 0;
  if (buffers.allows_vectors()) {
    i = with_best_form([&](auto form) { return translate_vectors(form, step, buffers); });
  }
  for (; i < buffers.bytes; i += sizeof(Word)) {
    store(buffers.to + i, step(load<Word>(buffers.from + i)));
  }
}

}  // namespace zelvan
