#include "common/geojson.h"

#include "common/error.h"
#include "common/file.h"

#include <algorithm>
#include <cmath>

#include <nlohmann/json.hpp>

namespace example {

namespace {

using Json = nlohmann::json;

// Hears a file being parsed and remembers only where and on what that failed.
struct FaultFinder : nlohmann::json_sax<Json> {
  std::size_t position = 0;
  std::string token;
  bool is_too_large = false;

  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const string_t&) override { return true; }
  bool string(string_t&) override { return true; }
  bool binary(binary_t&) override { return true; }
  bool start_object(std::size_t) override { return true; }
  bool key(string_t&) override { return true; }
  bool end_object() override { return true; }
  bool start_array(std::size_t) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t at, const std::string& last_token,
                   const nlohmann::detail::exception& fault) override {
    constexpr int number_overflow = 406;
    position = at;
    token = last_token;
    is_too_large = fault.id == number_overflow;
    return false;
  }
};

// Parsing tells no place for a number that overflows, so the file is gone through once more.
[[noreturn]] void report_fault(const std::string& path, const std::string& text) {
  FaultFinder finder;
  Json::sax_parse(text, &finder);
  const std::size_t last = std::min(text.size(), std::max<std::size_t>(finder.position, 1) - 1);
  const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<long>(last), '\n');
  const std::size_t line_start = last == 0 ? std::string::npos : text.rfind('\n', last - 1);
  const std::size_t column = last - (line_start == std::string::npos ? 0 : line_start + 1) + 1;
  constexpr std::size_t longest_token = 40;
  if (finder.token.size() > longest_token)
    finder.token = finder.token.substr(0, longest_token) + "...";
  throw Error(path + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " +
              (finder.is_too_large    ? finder.token + " is no finite number"
               : finder.token.empty() ? "no JSON: the file ends too early"
                                      : "no JSON: can't make sense of '" + finder.token + "'"));
}

// Walks the tree; `place` is the JSON pointer of where it is.
class Reader {
 public:
  explicit Reader(const std::string& path) : path_(path) {}

  World read() {
    const std::string text = read_file(path_);
    const Json json = Json::parse(text, nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded()) report_fault(path_, text);
    read_object(json, "", nullptr, 0);
    if (world_.empty()) fail("", "no polygons in it");
    return std::move(world_);
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

  // Any GeoJSON object. `outline` is that of the feature around it, null outside of features.
  void read_object(const Json& json, const std::string& place, MapPolygons* outline, int depth) {
    constexpr int deepest = 64;
    if (depth > deepest) fail(place, "nested too deeply");
    const Json& type_json = member(json, "type", place);
    const std::string type = type_json.is_string() ? type_json.get<std::string>() : "";
    const auto each = [&](const char* key) {
      read_each(
          member(json, key, place), place + "/" + key,
          [&](const Json& j, const std::string& p) { read_object(j, p, outline, depth + 1); });
    };
    if (type == "FeatureCollection") return each("features");
    if (type == "Feature") {
      const Json& geometry = member(json, "geometry", place);
      if (geometry.is_null()) return;
      return read_country(name_of(json), geometry, place + "/geometry", depth);
    }
    if (outline == nullptr) return read_country("unnamed", json, place, depth);
    if (type == "GeometryCollection") return each("geometries");
    read_geometry(type, json, place, *outline);
  }

  void read_country(std::string name, const Json& geometry, const std::string& place, int depth) {
    Country country{std::move(name), {}};
    read_object(geometry, place, &country.outline, depth + 1);
    if (!country.outline.empty()) world_.push_back(std::move(country));
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

  void read_geometry(const std::string& type, const Json& json, const std::string& place,
                     MapPolygons& outline) {
    const auto read_rings = [&](const Json& rings, const std::string& p) {
      read_each(rings, p,
                [&](const Json& ring, const std::string& q) { read_ring(ring, q, outline); });
    };
    if (type == "Polygon") {
      read_rings(member(json, "coordinates", place), place + "/coordinates");
    } else if (type == "MultiPolygon") {
      read_each(member(json, "coordinates", place), place + "/coordinates", read_rings);
    } else if (type != "Point" && type != "MultiPoint" && type != "LineString" &&
               type != "MultiLineString") {
      fail(place, "no GeoJSON type: \"" + type + "\"");
    }
  }

  void read_ring(const Json& json, const std::string& place, MapPolygons& outline) {
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
    add_polygon(outline, ring_);
  }

  // The limit keeps products of coordinates far from infinity.
  static bool read_coordinate(const Json& json, double& value) {
    constexpr double farthest = 1e9;
    if (!json.is_number()) return false;
    value = json.get<double>();
    return std::abs(value) <= farthest;
  }

  const std::string& path_;
  World world_;
  std::vector<real_pt_t> ring_;
};

}  // namespace

World read_geojson(const std::string& path) { return Reader(path).read(); }

}  // namespace example
