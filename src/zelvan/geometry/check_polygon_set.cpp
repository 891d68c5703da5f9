#include <zelvan/detail/same_point.h>
#include <zelvan/geometry/check_polygon_set.h>
#include <zelvan/geometry/detail/finite_point.h>
#include <zelvan/geometry/detail/orientation.h>

#include <cstdarg>
#include <cstdio>

namespace {

// Checks a set and a rectangle. On a fault, `accepts` writes a description to the caller's buffer
// and returns false.
class Check {
 public:
  Check(char* reason, int size) : reason_(reason), size_(reason != nullptr ? size : 0) {
    if (size_ > 0) reason_[0] = '\0';
  }

  bool accepts(const drw_pset_t& set);
  bool accepts(const real_rect_t& rect);

 private:
  [[gnu::format(printf, 2, 3)]] bool refuse(const char* format, ...);

  char* const reason_;
  const int size_;
};

bool Check::refuse(const char* format, ...) {
  if (size_ <= 0) return false;
  va_list numbers;
  va_start(numbers, format);
  std::vsnprintf(reason_, static_cast<std::size_t>(size_), format, numbers);
  va_end(numbers);
  return false;
}

bool Check::accepts(const drw_pset_t& set) {
  const int n = set.n_points;
  if (n < 0) return refuse("the count of vertices is %d", n);
  if (n > 0 && set.points == nullptr) return refuse("the set has no points");
  if (n > 0 && set.edge_flags == nullptr) return refuse("the set has no edge flags");
  int last_closing = -1;
  for (int i = 0; i < n; ++i) {
    const int edge_flag = set.edge_flags[i];
    if (edge_flag < drw_edge_invisible || edge_flag > drw_edge_close_visible) {
      return refuse("vertex %d has edge flag %d", i, edge_flag);
    }
    if (!zelvan::is_finite(set.points[i])) return refuse("vertex %d is not finite", i);
    if (edge_flag >= drw_edge_close_invisible) last_closing = i;
  }
  if (last_closing == n - 1) return true;
  if (last_closing < 0) return refuse("no closing flag");
  return refuse("no closing flag after vertex %d", last_closing);
}

bool Check::accepts(const real_rect_t& rect) {
  const real_pt_t* const corners = rect.corners;
  for (int k = 0; k < 4; ++k) {
    if (!zelvan::is_finite(corners[k])) return refuse("corner %d is not finite", k);
  }
  for (int k = 0; k < 4; ++k) {
    for (int other = k + 1; other < 4; ++other) {
      if (zelvan::is_same_point(corners[k], corners[other])) {
        return refuse("corners %d and %d are the same", k, other);
      }
    }
  }
  int turns[4];  // at each corner: 1 if the ring turns left, -1 if right
  for (int k = 0; k < 4; ++k) {
    const int before = (k + 3) % 4;
    const int after = (k + 1) % 4;
    turns[k] = zelvan::orientation_sign(corners[before], corners[k], corners[after]);
    if (turns[k] == 0) return refuse("corners %d, %d and %d are in line", before, k, after);
  }
  // A ring that crosses itself turns to one side at two neighbouring corners and to the other side
  // at the other two.
  const int sum = turns[0] + turns[1] + turns[2] + turns[3];
  if (sum == 0) {
    const int first = turns[1] == turns[2] ? 1 : 2;
    return refuse("corners %d and %d cross", first, first + 1);
  }
  for (int k = 0; k < 4; ++k) {
    if (turns[k] != (sum > 0 ? 1 : -1)) return refuse("corner %d makes a dent", k);
  }
  return true;
}

}  // namespace

int zelvan_check_polygon_set(const drw_pset_t* set, const real_rect_t* rect, char* reason,
                             int size) {
  Check check(reason, size);
  const bool is_fine =
      (set == nullptr || check.accepts(*set)) && (rect == nullptr || check.accepts(*rect));
  return is_fine ? 1 : 0;
}
