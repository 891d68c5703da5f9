// The 13 built-in line types: a line of each, and its fragments.

#include "gallery/pages.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr int n_built_in = 13;
constexpr double margin = 24.0, row_height = 30.0, head_height = 40.0;
constexpr double line_left = 70.0, line_right = 560.0, fragments_left = 590.0, sum_right = 856.0;
constexpr double points_per_unit = 0.2;  // so that a line shows the longest pattern five times

// Returns the dashes of a line from `left` to `right`: the pattern, repeated.
std::vector<Points> dashes(CLineTypeDefPattern pattern, double left, double right, double y) {
  if (pattern.GetNumFragments() == 1) return {{{left, y}, {right, y}}};
  std::vector<Points> result;
  bool is_dash = true;
  for (double x = left; x < right; is_dash = !is_dash) {
    double fragment = pattern.GetNextFragment();
    if (fragment < 0.0) fragment = pattern.GetFirstFragment();
    const double end = std::min(x + fragment * points_per_unit, right);
    if (is_dash) result.push_back({{x, y}, {end, y}});
    x = end;
  }
  return result;
}

std::string fragments_of(CLineTypeDefPattern pattern) {
  std::string text;
  double fragment = pattern.GetFirstFragment();
  for (int n = pattern.GetNumFragments(); n > 0; --n, fragment = pattern.GetNextFragment()) {
    text += (text.empty() ? "" : "  ") + std::to_string(static_cast<int>(fragment));
  }
  return text;
}

void draw(Canvas& canvas) {
  CLineTypeDefList line_types;
  const auto title = [&](double x, const char* text, Align align) {
    canvas.text({x, head_height - 14.0}, text, grey, 10.5, align);
  };
  title(margin, "index", Align::left);
  title(fragments_left, "fragments: dash, gap, dash, gap...", Align::left);
  title(sum_right, "sum", Align::right);
  for (int i = 0; i < n_built_in; ++i) {
    CLineTypeDefinition* line_type = line_types.GetDefinition(static_cast<unsigned>(i) + 1);
    if (line_type == nullptr) continue;  // the list had no memory for it
    CLineTypeDefPattern pattern = line_type->GetPattern();
    const double top = head_height + i * row_height, middle = top + row_height / 2.0;
    canvas.stroke({{margin, top}, {sum_right, top}}, {hairline, 1.0});
    for (const Points& dash : dashes(pattern, line_left, line_right, middle)) {
      const real_pt_t a = dash.front(), b = dash.back();
      canvas.fill({{{a.x, a.y - 1.5}, {b.x, b.y - 1.5}, {b.x, b.y + 1.5}, {a.x, a.y + 1.5}}}, ink);
    }
    const double baseline = middle + 4.0;
    canvas.text({margin + 20.0, baseline}, std::to_string(i + 1), ink, 11.0, Align::right, true);
    canvas.text({fragments_left, baseline}, fragments_of(pattern), ink);
    canvas.text({sum_right, baseline}, std::to_string(static_cast<int>(pattern.GetFragmentSum())),
                grey, 11.0, Align::right);
  }
}

}  // namespace

const Page line_types_page = {"line_types", 880, 446, draw};

}  // namespace gallery
