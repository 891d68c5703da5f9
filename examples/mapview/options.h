/// The command line of mapview.
#pragma once

#include "common/drawing.h"
#include "common/stages.h"
#include "common/view.h"

#include <optional>
#include <string>
#include <vector>

namespace example {

/// The value of `-o` that selects a free name.
inline constexpr const char* automatic_output = "auto";

struct Options {
  std::string data;    ///< a file of outlines
  std::string output;  ///< the file of the picture; `automatic_output` or, for no picture, empty
  std::string label;   ///< the font of the countries' names; empty: no names
  int memory = 0;      ///< a budget for outlines in bytes; 0: no limit
  ViewSettings view;
  ClipSet clip = ClipPolygonSetToView;
  Style style = default_style();
  std::vector<real_pt_t> places;  ///< to pick: longitude and latitude
  std::vector<int_pt_t> pixels;   ///< to pick in the picture, from its top left
};

/// Reads the command line. Returns nothing if it asks for help, which is then printed.
///
/// Throws `Error` for an option that is not understood or out of range, and for a picture that
/// can't be written: that is known before a map is read.
std::optional<Options> read_options(int argc, char** argv);

}  // namespace example
