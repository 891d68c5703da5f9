#include <zelvan/detail/edge_flags.h>
#include <zelvan/detail/new_array.h>
#include <zelvan/pick/detail/prepared_ring.h>
#include <zelvan/pick/detail/ring_grid.h>
#include <zelvan/pick/detail/winding.h>
#include <zelvan/pick/pick_index.h>

#include <algorithm>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace zelvan {
namespace {

// Shorter rings are as fast without a tree.
constexpr unsigned int fewest_for_tree = 128;

// Fewer rings are as fast without a grid.
constexpr int fewest_for_grid = 6;

// The sizes of a table's arrays.
struct Sizes {
  int rings = 0;
  std::size_t vertices = 0;
  std::size_t points = 0;  // the first of each ring is stored twice
  std::size_t groups = 0;

  void add_ring(unsigned int n) {
    ++rings;
    vertices += n;
    if (n >= 3) points += std::size_t{n} + 1;
    if (n >= fewest_for_tree) groups += groups_in_tree(n);
  }
};

template <class Look>
void for_each_polygon(const drw_pset_t& set, const Look& look) {
  int first = 0;
  for (int i = 0; i < set.n_points; ++i) {
    if (!is_closing(set.edge_flags[i])) continue;
    look(set.points + first, static_cast<unsigned int>(i + 1 - first));
    first = i + 1;
  }
}

}  // namespace

struct PickTable {
  explicit PickTable(const Sizes& sizes);
  bool has_memory() const;

  // Copies a ring into the table and prepares it.
  template <class Point>
  void append(const Point* from, unsigned int n);

  // Completes the table after the last ring. Returns false if the heap refuses.
  bool finish();

  // Calls `look(k, winding number)` in ascending order for the rings from `first` up to but not
  // including `last` that wind about the point. Stops when `look` returns false.
  template <class Look>
  void visit(int first, int last, double x, double y, const Look& look) const;

  std::size_t bytes() const;

  Sizes used;  // what the rings appended so far use
  std::unique_ptr<PreparedRing[]> rings;
  std::unique_ptr<DblPt[]> points;
  std::unique_ptr<BoxGroup[]> groups;
  RingGrid grid;  // filled from `fewest_for_grid` rings on
};

PickTable::PickTable(const Sizes& sizes)
    : rings(new_array<PreparedRing>(static_cast<std::size_t>(sizes.rings))),
      points(new_array<DblPt>(sizes.points)),
      groups(new_array<BoxGroup>(sizes.groups)) {}

bool PickTable::has_memory() const {
  return rings != nullptr && points != nullptr && groups != nullptr;
}

template <class Point>
void PickTable::append(const Point* from, unsigned int n) {
  PreparedRing& ring = rings[used.rings];
  DblPt* const to = &points[used.points];
  BoxGroup* const tree = &groups[used.groups];
  used.add_ring(n);
  if (n < 3) return;

  for (unsigned int i = 0; i < n; ++i) to[i].set(from[i].x, from[i].y);
  to[n] = to[0];
  ring.points = to;
  ring.n = n;
  if (!are_ordinary(to, n)) {
    ring.box = whole_plane;
  } else if (n < fewest_for_tree) {
    ring.box = box_of_chain(to, n);
  } else {
    ring.box = fill_tree(tree, to, n);
    if (!is_scribble(tree, n, ring.box)) ring.tree = tree;
  }
}

bool PickTable::finish() {
  return used.rings < fewest_for_grid || grid.fill(rings.get(), used.rings, 2 * used.vertices);
}

template <class Look>
void PickTable::visit(int first, int last, double x, double y, const Look& look) const {
  if (used.rings < fewest_for_grid) {
    for (int k = std::max(first, 0); k < std::min(last, used.rings); ++k) {
      const int winding = rings[k].winding_number(x, y);
      if (winding == 0) continue;
      if (!look(k, winding)) return;
    }
    return;
  }
  const std::span<const int> near_by = grid.around(x, y);
  auto k = std::lower_bound(near_by.begin(), near_by.end(), first);
  for (; k != near_by.end() && *k < last; ++k) {
    const int winding = rings[*k].winding_number(x, y);
    if (winding == 0) continue;
    if (!look(*k, winding)) return;
  }
}

std::size_t PickTable::bytes() const {
  return sizeof *this + static_cast<std::size_t>(used.rings) * sizeof(PreparedRing) +
         used.points * sizeof(DblPt) + used.groups * sizeof(BoxGroup) + grid.bytes();
}

}  // namespace zelvan

namespace {

using zelvan::PickTable;

// Makes the table of the rings for which `for_each_ring(look)` calls `look(points, n)`: once to add
// up the sizes, once to copy the points. Returns null if the heap refuses.
template <class ForEachRing>
PickTable* table_of(const ForEachRing& for_each_ring) {
  zelvan::Sizes sizes;
  for_each_ring([&](const auto*, unsigned int n) { sizes.add_ring(n); });
  std::unique_ptr<PickTable> table(new (std::nothrow) PickTable(sizes));
  if (table == nullptr || !table->has_memory()) return nullptr;
  for_each_ring([&](const auto* points, unsigned int n) { table->append(points, n); });
  return table->finish() ? table.release() : nullptr;
}

// Not inline, so that the path for a short ring needn't save registers.
[[gnu::noinline]] bool is_in_any(const PickTable& table, double x, double y) {
  bool is_inside = false;
  table.visit(0, table.used.rings, x, y, [&](int, int) {
    is_inside = true;
    return false;
  });
  return is_inside;
}

}  // namespace

CPickIndex::CPickIndex(const CPolygon& polygon)
    : CPickIndex(static_cast<unsigned int>(polygon.end() - polygon.start()), polygon.start()) {}

CPickIndex::CPickIndex(unsigned int n, const DblPt* points)
    : CPickIndex(table_of([=](const auto& look) { look(points, n); })) {}

CPickIndex::CPickIndex(const drw_pset_t& set)
    : CPickIndex(table_of([&](const auto& look) { zelvan::for_each_polygon(set, look); })) {}

// A single ring without a tree is also reachable from the index itself: one load less saves a tenth
// of the query time.
CPickIndex::CPickIndex(PickTable* made) : table(made), short_ring(nullptr), n_short(0) {
  if (table == nullptr || table->used.rings != 1 || table->rings[0].tree != nullptr) return;
  short_ring = table->rings[0].points;
  n_short = table->rings[0].n;
}

CPickIndex::CPickIndex(CPickIndex&& other) noexcept
    : table(std::exchange(other.table, nullptr)),
      short_ring(std::exchange(other.short_ring, nullptr)),
      n_short(other.n_short) {}

CPickIndex& CPickIndex::operator=(CPickIndex&& other) noexcept {
  CPickIndex taken(std::move(other));
  std::swap(table, taken.table);
  std::swap(short_ring, taken.short_ring);
  std::swap(n_short, taken.n_short);
  return *this;
}

CPickIndex::~CPickIndex() { delete table; }

bool CPickIndex::isReady() const { return table != nullptr; }

int CPickIndex::countPolygons() const { return table == nullptr ? 0 : table->used.rings; }

std::size_t CPickIndex::countBytes() const { return table == nullptr ? 0 : table->bytes(); }

bool CPickIndex::isInside(const DblPt& p) const { return isInside(p.x, p.y); }

bool CPickIndex::isInside(double x, double y) const {
  if (short_ring != nullptr) return zelvan::winding_of_ring(short_ring, n_short, x, y) != 0;
  return table != nullptr && is_in_any(*table, x, y);
}

int CPickIndex::countInside(int n, const DblPt* points, unsigned char* hits) const {
  int count = 0;
  for (int i = 0; i < n; ++i) {
    const bool is_hit = isInside(points[i].x, points[i].y);
    if (hits != nullptr) hits[i] = is_hit ? 1 : 0;
    count += is_hit;
  }
  return count;
}

int CPickIndex::findPolygons(double x, double y, int* numbers, int capacity) const {
  int count = 0;
  if (table == nullptr) return 0;
  table->visit(0, table->used.rings, x, y, [&](int k, int) {
    if (count < capacity) numbers[count] = k;
    ++count;
    return true;
  });
  return count;
}

int CPickIndex::windingNumber(int k, double x, double y) const { return windingNumber(k, 1, x, y); }

int CPickIndex::windingNumber(int first, int count, double x, double y) const {
  int sum = 0;
  if (table == nullptr) return 0;
  const long long last = std::clamp(static_cast<long long>(first) + count, 0LL,
                                    static_cast<long long>(table->used.rings));
  table->visit(first, static_cast<int>(last), x, y, [&](int, int winding) {
    sum += winding;
    return true;
  });
  return sum;
}
