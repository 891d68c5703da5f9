#include <zelvan/transforms/matrix_functions.h>

#include "support/polygon_set.h"
#include "transforms/matrix.h"

#include <gtest/gtest.h>

constexpr int derived = Mtx2DTypeGeneral, kept = Mtx2DTypeIdentity;

// The matrix has a type that doesn't match its elements. Some operations derive the type anew,
// others keep it. The last two are called as members, since they have no C function.
TEST(MatrixFunctions, DoWhatTheOperationsOfTheClassDo) {
  const auto expect = [](const char* name, const Mtx2D& expected, void (*function)(Mtx2D*)) {
    Mtx2D m = matrix({1, 2}, {3, 4}, {5, 6}, kept, 3);
    function(&m);
    EXPECT_EQ(m, expected) << name;
  };
  using M = Mtx2D;
  expect("initialize_matrix", matrix({1, 0}, {0, 1}, {0, 0}, Mtx2DTypeDiagonal), initialize_matrix);
  expect("set_matrix_type", matrix({1, 2}, {3, 4}, {5, 6}, derived, 3), set_matrix_type);
  expect("translate_matrix", matrix({1, 2}, {3, 4}, {15, 26}, kept, 3),
         [](M* m) { translate_matrix(10, 20, m); });
  expect("scale_matrix", matrix({2, -6}, {6, -12}, {10, -18}, kept, 3),
         [](M* m) { scale_matrix(2, -3, m); });
  expect("rotate_matrix", matrix({3, 4}, {-1, -2}, {5, 6}, derived, 3),
         [](M* m) { rotate_matrix(90, m, Mtx2DRotateFirst); });
  expect("orient_matrix", matrix({-2, 1}, {-4, 3}, {-6, 5}, derived, 3),
         [](M* m) { orient_matrix(Mtx2DOrientRot90, m); });
  expect("reflect_matrix_x", matrix({1, -2}, {3, -4}, {5, -6}, kept, 2), reflect_matrix_x);
  expect("reflect_matrix_y", matrix({-1, 2}, {-3, 4}, {-5, 6}, kept, 1), reflect_matrix_y);
  expect("invert_matrix in place", matrix({-2, 1}, {1.5, -0.5}, {1, -2}, derived, 3),
         [](M* m) { invert_matrix(m, m); });
  expect("ShearInX", matrix({1, 2}, {9, 4}, {5, 6}, derived, 3), [](M* m) { m->ShearInX(9); });
  expect("InvertYAxis", matrix({1, 2}, {3, -4}, {5, 9}, kept, 3), [](M* m) { m->InvertYAxis(9); });
}

TEST(MatrixFunctions, MapPolygonsFromTheDevice) {
  const Mtx2D twice(0, 0, Mtx2DOrientNone, 2, 2, 1, 1);
  support::SetArrays<int_pt_t> in({{{3, 5}, 1}, {{3, 5}, 0}, {{7, 9}, 3}});
  support::SetArrays<real_pt_t> out(3);
  drw_dpset_t in_set = {3, in.points.data(), in.flags.data()};
  drw_pset_t out_set = {-1, out.points.data(), out.flags.data()};
  zelvan_map_polygons_from_device(&in_set, &out_set, &twice);
  const support::Vertices<real_pt_t> expected = {{{7, 11}, 1}, {{7, 11}, 0}, {{15, 19}, 3}};
  EXPECT_EQ(out.first(out_set.n_points), expected) << "doubled and moved, repeats included";
  in_set.n_points = -1;
  zelvan_map_polygons_from_device(&in_set, &out_set, &twice);
  EXPECT_EQ(out_set.n_points, 0) << "a count below 0 makes an empty set";
}
