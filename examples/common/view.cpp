#include "common/view.h"

#include "common/globe.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace example {

View::View(const ViewSettings& settings) : settings_(settings) {
  const double wide = static_cast<double>(settings.pixels_wide) * units_per_pixel;
  const double high = static_cast<double>(settings.pixels_high) * units_per_pixel;
  const double scale = wide / settings.width;
  // A degree of longitude shrinks with the cosine of the latitude, to nothing at a pole. The limit
  // keeps latitudes from being stretched more than tenfold.
  constexpr double least_shrinking = 0.1;
  const double shrinking = std::cos(settings.centre_latitude * std::numbers::pi / 180.0);

  Mtx2D placed;  // maps the centre of the view to that of the picture, y still up
  placed.SetXfm(settings.centre_longitude, settings.centre_latitude, Mtx2DOrientNone, scale,
                scale / std::max(shrinking, least_shrinking), 0.0, 0.0);
  placed.Rotate(settings.rotation, Mtx2DRotateLast);
  placed.Translate(wide / 2.0, high / 2.0);
  Mtx2D flip;  // a matrix of its own: flipping one that turns or moves y loses the turn or move
  flip.InvertYAxis(high);
  to_device_ = placed * flip;
  to_map_ = to_device_.Invert();

  real_rect_t picture = {{{0.0, high}, {0.0, 0.0}, {wide, 0.0}, {wide, high}}};
  real_rect_t bounds;
  to_map_.XfmRect(&picture, &bounds);
  west_ = bounds.corners[0].x;
  east_ = bounds.corners[2].x;
  // The data end exactly where a view of the whole world ends, and outlines along a frame are a
  // hard case for clipping. So the frame is larger than the picture, by less than half a device
  // unit: vertices in between are rounded onto the edge of the picture.
  constexpr double margin = 0.3;
  real_pt_t corners[] = {{-margin, high + margin},
                         {-margin, -margin},
                         {wide + margin, -margin},
                         {wide + margin, high + margin}};
  to_map_.RealXfmPts(4, corners, frame_.corners);
}

real_pt_t View::place_of(int_pt_t pixel) const {
  int_pt_t centre = {pixel.x * units_per_pixel + units_per_pixel / 2,
                     pixel.y * units_per_pixel + units_per_pixel / 2};
  Mtx2D to_map = to_map_;
  real_pt_t place;
  to_map.InvXfmPt(&centre, &place);
  return place;
}

std::optional<int_pt_t> View::pixel_of(real_pt_t place) const {
  const Turns turns = turns_between(place.x, place.x);
  Mtx2D to_device = to_device_;
  for (int turn = turns.first; turn <= turns.last; ++turn) {
    real_pt_t moved = {place.x + 360.0 * turn, place.y};
    real_pt_t device;
    to_device.RealXfmPt(&moved, &device);
    if (!(std::abs(device.x) < 1e9 && std::abs(device.y) < 1e9)) continue;  // would not fit an int
    const int_pt_t pixel = {static_cast<int>(std::floor(device.x / units_per_pixel)),
                            static_cast<int>(std::floor(device.y / units_per_pixel))};
    if (contains(pixel)) return pixel;
  }
  return std::nullopt;
}

bool View::contains(int_pt_t pixel) const {
  return pixel.x >= 0 && pixel.x < settings_.pixels_wide && pixel.y >= 0 &&
         pixel.y < settings_.pixels_high;
}

View::Turns View::turns_between(double west, double east) const {
  if (!is_longitude(west) || !is_longitude(east)) return {};
  // An outline that only touches the view's edge isn't drawn there. `touch` is a tolerance: an
  // overlap that small counts as touching, since rounding may have caused it.
  constexpr double touch = 1e-6;
  const int first = static_cast<int>(std::ceil((west_ + touch - east) / 360.0));
  const int last = static_cast<int>(std::floor((east_ - touch - west) / 360.0));
  return first <= last ? Turns{first, last} : Turns{};
}

}  // namespace example
