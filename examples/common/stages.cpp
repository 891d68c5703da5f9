#include "common/stages.h"

#include <algorithm>
#include <iterator>

namespace example {

namespace {

// Makes a record of one polygon for the library, which only reads it.
drw_pset_t part_of(const MapPolygons& set, std::size_t first, std::size_t count) {
  return {static_cast<int>(count), const_cast<real_pt_t*>(set.points.data() + first),
          const_cast<int*>(set.edge_flags.data() + first)};
}

template <class Point>
void resize(Polygons<Point>& set, std::size_t size) {
  set.points.resize(size);
  set.edge_flags.resize(size);
}

// Appends the part of `source` inside `frame`. `room` is reused from polygon to polygon.
void append_clipped(drw_pset_t source, real_rect_t frame, ClipSet clip, MapPolygons& room,
                    MapPolygons& out) {
  // the most vertices that either operation writes
  const std::size_t most = 5 * static_cast<std::size_t>(source.n_points) + 4;
  if (room.points.size() < most) resize(room, most);
  drw_pset_t target = {0, room.points.data(), room.edge_flags.data()};
  clip(&source, &target, &frame);
  out.points.insert(out.points.end(), target.points, target.points + target.n_points);
  out.edge_flags.insert(out.edge_flags.end(), target.edge_flags,
                        target.edge_flags + target.n_points);
}

void move_east(real_pt_t* first, real_pt_t* last, double degrees) {
  for (; first != last; ++first) first->x += degrees;
}

bool comes_before(const real_pt_t& a, const real_pt_t& b) {
  return a.x != b.x ? a.x < b.x : a.y < b.y;
}

// Counts the vertices of `before` that are also in `after`: those that clipping has kept.
std::ptrdiff_t count_kept(std::vector<real_pt_t> before, std::vector<real_pt_t> after) {
  if (after.empty()) return 0;
  const auto is_same = [](real_pt_t a, real_pt_t b) { return a.x == b.x && a.y == b.y; };
  const bool are_all_kept =
      std::equal(before.begin(), before.end(), after.begin(), after.end(), is_same);
  if (are_all_kept) return std::ssize(before);
  std::sort(before.begin(), before.end(), comes_before);
  std::sort(after.begin(), after.end(), comes_before);
  std::vector<real_pt_t> kept;
  std::set_intersection(before.begin(), before.end(), after.begin(), after.end(),
                        std::back_inserter(kept), comes_before);
  return std::ssize(kept);
}

}  // namespace

MapPolygons clip_to_view(const MapPolygons& polygons, const View& view, Tally& tally,
                         ClipSet clip) {
  MapPolygons out, room;
  for_each_polygon(polygons, [&](std::size_t first, std::size_t count) {
    const drw_pset_t polygon = part_of(polygons, first, count);
    const std::vector<real_pt_t> before(polygon.points, polygon.points + count);
    const auto [west, east] = std::minmax_element(
        before.begin(), before.end(), [](real_pt_t a, real_pt_t b) { return a.x < b.x; });
    const View::Turns turns = view.turns_between(west->x, east->x);
    const std::size_t old_size = out.points.size();
    std::vector<real_pt_t> after;
    for (int turn = turns.first; turn <= turns.last; ++turn) {
      // Moves the view, not the polygon, so that kept vertices stay equal and can be counted.
      real_rect_t frame = view.frame();
      move_east(frame.corners, frame.corners + 4, -360.0 * turn);
      const std::size_t turn_start = out.points.size();
      append_clipped(polygon, frame, clip, room, out);
      // Only after clipping: ClipPolygonSet can move a lone invisible flag to another edge.
      hide_cuts(out, turn_start);
      real_pt_t* const piece = out.points.data() + turn_start;
      real_pt_t* const piece_end = out.points.data() + out.points.size();
      after.insert(after.end(), piece, piece_end);
      move_east(piece, piece_end, 360.0 * turn);
    }
    const auto pieces = std::count_if(
        out.edge_flags.begin() + static_cast<std::ptrdiff_t>(old_size), out.edge_flags.end(),
        [](int flag) { return flag >= drw_edge_close_invisible; });
    const std::ptrdiff_t kept = count_kept(before, after);
    tally.polygons.came_in += 1;
    tally.polygons.clipped_away += pieces == 0 ? 1 : 0;
    tally.polygons.added += std::max<std::ptrdiff_t>(pieces - 1, 0);
    tally.vertices.came_in += std::ssize(before);
    tally.vertices.clipped_away += std::ssize(before) - kept;
    tally.vertices.added += std::ssize(after) - kept;
  });
  return out;
}

DevicePolygons map_to_device(const MapPolygons& polygons, const View& view, Tally& tally) {
  DevicePolygons mapped, out;
  resize(mapped, polygons.points.size());
  drw_dpset_t target = {0, mapped.points.data(), mapped.edge_flags.data()};
  view.to_device().XfmPolygons(part_of(polygons, 0, polygons.points.size()), &target);
  resize(mapped, static_cast<std::size_t>(target.n_points));
  for_each_polygon(mapped, [&](std::size_t first, std::size_t count) {
    const auto points = mapped.points.begin() + static_cast<std::ptrdiff_t>(first);
    const auto edge_flags = mapped.edge_flags.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = static_cast<std::ptrdiff_t>(count);
    const bool is_line = count == 3 && points[2].x == points[0].x && points[2].y == points[0].y;
    const bool has_area = count >= 3 && !is_line;
    tally.polygons.merged += has_area ? 0 : 1;
    tally.polygons.drawn += has_area ? 1 : 0;
    if (!has_area) return;
    out.points.insert(out.points.end(), points, points + end);
    out.edge_flags.insert(out.edge_flags.end(), edge_flags, edge_flags + end);
  });
  tally.vertices.merged += std::ssize(polygons.points) - std::ssize(out.points);
  tally.vertices.drawn += std::ssize(out.points);
  return out;
}

}  // namespace example
