// The area is a sum of six products of coordinates. Each product is a whole multiple of the square
// of the smallest double. So an integer of about 4200 bits holds the sum exactly, for any finite
// coordinates; U. Kulisch, "Computer Arithmetic and Validity" (2008), calls it a complete register.

#include <zelvan/geometry/detail/orientation.h>

#include <cstdint>
#include <cstring>

namespace zelvan {

namespace {

// A finite double is sign * digits * 2^exponent.
struct Parts {
  explicit Parts(double v) {
    constexpr std::uint64_t implied_digit = std::uint64_t{1} << 52;
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    const int field = static_cast<int>(bits >> 52 & 0x7ff);
    digits = (bits & (implied_digit - 1)) | (field != 0 ? implied_digit : 0);
    exponent = (field != 0 ? field : 1) - 1075;
    sign = bits >> 63 != 0 ? -1 : 1;
  }

  std::uint64_t digits;  // fewer than 2^53
  int exponent;          // from -1074 to 971
  int sign;
};

class ExactSum {
 public:
  // Adds sign * a * b.
  void add(int sign, double a, double b) {
    const Parts p(a), q(b);
    const int position = p.exponent + q.exponent - lowest_exponent;
    const std::uint64_t p_low = p.digits & low_half, p_high = p.digits >> 32;
    const std::uint64_t q_low = q.digits & low_half, q_high = q.digits >> 32;
    sign *= p.sign * q.sign;
    add_at(position, sign, p_low * q_low);
    add_at(position + 32, sign, p_low * q_high);
    add_at(position + 32, sign, p_high * q_low);
    add_at(position + 64, sign, p_high * q_high);
  }

  WideNumber value() {
    carry();
    const int sign = limbs_[n_limbs - 1] < 0 ? -1 : 1;
    if (sign < 0) {
      for (std::int64_t& limb : limbs_) limb = -limb;
      carry();
    }
    int top = n_limbs - 1;
    while (top > 2 && limbs_[top] == 0) --top;
    const double leading =
        (static_cast<double>(limbs_[top]) * 0x1p32 + static_cast<double>(limbs_[top - 1])) *
            0x1p32 +
        static_cast<double>(limbs_[top - 2]);
    return {sign * leading, 32 * (top - 2) + lowest_exponent};
  }

 private:
  static constexpr int lowest_exponent = 2 * -1074;
  static constexpr std::uint64_t low_half = 0xffffffff;

  // Limbs of 32 bits: enough for a product of up to 2^2048, and some more for a sum of six.
  static constexpr int n_limbs = (2048 + 2 * 1074) / 32 + 3;

  void add_at(int position, int sign, std::uint64_t v) {
    for (; v != 0; v >>= 32, position += 32) {
      const std::uint64_t shifted = (v & low_half) << (position % 32);
      limbs_[position / 32] += sign * static_cast<std::int64_t>(shifted & low_half);
      limbs_[position / 32 + 1] += sign * static_cast<std::int64_t>(shifted >> 32);
    }
  }

  // Propagates carries: leaves 32 bits in each limb; the top limb keeps the sign.
  void carry() {
    for (int i = 0; i + 1 < n_limbs; ++i) {
      limbs_[i + 1] += limbs_[i] >> 32;
      limbs_[i] &= static_cast<std::int64_t>(low_half);
    }
  }

  std::int64_t limbs_[n_limbs] = {};  // the lowest first; carries collect in the upper bits
};

}  // namespace

WideNumber exact_orientation(const real_pt_t& a, const real_pt_t& b, const real_pt_t& c) {
  ExactSum area;
  area.add(1, a.x, b.y);
  area.add(-1, a.x, c.y);
  area.add(-1, c.x, b.y);
  area.add(-1, a.y, b.x);
  area.add(1, a.y, c.x);
  area.add(1, c.y, b.x);
  return area.value();
}

}  // namespace zelvan
