#include <zelvan/transforms/matrix_functions.h>

#include "support/bits.h"
#include "support/random.h"

#include <functional>

#include <gtest/gtest.h>

namespace {

using support::bits;

// Each flat function beside its operation, on matrices whose elements tell arguments in a
// wrong order apart: all eight fields, bit for bit. The products may be written over an operand.
TEST(MatrixFunctions, AreTheOperations) {
  const Mtx2D b(1, 2, Mtx2DOrientRot90ReflectX, 3, 4, 5, 6);
  using Step = std::function<void(Mtx2D*)>;
  const struct {
    const char* name;
    Step flat, operation;
  } rows[] = {
      {"initialize", [](Mtx2D* m) { initialize_matrix(m); }, [](Mtx2D* m) { m->Initialize(); }},
      {"set type", [](Mtx2D* m) { set_matrix_type(m); }, [](Mtx2D* m) { m->SetType(); }},
      {"translate", [](Mtx2D* m) { translate_matrix(2, 3, m); },
       [](Mtx2D* m) { m->Translate(2, 3); }},
      {"scale", [](Mtx2D* m) { scale_matrix(2, 3, m); }, [](Mtx2D* m) { m->Scale(2, 3); }},
      {"rotate first", [](Mtx2D* m) { rotate_matrix(90, m, 1); },
       [](Mtx2D* m) { m->Rotate(90, 1); }},
      {"rotate last", [](Mtx2D* m) { rotate_matrix(33, m, 2); },
       [](Mtx2D* m) { m->Rotate(33, 2); }},
      {"orient", [](Mtx2D* m) { orient_matrix(Mtx2DOrientRot90ReflectY, m); },
       [](Mtx2D* m) { m->Orient(Mtx2DOrientRot90ReflectY); }},
      {"reflect x", [](Mtx2D* m) { reflect_matrix_x(m); }, [](Mtx2D* m) { m->ReflectInX(); }},
      {"reflect y", [](Mtx2D* m) { reflect_matrix_y(m); }, [](Mtx2D* m) { m->ReflectInY(); }},
      {"set xfm", [](Mtx2D* m) { set_xfm(1, 2, Mtx2DOrientRot270, 3, 4, 5, 6, m); },
       [](Mtx2D* m) { m->SetXfm(1, 2, Mtx2DOrientRot270, 3, 4, 5, 6); }},
      {"multiply into the first",
       [&](Mtx2D* m) {
         Mtx2D second = b;
         multiply_matrices(m, &second, m);
       },
       [&](Mtx2D* m) { *m = *m * b; }},
      {"multiply into the second",
       [&](Mtx2D* m) {
         Mtx2D first = b;
         multiply_matrices(&first, m, m);
       },
       [&](Mtx2D* m) {
         Mtx2D first = b;
         *m = first * *m;
       }},
      {"invert", [](Mtx2D* m) { invert_matrix(m, m); }, [](Mtx2D* m) { *m = m->Invert(); }},
  };
  for (unsigned seed = 1; seed <= 50; ++seed) {
    support::Random random(seed);
    Mtx2D start = random.matrix(random.below(4));
    start.mirror = random.below(4);
    for (const auto& row : rows) {
      Mtx2D flat = start, operation = start;
      row.flat(&flat);
      row.operation(&operation);
      EXPECT_EQ(bits(flat), bits(operation)) << row.name << ", seed " << seed;
    }
    double angle, expected_angle;
    int mirror, expected_mirror;
    xfm_get_orientation(&start, &angle, &mirror);
    start.GetOrientation(&expected_angle, &expected_mirror);
    EXPECT_EQ(bits(angle), bits(expected_angle)) << "seed " << seed;
    EXPECT_EQ(mirror, expected_mirror) << "seed " << seed;
  }
}

}  // namespace
