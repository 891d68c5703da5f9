/// The countries of a file, with a limit on the memory for their outlines.
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

/// Knows all countries of a file and keeps as many of their outlines as the budget allows.
///
/// If the budget is short, the outlines that were read first are evicted, and read again from the
/// file when they are needed. An outline takes 20 bytes a vertex. One that is larger than the whole
/// budget evicts all others, and is kept although it exceeds the budget.
class CountryCache final : public World {
 public:
  /// Reads a file of GeoJSON or compact outlines; countries without polygons are left out.
  ///
  /// A `budget` of 0 bytes is no limit. Throws `Error` if the file can't be read or has no polygon,
  /// and as the functions of geojson.h and compact_outlines.h do.
  CountryCache(const std::string& path, int budget);
  CountryCache(const CountryCache&) = delete;  // `list_` has pointers to the entries
  CountryCache& operator=(const CountryCache&) = delete;

  std::size_t size() const override { return entries_.size(); }
  const std::string& name(std::size_t i) const override { return entries_[i].name; }

  /// Throws `Error` if the outline has to be read again and the file is gone or has changed.
  const MapPolygons& outline(std::size_t i) override;

  int bytes_used() const { return pool_->used; }
  long long n_evicted() const { return n_evicted_; }

 private:
  struct Entry {
    Feature feature;
    std::string name;
    std::size_t n_vertices;
    void* block = nullptr;  ///< points, then edge flags; null if not in memory
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
  std::deque<Entry> entries_;  ///< a deque: as it grows, entries keep their addresses
  std::unique_ptr<MemPool, Release> pool_;
  std::unique_ptr<MemList, Release> list_;
  MapPolygons outline_;  ///< the outline that was read or asked for last
  long long n_evicted_ = 0;
};

/// Returns the path of the world at 1:110 million, which comes with the examples.
std::string shipped_world();

/// Returns the path of the world at 1:50 million, which comes with the examples.
std::string fine_world();

}  // namespace example
