#include "common/compact_outlines.h"

#include "common/error.h"
#include "common/printable.h"

#include <cstdint>

namespace example {

namespace {

constexpr std::string_view first_line = "outlines in 1/500 degree\n";
constexpr double units_per_degree = 500.0;  // a whole number, so whole degrees are exact

// Reads the countries one by one.
class Reader {
 public:
  Reader(const std::string& path, std::string_view text, std::size_t start)
      : path_(path), text_(text), start_(start) {}

  bool has_more() const { return at_ < text_.size(); }
  std::size_t at() const { return start_ + at_; }

  Country read() {
    const std::size_t name_end = text_.find('\n', at_);
    if (name_end == text_.npos) fail("a name without an end");
    Country country{printable(text_.substr(at_, name_end - at_)), {}};
    if (country.name.empty()) country.name = "unnamed";
    at_ = name_end + 1;
    std::int64_t x = 0, y = 0;  // wide enough for the sum of any file's steps
    for (std::uint32_t polygons = read_number(); polygons > 0; --polygons) {
      std::uint32_t vertices = read_number();
      if (vertices < 3) fail("a polygon of fewer than three vertices");
      ring_.clear();
      for (; vertices > 0; --vertices) {
        x += read_step();
        y += read_step();
        ring_.push_back(
            {static_cast<double>(x) / units_per_degree, static_cast<double>(y) / units_per_degree});
      }
      add_polygon(country.outline, ring_);
    }
    return country;
  }

 private:
  [[noreturn]] void fail(const char* what) const {
    throw Error(path_ + ": at byte " + std::to_string(at()) + ": " + what);
  }

  std::uint32_t read_number() {
    std::uint32_t number = 0;
    for (int shift = 0; shift < 32; shift += 7) {
      if (!has_more()) fail("the file ends too early");
      const auto byte = static_cast<unsigned char>(text_[at_++]);
      number |= static_cast<std::uint32_t>(byte & 127) << shift;
      if (byte < 128) return number;
    }
    fail("a number of more than 32 bits");
  }

  std::int64_t read_step() {
    const std::int64_t number = read_number();
    const std::int64_t half = number / 2;
    return number % 2 == 0 ? half : -half - 1;
  }

  const std::string& path_;
  std::string_view text_;
  std::size_t start_;  ///< offset in the file at which `text_` begins
  std::size_t at_ = 0;
  std::vector<real_pt_t> ring_;
};

}  // namespace

bool is_compact(std::string_view text) { return text.starts_with(first_line); }

std::vector<Feature> find_compact_features(const std::string& path, std::string_view text) {
  std::vector<Feature> features;
  Reader reader(path, text.substr(first_line.size()), first_line.size());
  while (reader.has_more()) {
    const std::size_t start = reader.at();
    reader.read();
    features.push_back({start, reader.at() - start, ""});
  }
  return features;
}

Country read_compact_feature(const std::string& path, const Feature& feature,
                             std::string_view text) {
  return Reader(path, text, feature.start).read();
}

}  // namespace example
