/// The part of the map that a picture shows, and its scale.
#pragma once

#include <zelvan/transforms/mtx2d.h>

#include "common/countries.h"

#include <optional>

namespace example {

/// Device units for each pixel: so fine that rounding does not show, and even, so that the centre
/// of a pixel is a device point.
inline constexpr int units_per_pixel = 8;

/// The options of a view. Requires: finite values, sizes above zero.
struct ViewSettings {
  double centre_longitude = 0.0;
  double centre_latitude = 0.0;
  double width = 360.0;   ///< degrees of longitude across the picture
  double rotation = 0.0;  ///< degrees by which the map is turned counter-clockwise
  int pixels_wide = 1600;
  int pixels_high = 800;
};

/// The transform between map and picture, in both directions.
///
/// Longitude and latitude are drawn as x and y. Latitudes are stretched so that shapes are true at
/// the centre of the view.
class View {
 public:
  explicit View(const ViewSettings& settings);

  /// Returns the map from degrees to device units; y runs down from the top left corner.
  Mtx2D to_device() const { return to_device_; }

  /// Returns the rectangle to clip to, in degrees, turned as the view is. A point inside it lies in
  /// the picture after it is rounded to device units.
  real_rect_t frame() const { return frame_; }

  /// Returns the longitude and latitude at the centre of a pixel.
  real_pt_t place_of(int_pt_t pixel) const;

  /// Returns the pixel that shows a place, or nothing.
  std::optional<int_pt_t> pixel_of(real_pt_t place) const;

  /// True for a pixel of the picture.
  bool contains(int_pt_t pixel) const;

  /// Whole turns about the globe, from `first` to `last`.
  struct Turns {
    int first = 0;
    int last = 0;
  };

  /// Returns the whole turns, first and last, by which an outline between two longitudes must be
  /// moved to the east to meet the view: the map repeats every 360 degrees. Returns the turn 0
  /// alone if no turn makes it meet the view, or if a longitude is out of range (`is_longitude`).
  Turns turns_between(double west, double east) const;

 private:
  ViewSettings settings_;
  Mtx2D to_device_;
  Mtx2D to_map_;
  real_rect_t frame_;
  double west_;  ///< the smallest and largest longitude in the picture
  double east_;
};

}  // namespace example
