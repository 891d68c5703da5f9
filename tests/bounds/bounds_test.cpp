#include <zelvan/zelvan.h>

#include "support/guarded_array.h"
#include "support/printers.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::GuardedArray;

/// The inputs of kernels: arrays of `n` elements that end at unreadable pages, and 16 * `n` bytes.
struct Inputs {
  int n;
  support::Random random;
  Mtx2D matrix = random.matrix(random.below(4));
  GuardedArray<real_pt_t> points{random.hard_points(n)};
  GuardedArray<real_pt_t> outline{random.hard_points(n)};  ///< some points lie on sides of a view
  GuardedArray<int> flags{std::vector<int>(n, 1)};
  std::vector<unsigned char> bytes = std::vector<unsigned char>(16 * n);

  Inputs(int count, int seed) : n(count), random(seed) {
    const auto on_grid = [this, low = random.below(8), size = 1 + random.below(14)] {
      return 1.0 * low + random.below(size);
    };
    for (int i = 0; i < n; ++i) {
      if (random.below(40) > 0) outline[i] = {on_grid(), on_grid()};
      flags[i] = i == n - 1 ? 3 : random.below(9) == 0 ? 2 : 1;
    }
    int kind = 0;  // of a run of bytes: 0 for all 0, 1 for all 255, 2 for any bytes
    for (unsigned char& byte : bytes) {
      if (random.below(6) == 0) kind = random.below(3);
      byte = static_cast<unsigned char>(kind == 0 ? 0 : kind == 1 ? 255 : random.below(256));
    }
  }
};

/// The results of a kernel as numbers, each exact.
using Results = std::vector<double>;
using Kernel = std::function<Results(Inputs&)>;

template <class Out>
Kernel mapping(void (Mtx2D::*map)(int, real_pt_t*, Out*)) {
  return [map](Inputs& in) {
    GuardedArray<Out> out(in.n);
    (in.matrix.*map)(in.n, in.points.data(), out.data());
    Results results;
    for (const auto& [x, y] : out) results.insert(results.end(), {1.0 * x, 1.0 * y});
    return results;
  };
}

Results map_rectangles(Inputs& in) {
  Results results;
  for (int i = 0; i + 3 < in.n; i += 4) {
    GuardedArray<real_rect_t> rect(1);
    std::copy_n(&in.points[i], 4, rect[0].corners);
    GuardedArray<int_rect_t> box(1);
    in.matrix.XfmRect(rect.data(), box.data());
    for (const auto& [x, y] : box[0].corners) results.insert(results.end(), {1.0 * x, 1.0 * y});
  }
  return results;
}

/// Translates elements of `size` bytes: in place, between buffers that overlap, and apart.
template <class Translate, class... Options>
Kernel translation(int size, Translate translate, Options... options) {
  return [=](Inputs& in) {
    GuardedArray<unsigned char> bytes(in.bytes);
    unsigned char* const last = bytes.data() + bytes.size() - size * in.n;
    for (const int distance : {0, 1, 8, 31, 40, 8 * in.n}) {
      unsigned char* const other = std::max(bytes.data(), last - distance);
      translate(options..., in.n, other, last);
      translate(options..., in.n, last, other);
    }
    return Results(bytes.begin(), bytes.end());
  };
}

Kernel clipping(decltype(ClipPolygonSet)* clip) {
  return [clip](Inputs& in) {
    GuardedArray<real_pt_t> points(9 * in.n + 4);
    GuardedArray<int> flags(points.size());
    real_rect_t view = {{{4, 4}, {4, 12}, {12, 12}, {12, 4}}};
    drw_pset_t source = {in.n, in.outline.data(), in.flags.data()};
    drw_pset_t target = {0, points.data(), flags.data()};
    clip(&source, &target, &view);
    Results results(flags.begin(), flags.begin() + target.n_points);
    for (int i = 0; i < target.n_points; ++i) {
      results.insert(results.end(), {points[i].x, points[i].y});
    }
    return results;
  };
}

struct NamedKernel {
  const char* name;
  Kernel run;
};

void PrintTo(const NamedKernel& kernel, std::ostream* out) { *out << kernel.name; }

// A new kernel takes one line. Each becomes a test of its own, so that a crash names the kernel.
const NamedKernel kernels[] = {
    {"RealXfmPts", mapping(&Mtx2D::RealXfmPts)},
    {"XfmPts", mapping(&Mtx2D::XfmPts)},
    {"XfmFPts", mapping(&Mtx2D::XfmFPts)},
    {"XfmSPts", mapping(&Mtx2D::XfmSPts)},
    {"XfmRect", map_rectangles},
    {"SwapBytesBy2", translation(2, tra_swap_bytes, 0x42)},
    {"SwapBytesBy4", translation(4, tra_swap_bytes, 0x94)},
    {"SwapBytesBy8", translation(8, tra_swap_bytes, 0xB8)},
    {"ReverseBits", translation(1, tra_reverse_bits)},
    {"Characters", translation(1, tra_convert_charset, 1)},
    {"SinglesToIbm", translation(4, tra_convert_flpt, 4, 0xA4)},
    {"SinglesToIeee", translation(4, tra_convert_flpt, 16, 0xA4)},
    {"DoublesToIbm", translation(8, tra_convert_flpt, 4, 0xB8)},
    {"DoublesToIeee", translation(8, tra_convert_flpt, 16, 0xB8)},
    {"ClipPolygonSet", clipping(ClipPolygonSet)},
    {"ClipPolygonSetToView", clipping(ClipPolygonSetToView)},
};

class VectorForms : public testing::TestWithParam<NamedKernel> {};
INSTANTIATE_TEST_SUITE_P(Each, VectorForms, testing::ValuesIn(kernels));

TEST_P(VectorForms, AgreeWithThePlainFormBitForBit) {
  for (int seed = 0; seed < 71 * 8 && !HasFatalFailure(); ++seed) {
    Inputs in(seed % 71, seed);
    Results plain;
    support::for_each_form([&](const std::string& form) {
      const Results results = GetParam().run(in);
      if (form == "plain") plain = results;
      SCOPED_TRACE(testing::Message() << form << " form, length " << in.n << ", seed " << seed);
      ASSERT_EQ(results.size(), plain.size());
      for (std::size_t i = 0; i < plain.size(); ++i) {
        ASSERT_PRED2(support::same_bits, results[i], plain[i]) << "number " << i;
      }
    });
  }
}

}  // namespace
