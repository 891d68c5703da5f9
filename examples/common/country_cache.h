/// The countries of a file within a budget of memory.
#pragma once

#include <zelvan/mem/mem.h>

#include "common/countries.h"
#include "common/geojson.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace example {

/// Knows all countries of a file and keeps as many of their outlines as the budget allows. When
/// it is short, those that were read first go; when they are asked for again, they are read again
/// from the file. An outline takes 20 bytes a vertex. One that is larger than the whole budget
/// has the budget for itself.
class CountryCache final : public World {
 public:
  /// Reads the file, GeoJSON or compact outlines; countries without polygons are left out. A
  /// `budget` of 0 bytes is no limit. Throws `Error` as the functions of geojson.h and
  /// compact_outlines.h do, when the file can't be read, and when there is no polygon in it.
  CountryCache(const std::string& path, int budget);
  CountryCache(const CountryCache&) = delete;  // the list knows where the entries are
  CountryCache& operator=(const CountryCache&) = delete;

  std::size_t size() const override { return entries_.size(); }
  const std::string& name(std::size_t i) const override { return entries_[i].name; }

  /// Throws `Error` when the outline has to be read again, and the file is gone or another one.
  const MapPolygons& outline(std::size_t i) override;

  int bytes_used() const { return pool_->used; }
  long long n_evicted() const { return n_evicted_; }

 private:
  struct Entry {
    Feature feature;
    std::string name;
    std::size_t n_vertices;
    void* block = nullptr;  ///< points, then edge flags; null while it isn't kept
  };
  struct Format {
    std::vector<Feature> (*find)(const std::string& path, std::string_view text);
    Country (*read)(const std::string& path, const Feature& feature, std::string_view text);
  };
  struct Release {
    void operator()(MemPool* pool) const { MemPoolDelete(&pool); }
    void operator()(MemList* list) const { MemListDelete(&list); }
  };

  static unsigned short make_room(MemException* exception);
  void keep(Entry& entry);

  std::string path_;
  Format format_ = {find_features, read_feature};
  std::deque<Entry> entries_;  ///< which stay where they are as it grows
  std::unique_ptr<MemPool, Release> pool_;
  std::unique_ptr<MemList, Release> list_;
  MapPolygons outline_;  ///< the latest
  long long n_evicted_ = 0;
};

/// The path of the world that comes with the examples, at 1:110 million.
std::string shipped_world();

/// The same at 1:50 million.
std::string fine_world();

}  // namespace example
