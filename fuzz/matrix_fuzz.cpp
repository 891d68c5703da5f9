// Applies a chain of operations to a matrix, then calls every query, and maps points, boxes and
// polygons through it. Numbers may have any bits, so only properties are required that hold for all
// of them: the array forms produce the same bits as the point form, boxes are in order, angles are
// in range, and nothing is written beyond the stated room.

#include <zelvan/transforms/mtx2d.h>

#include "bytes.h"

#include <cmath>
#include <vector>

namespace {

using fuzz::Bytes;
using fuzz::require;

void change(Mtx2D& m, Bytes& bytes) {
  switch (bytes.below(14)) {
    case 0:
      return m.SetXfm(bytes.number(), bytes.number(), static_cast<Mtx2DOrient>(bytes.below(9)),
                      bytes.number(), bytes.number(), bytes.number(), bytes.number());
    case 1:
      return m.Translate(bytes.number(), bytes.number());
    case 2:
      return m.Scale(bytes.number(), bytes.number());
    case 3:
      return m.Rotate(bytes.number() * 90, bytes.below(3));
    case 4:
      return m.Rotate(bytes.below(5) * 90.0, bytes.below(3));
    case 5:
      return m.Orient(static_cast<Mtx2DOrient>(bytes.below(9)));
    case 6:
      return m.ReflectInX();
    case 7:
      return m.ReflectInY();
    case 8:
      return m.ShearInX(bytes.number());
    case 9:
      return m.InvertYAxis(bytes.number());
    case 10:
      m = m * Mtx2D(m);
      return;
    case 11:
      m = m.Invert();
      return;
    case 12:
      return m.SetIdentity();
    default:
      return m.SetType();
  }
}

bool is_from_to(double v, double low, double high) {
  return std::isnan(v) || (v >= low && v <= high);
}

void ask(Mtx2D& m) {
  double e[6];
  m.GetElements(&e[0], &e[1], &e[2], &e[3], &e[4], &e[5]);
  require(std::memcmp(e, &m, sizeof e) == 0);
  require(m.ReversesOrientation() == (m.GetDeterminant() < 0.0));
  const double turn = m.GetRotation();
  require(is_from_to(turn, 0.0, 3.1415926535897936));
  require(!(m.GetScale() < 0.0));
  double angle;
  int mirror, code;
  unsigned short mirrored;
  m.GetOrientation(&angle, &mirror);
  require(is_from_to(angle, -3.1415926535897936, 3.1415926535897936) && mirror == m.mirror);
  m.GetOrientationAndXMirror(&mirrored, &code);
  require(mirrored == m.ReversesOrientation() && code >= -1 && code <= 3);
  m.GetXMirrorAndOrientation(&mirrored, &code);
  require(mirrored == m.ReversesOrientation() && code >= -1 && code <= 3);
  m.GetXMirrorAndRotation(&mirrored, &angle);
  require(mirrored == m.ReversesOrientation() && is_from_to(angle, 0.0, 360.0));
}

bool is_same(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

void map(Mtx2D& m, Bytes& bytes) {
  std::vector<real_pt_t> in;
  std::vector<int> flags;
  while (bytes.left() > 0 && in.size() < 70) {
    in.push_back({bytes.number(), bytes.number()});
    flags.push_back(bytes.below(4));
  }
  const int n = static_cast<int>(in.size());
  std::vector<real_pt_t> reals(in.size());
  std::vector<int_pt_t> whole(in.size());
  m.RealXfmPts(n, in.data(), reals.data());
  m.XfmPts(n, in.data(), whole.data());
  for (std::size_t i = 0; i < in.size(); ++i) {
    real_pt_t p;
    int_pt_t q;
    m.RealXfmPt(&in[i], &p);
    m.XfmPt(&in[i], &q);
    require(is_same(p.x, reals[i].x) && is_same(p.y, reals[i].y));
    require(q.x == whole[i].x && q.y == whole[i].y);
  }
  std::vector<int> kept_flags(in.size());
  drw_pset_t set = {n, in.data(), flags.data()};
  drw_dpset_t kept = {-1, whole.data(), kept_flags.data()};
  m.XfmPolySetPts(&set, &kept);
  require(kept.n_points >= (n > 0) && kept.n_points <= n);
  drw_pset_t kept_reals = {-1, reals.data(), kept_flags.data()};
  m.RealXfmPolyPtSet(&set, &kept_reals);
  require(kept_reals.n_points >= (n > 0) && kept_reals.n_points <= n);
  if (n < 4) return;
  real_rect_t box;
  std::memcpy(&box, in.data(), sizeof box);
  m.XfmRect(&box, &box);
  const auto& c = box.corners;
  for (const real_pt_t& corner : c) {
    require(is_same(corner.x, c[0].x) || is_same(corner.x, c[2].x));
    require(is_same(corner.y, c[0].y) || is_same(corner.y, c[2].y));
  }
  require(!(c[0].x > c[2].x) && !(c[0].y > c[2].y));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  Mtx2D m;
  for (int steps = bytes.below(12); steps > 0; --steps) change(m, bytes);
  if (bytes.below(2) == 0) m.type = bytes.below(5);
  ask(m);
  map(m, bytes);
  return 0;
}
