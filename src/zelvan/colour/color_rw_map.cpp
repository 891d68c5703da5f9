#include <zelvan/colour/color_rw_map.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

ColorRWMap::ColorRWMap(int size) : rw_size(0), rw_count(0), rw_list(nullptr) {
  if (size <= 0) return;
  rw_list =
      static_cast<unsigned int*>(std::calloc(static_cast<std::size_t>(size), sizeof *rw_list));
  if (rw_list != nullptr) rw_size = static_cast<unsigned int>(size);
}

ColorRWMap& ColorRWMap::operator=(const ColorRWMap& other) = default;

ColorRWMap::~ColorRWMap() { std::free(rw_list); }

void ColorRWMap::MakeRoList(ColorRWMap* target, int reserved) {
  const std::int64_t room = target->rw_size;
  const std::int64_t wanted = room - rw_count - reserved;
  target->rw_count = static_cast<unsigned int>(std::clamp<std::int64_t>(wanted, 0, room));

  unsigned int taken = 0;  // number of entries of this list that are below `pen`
  unsigned int filled = 0;
  for (unsigned int pen = 0; filled < target->rw_count; ++pen) {
    if (taken < rw_count && rw_list[taken] == pen) {
      ++taken;
    } else {
      target->rw_list[filled++] = pen;
    }
  }
}
