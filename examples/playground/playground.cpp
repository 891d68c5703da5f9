#include "playground.h"

#include <zelvan/zelvan.h>

#include "common/colouring.h"
#include "common/compact_outlines.h"
#include "common/labels.h"
#include "common/line_dashes.h"
#include "common/pens.h"
#include "common/picker.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace playground {

extern const unsigned char world_bytes[];  // world-50m.outlines; the build makes this array
extern const unsigned int world_size;

}  // namespace playground

namespace {

using namespace example;

// ---- the world

constexpr double to_radians = std::numbers::pi / 180.0;

double stretched(double latitude) {
  constexpr double steepest = 89.99;  // a pole itself would be at infinity
  const double nearest = std::clamp(latitude, -steepest, steepest);
  const double y = std::log(std::tan((45.0 + nearest / 2.0) * to_radians)) / to_radians;
  // C libraries differ in the last bits of log and tan. Rounding makes the map the same everywhere.
  constexpr double units_per_degree = 1'000'000.0;
  return std::round(y * units_per_degree) / units_per_degree;
}

struct Extent {
  double west;
  double east;
};

// The edges that are visible before clipping.
enum class Edges {
  all,
  outlines,  ///< all but cuts along the antimeridian and the poles
  once       ///< of these, one of two neighbours' copies
};

struct World {
  std::vector<Country> countries;            ///< on the map
  std::vector<Extent> extents;               ///< of each country
  std::vector<std::vector<int>> flags_all;   ///< of each country, with Edges::all
  std::vector<std::vector<int>> flags_once;  ///< with Edges::once
  std::vector<std::size_t> colours;
  Picker picker;
};

// Hides all but the first copy of each edge, whichever way the copies run. Two neighbours both have
// their common border, and dashes drawn twice would fill each other's gaps.
void hide_second_copies(const std::vector<Country>& countries,
                        std::vector<std::vector<int>>& flags) {
  struct Edge {
    real_pt_t low, high;
    std::size_t country, vertex;

    auto ends() const { return std::tie(low.x, low.y, high.x, high.y); }
    auto order() const { return std::tuple_cat(ends(), std::tie(country, vertex)); }
  };
  std::vector<Edge> edges;
  for (std::size_t c = 0; c < countries.size(); ++c) {
    const MapPolygons& outline = countries[c].outline;
    for_each_polygon(outline, [&](std::size_t first, std::size_t count) {
      for (std::size_t i = 0; i < count; ++i) {
        const real_pt_t a = outline.points[first + i];
        const real_pt_t b = outline.points[first + (i + 1) % count];
        const bool runs_up = std::tie(a.x, a.y) < std::tie(b.x, b.y);
        edges.push_back({runs_up ? a : b, runs_up ? b : a, c, first + i});
      }
    });
  }
  std::sort(edges.begin(), edges.end(),
            [](const Edge& a, const Edge& b) { return a.order() < b.order(); });
  for (std::size_t i = 1; i < edges.size(); ++i) {
    int& flag = flags[edges[i].country][edges[i].vertex];
    const bool is_visible = flag % 2 == 1;
    if (is_visible && edges[i].ends() == edges[i - 1].ends()) --flag;
  }
}

World read_world() {
  constexpr std::size_t n_colours = 7;
  const std::string name = "the world";
  const std::string_view text(reinterpret_cast<const char*>(playground::world_bytes),
                              playground::world_size);
  World world;
  for (const Feature& feature : find_compact_features(name, text)) {
    Country country = read_compact_feature(name, feature, text.substr(feature.start, feature.size));
    world.flags_all.push_back(country.outline.edge_flags);
    hide_cuts(country.outline);
    Extent extent = {180.0, -180.0};
    for (real_pt_t& point : country.outline.points) {
      extent = {std::min(extent.west, point.x), std::max(extent.east, point.x)};
      point.y = stretched(point.y);
    }
    world.picker.add(country.name, country.outline);
    world.extents.push_back(extent);
    world.flags_once.push_back(country.outline.edge_flags);
    world.countries.push_back(std::move(country));
  }
  hide_second_copies(world.countries, world.flags_once);
  LoadedWorld loaded(world.countries);
  world.colours = colour_apart(loaded, n_colours);
  return world;
}

World& world() {
  static World the_world = read_world();
  return the_world;
}

int* flags_of(std::size_t country, Edges edges) {
  if (edges == Edges::all) return world().flags_all[country].data();
  if (edges == Edges::once) return world().flags_once[country].data();
  return world().countries[country].outline.edge_flags.data();
}

// ---- the view

struct View {
  Mtx2D to_device;  ///< pixels
  Mtx2D to_map;
  double units_per_pixel;  ///< of the grid that outlines are rounded to
  double width;
  double height;
} view;

// Returns the rectangle on the map that a rectangle on the device shows. A positive angle is
// clockwise, because y runs down.
real_rect_t on_map(double centre_x, double centre_y, double width, double height, double degrees) {
  Mtx2D placed;
  placed.Rotate(degrees, Mtx2DRotateLast);
  placed.Translate(centre_x, centre_y);
  const double x = width / 2.0, y = height / 2.0;
  real_pt_t corners[] = {{-x, -y}, {-x, y}, {x, y}, {x, -y}};
  real_pt_t device[4];
  real_rect_t rect;
  placed.RealXfmPts(4, corners, device);
  view.to_map.RealXfmPts(4, device, rect.corners);
  return rect;
}

// ---- layers

// A polygon set that keeps its memory from frame to frame.
template <class Point>
struct Set {
  Polygons<Point> room;
  std::size_t size = 0;

  void make_room_for(std::size_t more) {
    if (size + more <= room.points.size()) return;
    room.points.resize(2 * (size + more));
    room.edge_flags.resize(2 * (size + more));
  }
};

class Layer {
 public:
  // Draws one country, or all if `country` is -1.
  LayerReport& draw(const real_rect_t& frame, bool cuts_into_rings, Edges edges, int country) {
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const Clock::time_point start = Clock::now();
    report_ = {};
    clip(frame, cuts_into_rings ? ClipPolygonSet : ClipPolygonSetToView, edges, country);
    const Clock::time_point clipped = Clock::now();
    map();
    report_.clip_milliseconds = Milliseconds(clipped - start).count();
    report_.map_milliseconds = Milliseconds(Clock::now() - clipped).count();
    report_.points = drawn_.room.points.data();
    report_.edge_flags = drawn_.room.edge_flags.data();
    report_.pieces = pieces_.data();
    report_.n_pieces = static_cast<int>(pieces_.size());
    report_.kept = static_cast<int>(kept_.size);
    report_.drawn = static_cast<int>(drawn_.size);
    return report_;
  }

  // Returns the outline of one piece of the layer.
  DevicePolygons outline(const Piece& piece) const {
    const auto first = static_cast<std::size_t>(piece.first);
    const auto count = static_cast<std::size_t>(piece.count);
    const int_pt_t* const points = drawn_.room.points.data() + first;
    const int* const flags = drawn_.room.edge_flags.data() + first;
    return {{points, points + count}, {flags, flags + count}};
  }

  const std::vector<Piece>& pieces() const { return pieces_; }

 private:
  using Clip = void (*)(drw_pset_t*, drw_pset_t*, real_rect_t*);

  void clip(const real_rect_t& frame, Clip operation, Edges edges, int country) {
    const auto [west, east] = std::minmax(
        {frame.corners[0].x, frame.corners[1].x, frame.corners[2].x, frame.corners[3].x});
    kept_.size = 0;
    clipped_.clear();
    const std::size_t first = country < 0 ? 0 : static_cast<std::size_t>(country);
    const std::size_t last = country < 0 ? world().countries.size() : first + 1;
    for (std::size_t c = first; c < last; ++c) {
      const Extent extent = world().extents[c];
      // Moves the frame by whole turns instead of the country, so no vertex is rounded.
      const int first_turn = static_cast<int>(std::ceil((west - extent.east) / 360.0));
      const int last_turn = static_cast<int>(std::floor((east - extent.west) / 360.0));
      for (int turn = first_turn; turn <= std::max(first_turn, last_turn); ++turn) {
        clip_country(c, turn, frame, operation, edges);
      }
    }
  }

  void clip_country(std::size_t c, int turn, real_rect_t frame, Clip operation, Edges edges) {
    MapPolygons& outline = world().countries[c].outline;
    drw_pset_t source = {static_cast<int>(outline.points.size()), outline.points.data(),
                         flags_of(c, edges)};
    for (real_pt_t& corner : frame.corners) corner.x -= 360.0 * turn;
    // 5 n + 4 vertices a polygon suffice for both operations, and a polygon has at least three.
    kept_.make_room_for(5 * outline.points.size() + 4 * (outline.points.size() / 3));
    report_.came_in += source.n_points;
    const std::size_t old_size = kept_.size;
    drw_pset_t target = {static_cast<int>(old_size), kept_.room.points.data(),
                         kept_.room.edge_flags.data()};
    operation(&source, &target, &frame);
    kept_.size = static_cast<std::size_t>(target.n_points);
    if (kept_.size == old_size) return;
    clipped_.push_back({static_cast<int>(c), turn, old_size, kept_.size});
  }

  void map() {
    Mtx2D to_grid = view.to_device;
    to_grid.Scale(view.units_per_pixel, view.units_per_pixel);
    drawn_.size = 0;
    pieces_.clear();
    for (const Clipped& clipped : clipped_) {
      Mtx2D placed;  // moves by whole turns around the globe
      placed.Translate(360.0 * clipped.turn, 0.0);
      const Mtx2D turned = clipped.turn == 0 ? to_grid : placed * to_grid;
      const std::size_t old_size = drawn_.size;
      map_polygons(turned, clipped.first, clipped.end - clipped.first);
      if (drawn_.size == old_size) continue;
      pieces_.push_back(
          {clipped.country, static_cast<int>(old_size), static_cast<int>(drawn_.size - old_size)});
    }
  }

  // Drops each polygon of which a point or a single line segment remains, and closes the gap that
  // it leaves in the arrays.
  void map_polygons(const Mtx2D& to_grid, std::size_t first, std::size_t count) {
    drawn_.make_room_for(count);
    int_pt_t* const points = drawn_.room.points.data();
    int* const flags = drawn_.room.edge_flags.data();
    const drw_pset_t source = {static_cast<int>(count), kept_.room.points.data() + first,
                               kept_.room.edge_flags.data() + first};
    drw_dpset_t target = {0, points + drawn_.size, flags + drawn_.size};
    to_grid.XfmPolygons(source, &target);
    const std::size_t end = drawn_.size + static_cast<std::size_t>(target.n_points);
    for (std::size_t i = drawn_.size, start = i; i < end; ++i) {
      if (flags[i] < drw_edge_close_invisible) continue;
      const std::size_t vertices = i + 1 - start;
      const bool is_line =
          vertices == 3 && points[start].x == points[i].x && points[start].y == points[i].y;
      if (vertices >= 3 && !is_line) {
        std::copy_n(points + start, vertices, points + drawn_.size);
        std::copy_n(flags + start, vertices, flags + drawn_.size);
        drawn_.size += vertices;
        ++report_.rings;
      }
      start = i + 1;
    }
  }

  struct Clipped {
    int country;
    int turn;  ///< around the globe
    std::size_t first;
    std::size_t end;
  };

  Set<real_pt_t> kept_;
  Set<int_pt_t> drawn_;
  std::vector<Clipped> clipped_;
  std::vector<Piece> pieces_;
  LayerReport report_ = {};
};

Layer view_layer, frame_layer, country_layer, name_layer;

// Returns the window on the map, larger by a few pixels and one step of the grid, so that lines end
// and join outside of it.
real_rect_t view_frame() {
  const double margin = 4.0 + 1.0 / view.units_per_pixel;
  return on_map(view.width / 2.0, view.height / 2.0, view.width + 2.0 * margin,
                view.height + 2.0 * margin, 0.0);
}

// ---- names

struct Name {
  int country;
  real_pt_t place;  ///< on the map, so that the name moves with it
  double size;      ///< of the letters in pixels
};

std::vector<Name> names;
std::vector<double> placed_names;

// ---- the buffer that JavaScript fills

std::vector<std::uint32_t> room;

// ---- pens

std::optional<Pens> pens;

}  // namespace

// ---- the world

void* room_for(int bytes) {
  room.resize((static_cast<std::size_t>(bytes) + 3) / 4);
  return room.data();
}

int open_world() { return static_cast<int>(world().countries.size()); }

const char* country_name(int country) {
  return world().countries[static_cast<std::size_t>(country)].name.c_str();
}

int country_colour(int country) {
  return static_cast<int>(world().colours[static_cast<std::size_t>(country)]);
}

double map_y(double latitude) { return stretched(latitude); }

double latitude_at(double map_y) {
  return 2.0 * std::atan(std::exp(map_y * to_radians)) / to_radians - 90.0;
}

// ---- the view

void set_view(double x, double y, double pixels_per_degree, double degrees, double width,
              double height, double units_per_pixel) {
  Mtx2D placed;  // the place at the middle of the picture, y still up
  placed.SetXfm(x, y, Mtx2DOrientNone, pixels_per_degree, pixels_per_degree, 0.0, 0.0);
  placed.Rotate(degrees, Mtx2DRotateLast);
  placed.Translate(width / 2.0, height / 2.0);
  Mtx2D flip;  // a matrix of its own: flipping `placed` would lose its turn and its move in y
  flip.InvertYAxis(height);
  view.to_device = placed * flip;
  view.to_map = view.to_device.Invert();
  view.units_per_pixel = units_per_pixel;
  view.width = width;
  view.height = height;
}

const double* place_at(double pixel_x, double pixel_y) {
  static double place[2];
  view.to_map.XfmPt(pixel_x, pixel_y, &place[0], &place[1]);
  return place;
}

const double* pixel_of(double x, double y) {
  static double pixel[2];
  view.to_device.XfmPt(x, y, &pixel[0], &pixel[1]);
  return pixel;
}

// ---- what is drawn

const LayerReport* draw_view(int has_borders_once) {
  const Edges edges = has_borders_once != 0 ? Edges::once : Edges::outlines;
  return &view_layer.draw(view_frame(), false, edges, -1);
}

const LayerReport* draw_frame(double centre_x, double centre_y, double width, double height,
                              double degrees, int cuts_into_rings, int has_borders_once) {
  const Edges edges = has_borders_once != 0 ? Edges::once : Edges::all;
  return &frame_layer.draw(on_map(centre_x, centre_y, width, height, degrees), cuts_into_rings != 0,
                           edges, -1);
}

const LayerReport* draw_country(int country) {
  return &country_layer.draw(view_frame(), false, Edges::outlines, country);
}

// ---- picking

int pick(double pixel_x, double pixel_y) {
  double x, y;
  view.to_map.XfmPt(pixel_x, pixel_y, &x, &y);
  x -= 360.0 * std::floor((x + 180.0) / 360.0);
  const auto country = world().picker.index_at(x, y);
  return country ? static_cast<int>(*country) : -1;
}

// ---- line types

const double* line_type(int index) {
  static std::vector<double> result;
  const auto dashes = line_dashes(index);
  result.assign(1, dashes ? static_cast<double>(dashes->size()) : -1.0);
  if (dashes) result.insert(result.end(), dashes->begin(), dashes->end());
  return result.data();
}

// ---- colours

int colour_of_text() {
  ColorRGB colour;
  if (!colour.SetValue(0, reinterpret_cast<char*>(room.data()))) return -1;
  return static_cast<int>(colour.RGBToBGR32BitColor());
}

int choose_pens(int n_pens) {
  pens.emplace(room, n_pens);
  return static_cast<int>(pens->pixels().size());
}

const std::uint32_t* chosen_pens() { return pens->pixels().data(); }

int colours_before() { return static_cast<int>(pens->reduction().colours); }

void apply_pens() { pens->apply(room); }

// ---- names

int place_names(double left, double top, double width, double height, double largest) {
  const auto* const widths = reinterpret_cast<const double*>(room.data());
  names.clear();
  const double units = view.units_per_pixel;
  const real_rect_t frame = on_map(left + width / 2.0, top + height / 2.0, width, height, 0.0);
  name_layer.draw(frame, false, Edges::outlines, -1);
  for (const Piece& piece : name_layer.pieces()) {
    const auto label = place_label(name_layer.outline(piece), widths[piece.country],
                                   view.width * units, largest * units);
    if (!label) continue;
    Name name = {piece.country, {}, label->size / units};
    view.to_map.XfmPt(label->x / units, label->y / units, &name.place.x, &name.place.y);
    names.push_back(name);
  }
  return static_cast<int>(names.size());
}

const double* placed_names_now() {
  placed_names.clear();
  for (const Name& name : names) {
    double x, y;
    view.to_device.XfmPt(name.place.x, name.place.y, &x, &y);
    placed_names.insert(placed_names.end(), {double(name.country), x, y, name.size});
  }
  return placed_names.data();
}
