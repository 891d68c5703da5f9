#include "gallery/pages.h"

namespace gallery {

std::span<const Page* const> pages() {
  static constexpr const Page* all[] = {
      &arc_extents_page, &clipping_cases_page, &clipping_page,      &conics_page,
      &distances_page,   &line_types_page,     &named_colours_page, &orientations_page,
      &pick_index_page,  &pick_regions_page,
  };
  return all;
}

}  // namespace gallery
