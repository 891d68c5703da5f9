/// The pages of the gallery. A new page needs a source that defines its `Page`, a declaration here,
/// and a line in pages.cpp and in CMakeLists.txt.
#pragma once

#include "gallery/canvas.h"

#include <span>

namespace gallery {

/// One picture. `draw` draws on an empty canvas of `width` by `height` points.
struct Page {
  const char* name;  ///< of the file, without its extension
  int width;
  int height;
  void (*draw)(Canvas& canvas);
};

extern const Page arc_extents_page;
extern const Page clipping_cases_page;
extern const Page clipping_page;
extern const Page conics_page;
extern const Page distances_page;
extern const Page line_types_page;
extern const Page named_colours_page;
extern const Page orientations_page;
extern const Page pick_index_page;
extern const Page pick_regions_page;

/// Returns all pages.
std::span<const Page* const> pages();

}  // namespace gallery
