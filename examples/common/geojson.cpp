#include "common/geojson.h"

#include "common/error.h"
#include "common/globe.h"
#include "common/printable.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <simdjson.h>

namespace example {

namespace {

namespace ondemand = simdjson::ondemand;

// Reads every value once, since the parser checks a value only when it is read. Throws if the text
// is no JSON or nested too deeply, or if a number is not finite.
void visit(ondemand::value value, int depth = 1) {
  constexpr int deepest = 64;
  if (depth > deepest) throw simdjson::simdjson_error(simdjson::DEPTH_ERROR);
  switch (value.type().value()) {
    case ondemand::json_type::array:
      for (ondemand::value element : value.get_array()) visit(element, depth + 1);
      break;
    case ondemand::json_type::object:
      for (ondemand::field field : value.get_object()) {
        field.unescaped_key().value();
        visit(field.value(), depth + 1);
      }
      break;
    case ondemand::json_type::number:
      value.get_double().value();
      break;
    case ondemand::json_type::string:
      value.get_string().value();
      break;
    case ondemand::json_type::boolean:
      value.get_bool().value();
      break;
    case ondemand::json_type::null:
      if (!value.is_null()) throw simdjson::simdjson_error(simdjson::N_ATOM_ERROR);
      break;
  }
}

template <class Object>  // an object, or a value that holds one
bool is_of_type(Object& object, std::string_view wanted) {
  std::string_view type;
  return object["type"].get_string().get(type) == simdjson::SUCCESS && type == wanted;
}

std::string line_and_column(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t line_start = before.rfind('\n') + 1;  // 0 on the first line
  return std::to_string(line) + ":" + std::to_string(before.size() - line_start + 1);
}

// Says what is wrong with `text`, and where. The parser has read it up to `offset`.
std::string describe_fault(simdjson::error_code error, std::string_view text, std::size_t offset) {
  if (error == simdjson::UTF8_ERROR) return ": no JSON: not in UTF-8";
  if (error == simdjson::UNESCAPED_CHARS) return ": no JSON: a control character in a string";
  const std::size_t end = std::min(text.find_first_of(",:[]{}\" \t\r\n", offset), text.size());
  if (error == simdjson::UNCLOSED_STRING || end == text.size()) {
    return ":" + line_and_column(text, text.size()) + ": no JSON: the file ends too early";
  }
  constexpr std::size_t shortest = 1, longest = 40;  // at least a bracket
  const std::string word(text.substr(offset, std::clamp(end - offset, shortest, longest)));
  const std::string place = ":" + line_and_column(text, offset) + ": ";
  if (error == simdjson::DEPTH_ERROR) return place + "nested too deeply";
  if (error == simdjson::NUMBER_ERROR) return place + word + " is no finite number";
  // The fault may be the word before: the parser may notice it only at this one.
  return place + "no JSON: can't make sense of '" + word + "', or of what stands before it";
}

// Reads the tree of a feature. Everywhere, `place` is the JSON pointer to the current value.
class Reader {
 public:
  explicit Reader(const std::string& path) : path_(path) {}

  Country read(ondemand::value json, const std::string& place) {
    country_.name = "unnamed";
    const std::string type = type_of(json, place);
    if (type == "Feature") {
      country_.name = name_of(json);
      ondemand::value geometry = member(json, "geometry", place);
      if (!geometry.is_null()) read_geometry(geometry, place + "/geometry");
    } else if (type == "FeatureCollection") {  // an empty one; those of others are read one by one
      array(member(json, "features", place), place + "/features");
    } else {
      read_geometry(json, place);
    }
    return std::move(country_);
  }

  [[noreturn]] void fail(const std::string& place, const std::string& what) const {
    throw Error(path_ + ": " + (place.empty() ? "" : "at " + place + ": ") + what);
  }

 private:
  ondemand::value member(ondemand::value object, const char* key, const std::string& place) const {
    if (object.type() != ondemand::json_type::object) fail(place, "an object was expected");
    ondemand::value found;
    if (object[key].get(found) != simdjson::SUCCESS) fail(place, std::string("no \"") + key + "\"");
    return found;
  }

  ondemand::array array(ondemand::value json, const std::string& place) const {
    if (json.type() != ondemand::json_type::array) fail(place, "an array was expected");
    return json.get_array();
  }

  // Calls `read(element, its place)` for each element of an array.
  template <class Read>
  void read_each(ondemand::value json, const std::string& place, Read read) {
    std::size_t i = 0;
    for (ondemand::value element : array(json, place)) {
      read(element, place + "/" + std::to_string(i++));
    }
  }

  std::string type_of(ondemand::value object, const std::string& place) const {
    std::string_view type;
    return member(object, "type", place).get_string().get(type) == simdjson::SUCCESS
               ? std::string(type)
               : "";
  }

  std::string name_of(ondemand::value feature) const {
    std::string_view text;
    ondemand::object properties;
    if (feature["properties"].get_object().get(properties) == simdjson::SUCCESS) {
      for (const char* key : {"name", "NAME", "ADMIN"}) {
        if (properties[key].get_string().get(text) != simdjson::SUCCESS) continue;
        if (!text.empty()) return printable(text);
      }
    }
    ondemand::value id;
    if (feature["id"].get(id) != simdjson::SUCCESS) return "unnamed";
    const bool is_text = id.get_string().get(text) == simdjson::SUCCESS;
    const std::string name = printable(is_text ? text : simdjson::to_json_string(id).value());
    return name.empty() ? "unnamed" : name;
  }

  void read_geometry(ondemand::value json, const std::string& place) {
    const std::string type = type_of(json, place);
    const auto read_rings = [&](ondemand::value rings, const std::string& p) {
      read_each(rings, p, [&](ondemand::value ring, const std::string& q) { read_ring(ring, q); });
    };
    if (type == "Polygon") {
      read_rings(member(json, "coordinates", place), place + "/coordinates");
    } else if (type == "MultiPolygon") {
      read_each(member(json, "coordinates", place), place + "/coordinates", read_rings);
    } else if (type == "GeometryCollection") {
      read_each(member(json, "geometries", place), place + "/geometries",
                [&](ondemand::value j, const std::string& p) { read_geometry(j, p); });
    } else if (type != "Point" && type != "MultiPoint" && type != "LineString" &&
               type != "MultiLineString") {
      fail(place, "no GeoJSON type: \"" + type + "\"");
    }
  }

  void read_ring(ondemand::value json, const std::string& place) {
    constexpr std::size_t fewest = 4;
    ring_.clear();
    for (ondemand::value position : array(json, place)) {
      real_pt_t p;
      if (!read_position(position, p)) {
        fail(place + "/" + std::to_string(ring_.size()), "no position of two finite numbers");
      }
      ring_.push_back(p);
    }
    if (ring_.size() < fewest) {
      fail(place, "a ring of " + std::to_string(ring_.size()) + " positions, fewer than four");
    }
    if (ring_.front().x == ring_.back().x && ring_.front().y == ring_.back().y) ring_.pop_back();
    add_ring_of_globe(country_.outline, ring_);
  }

  // Reads a longitude and a latitude. Refuses numbers beyond 1e9, so that products of coordinates
  // can't become infinite.
  static bool read_position(ondemand::value json, real_pt_t& position) {
    constexpr double farthest = 1e9;
    double* const coordinates[] = {&position.x, &position.y};
    ondemand::array numbers;
    if (json.get_array().get(numbers) != simdjson::SUCCESS) return false;
    std::size_t n = 0;
    for (ondemand::value number : numbers) {
      if (n == 2) break;  // heights may follow
      if (number.get_double().get(*coordinates[n]) != simdjson::SUCCESS) return false;
      if (std::abs(*coordinates[n]) > farthest) return false;
      ++n;
    }
    return n == 2;
  }

  const std::string& path_;
  Country country_;
  std::vector<real_pt_t> ring_;
};

}  // namespace

std::vector<Feature> find_features(const std::string& path, std::string_view text) {
  const simdjson::padded_string padded(text);
  const std::vector<Feature> all = {{0, text.size(), ""}};
  ondemand::parser parser;
  ondemand::document document;
  if (const auto error = parser.iterate(padded).get(document)) {
    throw Error(path + describe_fault(error, text, text.size()));
  }
  try {
    if (document.is_scalar()) return all;
    visit(document.get_value());
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
      throw simdjson::simdjson_error(simdjson::TRAILING_CONTENT);
    }
    document.rewind();
    ondemand::value collection = document.get_value();
    ondemand::array elements;
    if (!is_of_type(collection, "FeatureCollection")) return all;
    if (collection["features"].get_array().get(elements) != simdjson::SUCCESS) return all;
    std::vector<Feature> features;
    for (ondemand::value element : elements) {
      std::string place = "/features/" + std::to_string(features.size());
      ondemand::object object;
      if (element.get_object().get(object) != simdjson::SUCCESS || !is_of_type(object, "Feature")) {
        throw Error(path + ": at " + place + ": a Feature was expected");
      }
      object.reset();
      const std::string_view json = object.raw_json();
      const auto start = static_cast<std::size_t>(json.data() - padded.data());
      features.push_back({start, json.size(), std::move(place)});
    }
    return features.empty() ? all : features;
  } catch (const simdjson::simdjson_error& error) {
    const char* stopped = nullptr;
    const bool is_at_end = document.current_location().get(stopped) != simdjson::SUCCESS;
    const auto offset = is_at_end ? text.size() : static_cast<std::size_t>(stopped - padded.data());
    throw Error(path + describe_fault(error.error(), text, offset));
  }
}

Country read_feature(const std::string& path, const Feature& feature, std::string_view text) {
  const simdjson::padded_string padded(text);
  ondemand::parser parser;
  Reader reader(path);
  try {
    ondemand::document document = parser.iterate(padded);
    if (document.is_scalar()) reader.fail(feature.place, "an object was expected");
    return reader.read(document.get_value(), feature.place);
  } catch (const simdjson::simdjson_error&) {
    throw Error(path + ": has changed while it was in use");
  }
}

}  // namespace example
