#include <zelvan/zelvan.h>

#include "support/guarded_array.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using support::GuardedArray;

// Every operation with a vector form, at every length that leaves a rest: what lies behind an array
// can't be read, and faults.
TEST(Bounds, AreKeptInEveryForm) {
  support::Random random(1);
  real_rect_t view = {{{-9, -9}, {-9, 99}, {99, 99}, {99, -9}}};
  for (int i = 0; i < 4 * 71; ++i) {
    const int n = i / 4;
    Mtx2D m = random.matrix(i % 4);
    GuardedArray<real_pt_t> in(random.hard_points(n));
    GuardedArray<real_pt_t> reals(n), clipped(9 * n + 4);
    GuardedArray<int_pt_t> ints(n);
    GuardedArray<short_pt_t> shorts(n);
    GuardedArray<int> flags(std::vector<int>(n, 1)), clipped_flags(9 * n + 4);
    GuardedArray<unsigned char> from(8 * n), to(8 * n);
    ColorMap map(n, 255);
    GuardedArray<ColorRGB> colors(std::vector<ColorRGB>(n, {n, n, n}));
    ColorRGB* const own_colors = std::exchange(map.colors, colors.data());
    support::for_each_form([&](const char* form) {
      SCOPED_TRACE(testing::Message() << form << ", length " << n);
      m.RealXfmPts(n, in.data(), reals.data());
      m.XfmPts(n, in.data(), ints.data());
      m.XfmFPts(n, in.data(), ints.data());
      m.XfmSPts(n, in.data(), shorts.data());
      for (const int type : {0x42, 0x94, 0xB8}) {
        tra_swap_bytes(type, 8 * n / (type & 15), from.data(), to.data());
      }
      for (const int code : {1, 2}) tra_convert_charset(code, 8 * n, from.data(), to.data());
      tra_reverse_bits(8 * n, from.data(), to.data());
      for (const int format : {4, 16}) {
        tra_convert_flpt(format, 0xA4, 2 * n, from.data(), to.data());
        tra_convert_flpt(format, 0xB8, n, from.data(), to.data());
      }
      ColorRGB target(i % 9, i, n);
      int distance;
      EXPECT_LE(map.GetClosestColor(&target, &distance, 1), n);
      if (n > 0) flags[n - 1] = 3;
      for (const auto clip : {ClipPolygonSet, ClipPolygonSetToView}) {
        drw_pset_t source = {n, in.data(), flags.data()};
        drw_pset_t target = {0, clipped.data(), clipped_flags.data()};
        clip(&source, &target, &view);
        EXPECT_LE(target.n_points, 9 * n + 4);
      }
    });
    map.colors = own_colors;
  }
}

// Names, lines and words of every length, in places alike and in others not.
TEST(Bounds, AreKeptInTexts) {
  const std::string long_name(99, 'n');
  for (int n = 0; n < 4 * 71; ++n) {
    std::string in(n / 4, 'n');
    if (n % 4 != 0) in += ',';
    if (n % 4 > 1) in += std::string(n % 5, 'n') + ':';
    GuardedArray<char> text(std::vector<char>(in.c_str(), in.c_str() + in.size() + 1));
    const VarNameValue table[] = {{"nnnnnnnnn", 1}, {text.data(), 2}, {nullptr, 0}};
    int found = 0;
    EXPECT_EQ(VarLookupInt(table, long_name.c_str(), &found), 0);
    EXPECT_EQ(VarLookupInt(table, text.data(), &found), 1);
    EXPECT_EQ(found, in == "nnnnnnnnn" ? 1 : 2);
    const char* value;
    EXPECT_EQ(utl_searchValueForKey(text.data(), long_name.c_str(), &value), 0);
    EXPECT_EQ(ColorRGB().FindName(text.data()), 0);
    const str_field* const word = str_parse(text.data());
    EXPECT_EQ(word->type == STR_END ? "" : word->text, in);
  }
}
