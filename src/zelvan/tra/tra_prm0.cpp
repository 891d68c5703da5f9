// Integer arithmetic only, so neither the rounding mode nor the floating-point unit matters.

#include <zelvan/tra/detail/elements.h>
#include <zelvan/tra/foreign_floats.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

constexpr unsigned short single_precision = 0xA4;
constexpr unsigned short double_precision = 0xB8;

constexpr std::uint32_t single_sign = 0x8000'0000;
constexpr std::uint64_t double_sign = 0x8000'0000'0000'0000;

}  // namespace

namespace zelvan {

std::uint64_t tra_ieee_to_ibm_double(std::uint64_t ieee) {
  const std::uint64_t sign = ieee & double_sign;
  const int e = static_cast<int>(ieee >> 52 & 0x7FF) - 1023;
  if (e < -312) return 0;
  if (e == 1024) return sign | 0x7F00'0000'0000'0000;
  if (e >= 252) return sign | 0x7FFF'FFFF'FFFF'FFFF;
  const std::uint64_t f = (ieee & 0x000F'FFFF'FFFF'FFFF) | 0x0010'0000'0000'0000;
  if (e < -260) return sign | f >> (-260 - e);  // below the smallest characteristic: unnormalised
  const auto x = static_cast<std::uint64_t>((e >> 2) + 65);
  return sign | x << 56 | f << (e & 3);
}

std::uint64_t tra_ibm_to_ieee_double(std::uint64_t ibm) {
  std::uint64_t f = ibm & 0x00FF'FFFF'FFFF'FFFF;
  if (f == 0) return ibm == 0 ? 0 : 0xFFFF'FFFF'FFFF'FFFF;
  int e = 4 * static_cast<int>(ibm >> 56 & 0x7F) - 262;
  const int places = std::countl_zero(f) - 11;  // the distance of the leading 1 from bit 52
  f = places >= 0 ? f << places : f >> -places;
  e -= places;
  const auto field = static_cast<std::uint64_t>(e + 1025);  // 711 to 1274 over all IBM numbers
  return (ibm & double_sign) | field << 52 | (f & 0x000F'FFFF'FFFF'FFFF);
}

std::uint32_t tra_ieee_to_ibm_single(std::uint32_t ieee) {
  const std::uint32_t sign = ieee & single_sign;
  const std::uint32_t field = ieee >> 23 & 0xFF;
  const std::uint32_t f = ieee & 0x007F'FFFF;
  if (field == 255) return sign | 0x2000'0000;
  if (field == 0 && f == 0) return sign;
  int e = static_cast<int>(field) - 127;
  std::uint32_t m = f << 8 | 0x8000'0000;  // the leading 1 at bit 31
  if (field == 0) {
    m = f << 9;
    const int places = std::countl_zero(m);
    m <<= places;
    e -= places;
  }
  const int s = -(e + 1) & 3;  // shift to a whole hexadecimal digit
  const auto x = static_cast<std::uint32_t>(((e + 1 + s) >> 2) + 64);
  return sign | x << 24 | m >> s >> 8;
}

std::uint32_t tra_ibm_to_ieee_single(std::uint32_t ibm) {
  const std::uint32_t sign = ibm & single_sign;
  const int x = static_cast<int>(ibm >> 24 & 0x7F);
  std::uint32_t m = ibm << 8;
  if (m == 0) return x == 0 ? sign : sign | 0x7FFF'FFFF;
  const int places = std::countl_zero(m);
  m <<= places;
  const int e = (x - 64) * 4 - places;
  if (e > 128) return sign | 0x7F80'0000;
  if (e > -126) return sign | static_cast<std::uint32_t>(e + 126) << 23 | (m >> 8 & 0x007F'FFFF);
  const int dropped = 9 + (-126 - e);  // the fraction of a denormal has no implied bit
  return dropped < 32 ? sign | m >> dropped : sign;
}

}  // namespace zelvan

void tra_convert_flpt(int format, unsigned short type, unsigned short count, const void* src,
                      void* dst) {
  const bool is_single = type == single_precision;
  if (is_single || type == double_precision) {
    switch (format & 0xFC) {
      case 0:
        if (count != 0) std::memmove(dst, src, std::size_t{count} * (is_single ? 4 : 8));
        return;
      case 4:
        return is_single ? translate(zelvan::IeeeToIbmSingle{}, count, src, dst)
                         : translate(zelvan::IeeeToIbmDouble{}, count, src, dst);
      case 16:
        return is_single ? translate(zelvan::IbmToIeeeSingle{}, count, src, dst)
                         : translate(zelvan::IbmToIeeeDouble{}, count, src, dst);
    }
  }
  std::fprintf(stderr, "ZVN MSG(%s,%d): %s\n", __FILE__, __LINE__,
               "tra_convert_flpt: unimplemented conversion");
}
