// Clips what the bytes say: a rectangle and a polygon set, in small whole numbers that fall
// onto each other all the time, or in doubles of any bits. The arrays hold just the stated
// bound, so a vertex too many is seen by the address sanitizer, and a walk without end by the
// fuzzer's time limit.

#include <zelvan/geometry/clip_polygon_set.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  std::size_t left() const { return left_; }

  std::uint8_t byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }

  double coordinate(bool any_bits) {
    if (!any_bits) return static_cast<std::int8_t>(byte()) / 16;
    std::uint8_t raw[sizeof(double)];
    for (std::uint8_t& b : raw) b = byte();
    double value;
    std::memcpy(&value, raw, sizeof value);
    return value;
  }

 private:
  const std::uint8_t* data_;
  std::size_t left_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  const bool any_bits = bytes.byte() % 4 == 0;
  real_rect_t rect;
  for (real_pt_t& corner : rect.corners) {
    corner = {bytes.coordinate(any_bits), bytes.coordinate(any_bits)};
  }
  std::vector<real_pt_t> points;
  std::vector<int> flags;
  std::size_t room = 0, first = 0;
  while (bytes.left() > 0) {
    const int flag = bytes.byte();
    points.push_back({bytes.coordinate(any_bits), bytes.coordinate(any_bits)});
    flags.push_back(flag % 8 == 0 ? 2 + flag / 128 : flag % 2);
    if (flags.back() >= 2) {
      room += 5 * (points.size() - first) + 4;
      first = points.size();
    }
  }
  std::vector<real_pt_t> out_points(room);
  std::vector<int> out_flags(room);
  drw_pset_t source = {static_cast<int>(points.size()), points.data(), flags.data()};
  drw_pset_t target = {0, out_points.data(), out_flags.data()};
  ClipPolygonSet(&source, &target, &rect);
  if (target.n_points > 0 && out_flags[static_cast<std::size_t>(target.n_points) - 1] < 2) {
    std::abort();  // the last ring is not closed
  }
  return 0;
}
