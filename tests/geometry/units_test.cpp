#include <zelvan/geometry/units.h>

#include <gtest/gtest.h>

TEST(Units, AreConvertedByTheTable) {
  const double in_one_inch[] = {1,    1,     25.4, 1,       1 / 12.0, 1 / 63360.0, 0.0254, 2.54e-05,
                                1000, 25400, 2.54, 1000000, 1};
  for (int unit = -1; unit <= 12; ++unit) {
    const double factor = unit < 0 ? 1 : in_one_inch[unit];
    EXPECT_EQ(utl_inches_to_units(3, unit), 3 * factor) << "unit " << unit;
    EXPECT_EQ(utl_units_to_inches(3, unit), 3 / factor) << "unit " << unit;
  }
}
