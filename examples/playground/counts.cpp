// Prints what the page's functions count and compute in a native program. The page must show the
// same numbers.
//
//     playground_counts X Y SCALE TURN WIDTH HEIGHT UNITS [X Y WIDTH HEIGHT DEGREES RINGS]
//
// takes the arguments of `set_view`, and optionally those of `draw_frame`. It draws the view, or
// the frame in it, and prints the vertices read, kept and drawn, the rings, and a digest of all
// coordinates and flags.

#include "playground.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

// FNV-1a, one word at a time.
void digest_words(const int* first, int count, std::uint32_t& digest) {
  for (const int* word = first; word != first + count; ++word) {
    digest = (digest ^ static_cast<std::uint32_t>(*word)) * 16777619u;
  }
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int of_view = 7, of_frame = 6;
  if (argc != 1 + of_view && argc != 1 + of_view + of_frame) {
    std::fprintf(stderr, "playground_counts: takes the numbers of a view, or of a frame in it\n");
    return 2;
  }
  const auto number = [argv](int i) { return std::strtod(argv[i], nullptr); };
  open_world();
  set_view(number(1), number(2), number(3), number(4), number(5), number(6), number(7));
  const LayerReport* const layer = argc == 1 + of_view
                                       ? draw_view(1)
                                       : draw_frame(number(8), number(9), number(10), number(11),
                                                    number(12), static_cast<int>(number(13)), 0);
  std::uint32_t digest = 2166136261u;
  digest_words(&layer->points->x, 2 * layer->drawn, digest);
  digest_words(layer->edge_flags, layer->drawn, digest);
  std::printf("%d %d %d %d %u\n", layer->came_in, layer->kept, layer->drawn, layer->rings, digest);
}
