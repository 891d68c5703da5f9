#include <zelvan/transforms/matrix_functions.h>

#include "support/bits.h"

#include <gtest/gtest.h>

// Each flat function beside its operation, one after the other on the same matrix: all eight
// fields, bit for bit. The products and the inverse write over their operand.
TEST(MatrixFunctions, AreTheOperations) {
  Mtx2D flat, operation, other(1, 2, Mtx2DOrientRot90ReflectX, 3, 4, 5, 6);
  const auto expect_same = [&](const char* name) {
    EXPECT_EQ(support::bits(flat), support::bits(operation)) << name;
  };
  set_xfm(1, 2, Mtx2DOrientRot270, 3, 4, 5, 6, &flat);
  operation.SetXfm(1, 2, Mtx2DOrientRot270, 3, 4, 5, 6), expect_same("set_xfm");
  translate_matrix(2, 3, &flat), operation.Translate(2, 3), expect_same("translate");
  rotate_matrix(90, &flat, 1), operation.Rotate(90, 1), expect_same("rotate first");
  rotate_matrix(33, &flat, 2), operation.Rotate(33, 2), expect_same("rotate last");
  scale_matrix(2, 3, &flat), operation.Scale(2, 3), expect_same("scale");
  orient_matrix(Mtx2DOrientRot90ReflectY, &flat), operation.Orient(Mtx2DOrientRot90ReflectY);
  expect_same("orient");
  reflect_matrix_x(&flat), operation.ReflectInX(), expect_same("reflect in x");
  multiply_matrices(&flat, &other, &flat), operation = operation * other, expect_same("first");
  multiply_matrices(&other, &flat, &flat), operation = other * operation, expect_same("second");
  invert_matrix(&flat, &flat), operation = operation.Invert(), expect_same("invert");
  reflect_matrix_y(&flat), operation.ReflectInY(), expect_same("reflect in y");
  double angle[2];
  int mirror[2];
  xfm_get_orientation(&flat, &angle[0], &mirror[0]);
  operation.GetOrientation(&angle[1], &mirror[1]);
  EXPECT_TRUE(angle[0] == angle[1] && mirror[0] == mirror[1] && mirror[0] != 0);
  flat.m12 = flat.m21 = operation.m12 = operation.m21 = 0;
  set_matrix_type(&flat), operation.SetType(), expect_same("set type");
  initialize_matrix(&flat), operation.Initialize(), expect_same("initialize");
}
