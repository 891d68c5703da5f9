#include <zelvan/transforms/matrix_functions.h>

#include "transforms/matrix.h"

#include <gtest/gtest.h>

constexpr int derived = Mtx2DTypeGeneral, kept = Mtx2DTypeIdentity;

// From a matrix whose type is stale: some steps derive it. The last two have no flat name.
TEST(MatrixFunctions, DoWhatTheOperationsOfTheClassDo) {
  const auto expect = [](const char* name, const Mtx2D& expected, void (*function)(Mtx2D*)) {
    Mtx2D m = matrix({1, 2}, {3, 4}, {5, 6}, kept, 3);
    function(&m);
    EXPECT_EQ(m, expected) << name;
  };
  using M = Mtx2D;
  const auto turn = Mtx2DOrientRot90;
  expect("initialize_matrix", matrix({1, 0}, {0, 1}, {0, 0}, Mtx2DTypeDiagonal), initialize_matrix);
  expect("set_matrix_type", matrix({1, 2}, {3, 4}, {5, 6}, derived, 3), set_matrix_type);
  expect("set_xfm", Mtx2D(1, 2, turn, 3, 4, 5, 6),
         [](M* m) { set_xfm(1, 2, turn, 3, 4, 5, 6, m); });
  expect("translate_matrix", matrix({1, 2}, {3, 4}, {15, 26}, kept, 3),
         [](M* m) { translate_matrix(10, 20, m); });
  expect("scale_matrix", matrix({2, -6}, {6, -12}, {10, -18}, kept, 3),
         [](M* m) { scale_matrix(2, -3, m); });
  expect("rotate_matrix", matrix({3, 4}, {-1, -2}, {5, 6}, derived, 3),
         [](M* m) { rotate_matrix(90, m, Mtx2DRotateFirst); });
  expect("orient_matrix", matrix({-2, 1}, {-4, 3}, {-6, 5}, derived, 3),
         [](M* m) { orient_matrix(turn, m); });
  expect("reflect_matrix_x", matrix({1, -2}, {3, -4}, {5, -6}, kept, 2), reflect_matrix_x);
  expect("reflect_matrix_y", matrix({-1, 2}, {-3, 4}, {-5, 6}, kept, 1), reflect_matrix_y);
  expect("invert_matrix in place", matrix({-2, 1}, {1.5, -0.5}, {1, -2}, derived, 3),
         [](M* m) { invert_matrix(m, m); });
  expect("ShearInX", matrix({1, 2}, {9, 4}, {5, 6}, derived, 3), [](M* m) { m->ShearInX(9); });
  expect("InvertYAxis", matrix({1, 2}, {3, -4}, {5, 9}, kept, 3), [](M* m) { m->InvertYAxis(9); });
}
