#include <zelvan/pick/detail/ring_tree.h>
#include <zelvan/pick/detail/winding.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace zelvan {
namespace {

bool is_ordinary(double v) {
  const double size = std::fabs(v);
  return size == 0.0 || (size >= 0x1p-300 && size <= 0x1p300);
}

// Returns the number of edges below one box of the root group.
std::size_t span_of_root(std::size_t n) {
  std::size_t span = edges_in_leaf;
  while (span * boxes_in_group < n) span *= boxes_in_group;
  return span;
}

std::size_t child_of(std::size_t group, std::size_t j) { return boxes_in_group * group + 1 + j; }

std::size_t groups_above_last_level(std::size_t n) {
  std::size_t first = 0;  // the first group of a level; all groups above that level come before it
  for (std::size_t span = span_of_root(n); span > edges_in_leaf; span /= boxes_in_group) {
    first = child_of(first, 0);
  }
  return first;
}

// Fills the boxes of a group, whose first box begins at edge `first`, and all groups below. Returns
// the box around all of them.
Box fill_group(BoxGroup* tree, std::size_t group, const DblPt* points, std::size_t n,
               std::size_t first, std::size_t span) {
  Box all;
  for (std::size_t j = 0; j < boxes_in_group; ++j, first += span) {
    Box box;
    if (first < n) {
      box = span == edges_in_leaf
                ? box_of_chain(points + first, std::min(span, n - first) + 1)
                : fill_group(tree, child_of(group, j), points, n, first, span / boxes_in_group);
    }
    tree[group].left[j] = box.left;
    tree[group].bottom[j] = box.bottom;
    tree[group].right[j] = box.right;
    tree[group].top[j] = box.top;
    all = unite(all, box);
  }
  return all;
}

// Returns a bit for each box: set if the box contains the height of the point and does not lie
// wholly to the left of the point.
unsigned int boxes_that_count(const BoxGroup& group, double x, double y) {
  unsigned int counting = 0;
  for (unsigned int j = 0; j < boxes_in_group; ++j) {
    const bool counts = (y >= group.bottom[j]) & (y < group.top[j]) & (x <= group.right[j]);
    counting |= static_cast<unsigned int>(counts) << j;
  }
  return counting;
}

// Returns true if each of the first `n` boxes contains the point. Requires: `counting` is the
// result of `boxes_that_count` for this group and point.
bool all_hold(const BoxGroup& group, std::size_t n, unsigned int counting, double x) {
  return counting == (1U << n) - 1 && x >= *std::max_element(group.left, group.left + n);
}

struct Question {
  const BoxGroup* tree;
  const DblPt* points;
  std::size_t n;
  double x, y;

  int winding_in_group(std::size_t group, std::size_t first, std::size_t span) const {
    int winding = 0;
    const BoxGroup& boxes = tree[group];
    const unsigned int counting = boxes_that_count(boxes, x, y);
    if (span == edges_in_leaf) {
      // If all boxes contain the point, testing their edges in one call is fastest.
      const std::size_t count = std::min(boxes_in_group * span, n - first);
      if (all_hold(boxes, (count + span - 1) / span, counting, x)) {
        return winding_of_chain(points + first, static_cast<unsigned int>(count + 1), x, y);
      }
    }
    for (unsigned int rest = counting; rest != 0; rest &= rest - 1) {
      const auto j = static_cast<std::size_t>(std::countr_zero(rest));
      const std::size_t begin = first + j * span;
      const std::size_t end = std::min(begin + span, n);
      if (x < boxes.left[j]) {
        winding += (y >= points[begin].y) - (y >= points[end].y);
      } else if (span == edges_in_leaf) {
        const auto count = static_cast<unsigned int>(end - begin + 1);
        winding += winding_of_chain(Plain{}, points + begin, count, x, y);
      } else {
        winding += winding_in_group(child_of(group, j), begin, span / boxes_in_group);
      }
    }
    return winding;
  }
};

}  // namespace

Box unite(const Box& a, const Box& b) {
  return {std::min(a.left, b.left), std::min(a.bottom, b.bottom), std::max(a.right, b.right),
          std::max(a.top, b.top)};
}

bool are_ordinary(const DblPt* points, std::size_t n) {
  return std::all_of(points, points + n,
                     [](const DblPt& p) { return is_ordinary(p.x) && is_ordinary(p.y); });
}

// Why the comparison is certain beyond the margin:
//
// Take an edge from a to b that passes the height of the point (x, y). Let dx and dy be b minus a,
// t = y - a.y, so |t| <= |dy|, and D = x - a.x. `winding_of_chain` compares dx * t with D * dy.
//
// Beyond the margin the point is to the left or right of the whole edge, by a distance d of at
// least the margin (up to rounding). Then either the two products have opposite signs, or |D| >=
// |dx| + d. Each product carries three roundings of 2^-53, and d is more than 2^-50 of |dx|. So
// after rounding D * dy is still the larger in magnitude. It can't underflow: |D| is at least
// 2^-301, and |dy| at least 2^-352, since ordinary coordinates are multiples of 2^-352. If it
// overflows, its sign is right.
Box box_of_chain(const DblPt* points, std::size_t n) {
  Box box;
  for (const DblPt* p = points; p != points + n; ++p) box = unite(box, {p->x, p->y, p->x, p->y});
  const double reach = std::max(std::fabs(box.left), std::fabs(box.right));
  const double margin = reach * 0x1p-48 + 0x1p-300;
  box.left -= margin;
  box.right += margin;
  return box;
}

std::size_t groups_in_tree(std::size_t n) {
  constexpr std::size_t edges_in_last_group = edges_in_leaf * boxes_in_group;
  return groups_above_last_level(n) + (n + edges_in_last_group - 1) / edges_in_last_group;
}

Box fill_tree(BoxGroup* tree, const DblPt* points, std::size_t n) {
  return fill_group(tree, 0, points, n, 0, span_of_root(n));
}

bool is_scribble(const BoxGroup* tree, std::size_t n, const Box& ring) {
  const double half_width = (ring.right - ring.left) / 2.0;
  const double half_height = (ring.top - ring.bottom) / 2.0;
  std::size_t large_leaves = 0;
  for (std::size_t i = groups_above_last_level(n); i < groups_in_tree(n); ++i) {
    for (std::size_t j = 0; j < boxes_in_group; ++j) {
      const double width = tree[i].right[j] - tree[i].left[j];
      const double height = tree[i].top[j] - tree[i].bottom[j];
      large_leaves += width > half_width && height > half_height;
    }
  }
  return large_leaves * edges_in_leaf > n / 2;
}

int winding_in_tree(const BoxGroup* tree, const DblPt* points, std::size_t n, double x, double y) {
  return Question{tree, points, n, x, y}.winding_in_group(0, 0, span_of_root(n));
}

}  // namespace zelvan
