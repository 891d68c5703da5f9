#include "common/geojson.h"

#include "common/error.h"
#include "common/globe.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <nlohmann/json.hpp>

namespace example {

namespace {

using Json = nlohmann::json;

// Walks over a text and tells a listener how far it has come.
struct Walker {
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  const char* at;
  const char** seen;

  const char& operator*() const { return *at; }
  Walker& operator++() {
    *seen = ++at;
    return *this;
  }
  bool operator==(const Walker& other) const { return at == other.at; }
  bool operator!=(const Walker& other) const { return at != other.at; }
};

// Listens to a text being parsed and notes its type and where its features start and end, or
// where and why parsing failed.
class FeatureFinder : public nlohmann::json_sax<Json> {
 public:
  explicit FeatureFinder(std::string_view text) : text_(text), seen_(text.data()) {}

  Walker begin() { return {text_.data(), &seen_}; }
  Walker end() { return {text_.data() + text_.size(), &seen_}; }

  std::string type;               // of the whole text
  std::vector<Feature> features;  // the objects of that type in its member "features"
  std::size_t n_elements = 0;     // in that member, whatever they are
  std::size_t fault_offset = 0;
  std::string fault;

  bool null() override { return begin_value(); }
  bool boolean(bool) override { return begin_value(); }
  bool number_integer(number_integer_t) override { return begin_value(); }
  bool number_unsigned(number_unsigned_t) override { return begin_value(); }
  bool number_float(number_float_t, const string_t&) override { return begin_value(); }
  bool binary(binary_t&) override { return begin_value(); }
  bool string(string_t& value) override {
    begin_value();
    if (!levels_.empty() && levels_.back().key == "type") levels_.back().type = value;
    return true;
  }
  bool key(string_t& value) override {
    levels_.back().key = value;
    return true;
  }
  bool start_object(std::size_t) override { return start_level(false); }
  bool start_array(std::size_t) override { return start_level(true); }
  bool end_array() override {
    if (is_among_features()) n_elements = levels_.back().n_values;
    levels_.pop_back();
    return true;
  }
  bool end_object() override {
    const Level level = std::move(levels_.back());
    levels_.pop_back();
    if (levels_.empty()) type = level.type;
    if (is_among_features() && level.type == "Feature") {
      features.push_back({level.start, offset() - level.start, place()});
    }
    return true;
  }
  bool parse_error(std::size_t position, const std::string& token,
                   const nlohmann::detail::exception& error) override {
    constexpr int number_overflow = 406;
    constexpr std::size_t longest = 40;
    const std::string shown = token.size() > longest ? token.substr(0, longest) + "..." : token;
    fault_offset = std::max<std::size_t>(position, 1) - 1;
    fault = error.id == number_overflow ? shown + " is no finite number"
            : token.empty()             ? "no JSON: the file ends too early"
                                        : "no JSON: can't make sense of '" + shown + "'";
    return false;
  }

 private:
  struct Level {
    bool is_array;
    std::size_t start;
    std::size_t n_values = 0;  // of an array, so far
    std::string key = {};      // of an object, the latest
    std::string type = {};     // of an object, once it is known
  };

  std::size_t offset() const { return static_cast<std::size_t>(seen_ - text_.data()); }

  // True directly inside the member "features" of the outermost object.
  bool is_among_features() const {
    return levels_.size() == 2 && levels_[0].key == "features" && levels_[1].is_array;
  }

  bool begin_value() {
    if (!levels_.empty() && levels_.back().is_array) ++levels_.back().n_values;
    return true;
  }

  bool start_level(bool is_array) {
    constexpr std::size_t deepest = 64;
    begin_value();
    levels_.push_back({is_array, offset() - 1});
    if (levels_.size() <= deepest) return true;
    fault_offset = offset() - 1;
    fault = "nested too deeply";
    return false;
  }

  // The JSON pointer of the value under way.
  std::string place() const {
    std::string result;
    for (const Level& level : levels_) {
      result += "/" + (level.is_array ? std::to_string(level.n_values - 1) : level.key);
    }
    return result;
  }

  std::string_view text_;
  const char* seen_;
  std::vector<Level> levels_;
};

std::string line_and_column(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t line_start = before.rfind('\n') + 1;  // 0 where there is none
  return std::to_string(line) + ":" + std::to_string(before.size() - line_start + 1);
}

// Walks the tree of a feature; `place` is the JSON pointer of where it is.
class Reader {
 public:
  explicit Reader(const std::string& path) : path_(path) {}

  Country read(const Json& json, const std::string& place) {
    country_.name = "unnamed";
    const std::string type = type_of(json, place);
    if (type == "Feature") {
      country_.name = name_of(json);
      const Json& geometry = member(json, "geometry", place);
      if (!geometry.is_null()) read_geometry(geometry, place + "/geometry");
    } else if (type == "FeatureCollection") {  // without features, or these would be read
      array(member(json, "features", place), place + "/features");
    } else {
      read_geometry(json, place);
    }
    return std::move(country_);
  }

 private:
  [[noreturn]] void fail(const std::string& place, const std::string& what) const {
    throw Error(path_ + ": " + (place.empty() ? "" : "at " + place + ": ") + what);
  }

  const Json& member(const Json& object, const char* key, const std::string& place) const {
    if (!object.is_object()) fail(place, "an object was expected");
    const auto found = object.find(key);
    if (found == object.end()) fail(place, std::string("no \"") + key + "\"");
    return *found;
  }

  const Json& array(const Json& json, const std::string& place) const {
    if (!json.is_array()) fail(place, "an array was expected");
    return json;
  }

  // Calls `read(element, its place)` for each element of an array.
  template <class Read>
  void read_each(const Json& json, const std::string& place, Read read) {
    std::size_t i = 0;
    for (const Json& element : array(json, place)) read(element, place + "/" + std::to_string(i++));
  }

  std::string type_of(const Json& object, const std::string& place) const {
    const Json& type = member(object, "type", place);
    return type.is_string() ? type.get<std::string>() : "";
  }

  std::string name_of(const Json& feature) const {
    if (const auto properties = feature.find("properties"); properties != feature.end()) {
      for (const char* key : {"name", "NAME", "ADMIN"}) {
        if (!properties->is_object()) break;
        if (const auto name = properties->find(key);
            name != properties->end() && name->is_string()) {
          return name->get<std::string>();
        }
      }
    }
    const auto id = feature.find("id");
    if (id == feature.end()) return "unnamed";
    return id->is_string() ? id->get<std::string>() : id->dump();
  }

  void read_geometry(const Json& json, const std::string& place) {
    const std::string type = type_of(json, place);
    const auto read_rings = [&](const Json& rings, const std::string& p) {
      read_each(rings, p, [&](const Json& ring, const std::string& q) { read_ring(ring, q); });
    };
    if (type == "Polygon") {
      read_rings(member(json, "coordinates", place), place + "/coordinates");
    } else if (type == "MultiPolygon") {
      read_each(member(json, "coordinates", place), place + "/coordinates", read_rings);
    } else if (type == "GeometryCollection") {
      read_each(member(json, "geometries", place), place + "/geometries",
                [&](const Json& j, const std::string& p) { read_geometry(j, p); });
    } else if (type != "Point" && type != "MultiPoint" && type != "LineString" &&
               type != "MultiLineString") {
      fail(place, "no GeoJSON type: \"" + type + "\"");
    }
  }

  void read_ring(const Json& json, const std::string& place) {
    constexpr std::size_t fewest = 4;
    if (array(json, place).size() < fewest) {
      fail(place, "a ring of " + std::to_string(json.size()) + " positions, fewer than four");
    }
    ring_.clear();
    for (const Json& position : json) {
      real_pt_t p;
      if (!position.is_array() || position.size() < 2 || !read_coordinate(position[0], p.x) ||
          !read_coordinate(position[1], p.y)) {
        fail(place + "/" + std::to_string(ring_.size()), "no position of two finite numbers");
      }
      ring_.push_back(p);
    }
    if (ring_.front().x == ring_.back().x && ring_.front().y == ring_.back().y) ring_.pop_back();
    add_ring_of_globe(country_.outline, ring_);
  }

  // The limit keeps products of coordinates far from infinity.
  static bool read_coordinate(const Json& json, double& value) {
    constexpr double farthest = 1e9;
    if (!json.is_number()) return false;
    value = json.get<double>();
    return std::abs(value) <= farthest;
  }

  const std::string& path_;
  Country country_;
  std::vector<real_pt_t> ring_;
};

}  // namespace

std::vector<Feature> find_features(const std::string& path, std::string_view text) {
  FeatureFinder finder(text);
  if (!Json::sax_parse(finder.begin(), finder.end(), &finder)) {
    throw Error(path + ":" + line_and_column(text, finder.fault_offset) + ": " + finder.fault);
  }
  if (finder.type != "FeatureCollection") return {{0, text.size(), ""}};
  std::vector<Feature>& features = finder.features;
  for (std::size_t i = 0; i < finder.n_elements; ++i) {
    const std::string place = "/features/" + std::to_string(i);
    if (i >= features.size() || features[i].place != place) {
      throw Error(path + ": at " + place + ": a Feature was expected");
    }
  }
  if (features.empty()) return {{0, text.size(), ""}};
  return std::move(features);
}

Country read_feature(const std::string& path, const Feature& feature, std::string_view text) {
  const Json json = Json::parse(text, nullptr, /*allow_exceptions=*/false);
  if (json.is_discarded()) throw Error(path + ": has changed while it was in use");
  return Reader(path).read(json, feature.place);
}

}  // namespace example
