/// The command line of mapview.
#pragma once

#include "common/drawing.h"
#include "common/stages.h"
#include "common/view.h"

#include <optional>
#include <string>
#include <vector>

namespace example {

struct Options {
  std::string data;    ///< a GeoJSON file
  std::string output;  ///< where the picture goes; "auto" for a free name, empty for none
  std::string label;   ///< the font of the countries' names; empty for none
  int memory = 0;      ///< a budget for outlines in bytes; 0 for none
  ViewSettings view;
  ClipSet clip = ClipPolygonSetToView;
  Style style = default_style();
  std::vector<real_pt_t> places;  ///< picks on the map: longitude and latitude
  std::vector<int_pt_t> pixels;   ///< picks in the picture, from its top left
};

/// Reads the command line. Nothing when it only asked for help, which is then on standard
/// output. Throws `Error` for what can't be understood or is out of range.
std::optional<Options> read_options(int argc, char** argv);

}  // namespace example
