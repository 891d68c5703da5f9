// Clips a polygon set to a rectangle; both are read from the input, either as small whole numbers,
// which often coincide, or as doubles of any bits. The output arrays have exactly the room that the
// header states, so the address sanitizer detects a vertex too many. The fuzzer's time limit
// detects an endless walk.

#include <zelvan/geometry/clip_polygon_set.h>

#include "bytes.h"

#include <vector>

namespace {

double coordinate(fuzz::Bytes& bytes, bool any_bits) {
  return any_bits ? bytes.any<double>() : static_cast<std::int8_t>(bytes.byte()) / 16;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const bool any_bits = bytes.byte() % 4 == 0;
  real_rect_t rect;
  for (real_pt_t& corner : rect.corners) {
    corner = {coordinate(bytes, any_bits), coordinate(bytes, any_bits)};
  }
  std::vector<real_pt_t> points;
  std::vector<int> flags;
  std::size_t room = 0, first = 0;
  while (bytes.left() > 0) {
    const int flag = bytes.byte();
    points.push_back({coordinate(bytes, any_bits), coordinate(bytes, any_bits)});
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
  const auto n = static_cast<std::size_t>(target.n_points);
  fuzz::require(n == 0 || out_flags[n - 1] >= 2);  // the last ring is closed
  return 0;
}
