/// What part of the map is shown, and how large.
#pragma once

#include <zelvan/transforms/mtx2d.h>

#include "common/countries.h"

#include <optional>

namespace example {

/// Device units are eighths of a pixel: finer than the eye, so that outlines keep their shape,
/// and the centre of a pixel is a device point.
inline constexpr int units_per_pixel = 8;

/// What a user says about a view. Requires: finite values, sizes above zero.
struct ViewSettings {
  double centre_longitude = 0.0;
  double centre_latitude = 0.0;
  double width = 360.0;   ///< degrees of longitude across the picture
  double rotation = 0.0;  ///< degrees by which the map is turned counter-clockwise
  int pixels_wide = 1600;
  int pixels_high = 800;
};

/// The transform between map and picture, both ways.
///
/// Longitude and latitude are drawn as x and y, latitudes stretched so that shapes are true at
/// the centre of the view.
class View {
 public:
  explicit View(const ViewSettings& settings);

  /// From degrees to device units; y runs down from the top left corner.
  Mtx2D to_device() const { return to_device_; }

  /// The rectangle to clip to, in degrees, turned as the view is. What lies inside is inside
  /// the picture once it is rounded to device units.
  real_rect_t frame() const { return frame_; }

  /// The longitude and latitude at the centre of a pixel.
  real_pt_t place_of(int_pt_t pixel) const;

  /// The pixel that shows a place, if any does.
  std::optional<int_pt_t> pixel_of(real_pt_t place) const;

  /// True for a pixel of the picture.
  bool contains(int_pt_t pixel) const;

  /// The map repeats every 360 degrees. Counts the turns, from `first` to `last`, by which
  /// what lies between two longitudes can be moved to meet the view; just 0 where none does.
  struct Turns {
    int first = 0;
    int last = 0;
  };
  Turns turns_between(double west, double east) const;

 private:
  ViewSettings settings_;
  Mtx2D to_device_;
  Mtx2D to_map_;
  real_rect_t frame_;
  double west_;  ///< smallest and largest longitude of the frame
  double east_;
};

}  // namespace example
