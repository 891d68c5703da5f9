#include "digests/group.h"

namespace {

/// Returns a matrix of any type, including unknown ones; every seventh is the identity.
Mtx2D some_matrix(Random& random, int i) { return i % 7 == 0 ? Mtx2D() : random.matrix(i % 6 - 1); }

// Arrays of 0 to 70 points: every remainder modulo the length of a vector.
const Group map_points("transforms.map_points", [](Log& log) {
  Random random(1);
  for (int i = 0; i < 6 * 71; ++i) {
    const int n = i / 6;
    Mtx2D m = some_matrix(random, i);
    std::vector<real_pt_t> in = random.hard_points(n);
    std::vector<real_pt_t> reals(n);
    std::vector<int_pt_t> ints(n);
    std::vector<short_pt_t> shorts(n);
    m.RealXfmPts(n, in.data(), reals.data());
    log("RealXfmPts", inputs(m, in), reals);
    m.XfmFPts(n, in.data(), ints.data());
    log("XfmFPts", inputs(m, in), ints);
    m.XfmSPts(n, in.data(), shorts.data());
    log("XfmSPts", inputs(m, in), shorts);
    m.XfmPts(n, in.data(), ints.data());
    log("XfmPts", inputs(m, in), ints);
    for (int k = 0; k < n; ++k) {
      m.RealXfmPt(&in[k], &reals[0]);
      log("RealXfmPt", inputs(m, in[k]), reals[0]);
      m.InvXfmPt(&ints[k], &reals[0]);
      log("InvXfmPt", inputs(m, ints[k]), reals[0]);
    }
  }
});

// Each step continues with the result of the step before.
const Group compose("transforms.compose", [](Log& log) {
  Random random(5);
  for (int i = 0; i < 3000; ++i) {
    Mtx2D m = some_matrix(random, i);
    log("a matrix", inputs(), m);
    const double p = random.hard_double();
    const double q = random.between(-9, 9);
    const auto orient = static_cast<Mtx2DOrient>(random.below(8));
    m.Translate(p, q);
    log("Translate", inputs(p, q), m);
    m.Scale(q, p);
    log("Scale", inputs(q, p), m);
    m.ShearInX(q);
    log("ShearInX", inputs(q), m);
    m.Orient(orient);
    log("Orient", inputs(orient), m);
    m.InvertYAxis(p);
    log("InvertYAxis", inputs(p), m);
    m.SetType();
    log("SetType", inputs(), m);
    m.SetXfm(p, q, orient, q, -p, 1.0, q);
    log("SetXfm", inputs(p, q, orient, q, -p, 1.0, q), m);
  }
});

const Group multiply("transforms.multiply", [](Log& log) {
  Random random(6);
  for (int i = 0; i < 10'000; ++i) {
    Mtx2D a = some_matrix(random, i);
    Mtx2D b = some_matrix(random, i / 6);
    log("operator*", inputs(a, b), a * b);
    log("Invert", inputs(a), a.Invert());
    log("GetDeterminant", inputs(a), a.GetDeterminant());
  }
});

// Whole degrees and angles next to them, since an angle close to a quarter turn snaps to it.
const Group rotate("transforms.rotate", [](Log& log) {
  const double beside[] = {0.0, 1e-7, 0.1, -0.1};
  Random random(7);
  for (int i = -1800; i < 1800; ++i) {
    const double degrees = i / 4 + beside[i & 3];
    const int mode = i % 2 == 0 ? Mtx2DRotateFirst : Mtx2DRotateLast;
    Mtx2D m = i % 3 == 0 ? random.matrix(Mtx2DTypeGeneral) : Mtx2D();
    m.Rotate(degrees, mode);
    log("Rotate", inputs(degrees, mode), m);
    double angle;
    int mirror;
    unsigned short mirrored;
    m.GetOrientation(&angle, &mirror);
    log("GetOrientation", inputs(m), angle, mirror);
    m.GetXMirrorAndRotation(&mirrored, &angle);
    log("GetXMirrorAndRotation", inputs(m), mirrored, angle);
    log("GetScale", inputs(m), m.GetScale());
    log("GetRotation", inputs(m), m.GetRotation());
  }
});

}  // namespace
