/// Tests of the edge flags of a polygon set.
#pragma once

#include <zelvan/transforms/records.h>

namespace zelvan {

/// True if the flag closes a polygon: it belongs to the polygon's last vertex.
inline bool is_closing(int edge_flag) {
  return edge_flag == drw_edge_close_invisible || edge_flag == drw_edge_close_visible;
}

}  // namespace zelvan
