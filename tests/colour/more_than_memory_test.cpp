// Counts whose entries take more bytes than a size of 32 bits can say.
#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_rw_map.h>
#include <zelvan/colour/color_xfm.h>

#include <climits>

#include <gtest/gtest.h>

static_assert(sizeof(void*) == 4, "with 64 bits all of these fit");

TEST(ColorMap, OfMoreEntriesThanMemoryCanHoldIsEmpty) {
  for (const int size : {0x15555556, INT_MAX}) {  // 12 bytes each; the first product wraps to 8
    int number = 0;
    EXPECT_EQ(ColorMap(size, 255).map_size, 0u) << size;
    EXPECT_EQ(ColorMap(size, 255, &number).map_size, 0u) << size;
    EXPECT_EQ(ColNewColorMap(size, 255, &number), nullptr) << size;
    EXPECT_EQ(ColOpen(size, 255), nullptr) << size;
  }
}

TEST(ColorTables, OfMorePensThanMemoryCanHoldAreEmpty) {
  for (const int size : {0x40000001, INT_MAX}) {  // 4 bytes each; the first product wraps to 4
    EXPECT_EQ(ColorXfm(size).xfm_size, 0u) << size;
    EXPECT_EQ(ColOpenXfm(size), nullptr) << size;
    EXPECT_EQ(ColorRWMap(size).rw_size, 0u) << size;
  }
}
