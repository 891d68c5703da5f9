/// The pages of the gallery. A new one takes a source of its own that defines its `Page`, a
/// declaration here, and its place in the list of pages.cpp and in CMakeLists.txt.
#pragma once

#include "gallery/canvas.h"

#include <span>

namespace gallery {

/// One picture: `draw` gets an empty canvas of this many points.
struct Page {
  const char* name;  ///< of the file, without its ending
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

/// All of them.
std::span<const Page* const> pages();

}  // namespace gallery
