#include "common/country_cache.h"

#include "common/compact_outlines.h"
#include "common/error.h"
#include "common/file.h"

#include <climits>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

namespace example {

std::string shipped_world() { return SHIPPED_WORLD; }
std::string fine_world() { return FINE_WORLD; }

CountryCache::CountryCache(const std::string& path, int budget)
    : path_(path), pool_(MemPoolNew(budget)) {
  if (pool_ != nullptr) list_.reset(MemListNew(pool_.get(), make_room));
  if (list_ == nullptr) throw std::bad_alloc();
  const std::string text = read_file(path);
  if (is_compact(text)) format_ = {find_compact_features, read_compact_feature};
  for (Feature& feature : format_.find(path, text)) {
    const std::string_view part = std::string_view(text).substr(feature.start, feature.size);
    Country country = format_.read(path, feature, part);
    if (country.outline.empty()) continue;
    outline_ = std::move(country.outline);
    entries_.push_back({std::move(feature), std::move(country.name), outline_.points.size()});
    keep(entries_.back());
  }
  if (entries_.empty()) throw Error(path + ": no polygons in it");
}

const MapPolygons& CountryCache::outline(std::size_t i) {
  Entry& entry = entries_[i];
  if (entry.block != nullptr) {
    outline_.points.resize(entry.n_vertices);
    outline_.edge_flags.resize(entry.n_vertices);
    const std::size_t size_of_points = entry.n_vertices * sizeof(real_pt_t);
    std::memcpy(outline_.points.data(), entry.block, size_of_points);
    std::memcpy(outline_.edge_flags.data(), static_cast<char*>(entry.block) + size_of_points,
                entry.n_vertices * sizeof(int));
    return outline_;
  }
  const std::string text = read_file_part(path_, entry.feature.start, entry.feature.size);
  Country country = format_.read(path_, entry.feature, text);
  if (country.name != entry.name || country.outline.points.size() != entry.n_vertices) {
    throw Error(path_ + ": has changed while it was in use");
  }
  outline_ = std::move(country.outline);
  keep(entry);
  return outline_;
}

// Copies `outline_` into a new block of `entry`. If there is no room for it, `entry` stays without
// a block, and its outline is read from the file when it is needed again.
void CountryCache::keep(Entry& entry) {
  const std::size_t size_of_points = entry.n_vertices * sizeof(real_pt_t);
  const std::size_t size = size_of_points + entry.n_vertices * sizeof(int);
  if (size > INT_MAX) return;
  const int status = MemAllocate(list_.get(), static_cast<int>(size), this, &entry.block);
  if (status != MEM_SUCCESS) return;
  std::memcpy(entry.block, outline_.points.data(), size_of_points);
  std::memcpy(static_cast<char*>(entry.block) + size_of_points, outline_.edge_flags.data(),
              size - size_of_points);
}

// Evicts the oldest blocks until the budget has room for the request or no block is left. If the
// heap itself has refused the request, evicts all blocks. Returns whether to try again.
unsigned short CountryCache::make_room(MemException* exception) {
  MemList* const list = exception->list;
  const MemPool* const pool = list->pool;
  const bool is_over_budget =
      exception->code == MEM_POOL_OVERFLOW || exception->code == MEM_POOL_TOO_SMALL;
  const int n_before = list->n_used;
  for (int n = n_before; n > 0; --n) {
    if (is_over_budget && pool->used <= pool->limit - exception->size) break;
    MemListRemoveOldest(list);
  }
  const int n_evicted = n_before - list->n_used;
  static_cast<CountryCache*>(exception->key)->n_evicted_ += n_evicted;
  return is_over_budget || n_evicted > 0;
}

}  // namespace example
