#include <zelvan/geometry/units.h>

#include <iterator>

namespace {

// The number of units in an inch, by unit code. Three codes mean inches.
constexpr double units_per_inch[] = {
    1.0,            // inches
    1.0,            // inches
    25.4,           // millimetres
    1.0,            // inches
    1.0 / 12.0,     // feet
    1.0 / 63360.0,  // miles
    0.0254,         // metres
    2.54e-05,       // kilometres
    1000.0,         // thousandths of an inch
    25400.0,        // microns
    2.54,           // centimetres
    1000000.0,      // millionths of an inch
};

double factor(int unit) {
  const bool is_known = unit >= 0 && unit < static_cast<int>(std::size(units_per_inch));
  return is_known ? units_per_inch[unit] : 1.0;
}

}  // namespace

double utl_inches_to_units(double value, int unit) { return value * factor(unit); }

double utl_units_to_inches(double value, int unit) { return value / factor(unit); }
