/// Conversion of lengths between inches and other units.
///
/// | Code    | Unit                  | In one inch |
/// |---------|-----------------------|-------------|
/// | 0, 1, 3 | inches                | 1           |
/// | 2       | millimetres           | 25.4        |
/// | 4       | feet                  | 1 / 12      |
/// | 5       | miles                 | 1 / 63360   |
/// | 6       | metres                | 0.0254      |
/// | 7       | kilometres            | 2.54e-05    |
/// | 8       | thousandths of an inch| 1000        |
/// | 9       | microns               | 25400       |
/// | 10      | centimetres           | 2.54        |
/// | 11      | millionths of an inch | 1000000     |
///
/// Any other code means inches as well. Every function may run on any thread.
#pragma once

#include <zelvan/export.h>

/// Converts `value` inches to the unit with code `unit`.
ZELVAN_C_API double utl_inches_to_units(double value, int unit);

/// Converts `value` from the unit with code `unit` to inches.
ZELVAN_C_API double utl_units_to_inches(double value, int unit);
