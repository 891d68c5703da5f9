// What is left where the heap refuses: in every family that asks it.
#include <zelvan/mem/detail/entry.h>

#include "digests/group.h"
#include "logger/inside.h"
#include "support/heap.h"

#include <algorithm>
#include <climits>
#include <memory>

namespace {

using In = LoggerInside;
using Operation = long (*)();

/// Takes the result of each operation with its first request refused, its second and so on until
/// it makes no more, first each alone and then together with all behind it; and how many blocks
/// stay behind. An operation asks for nothing but by what it tests, as the standard libraries
/// differ in what they ask for.
void take(Digest& digest, std::initializer_list<Operation> operations) {
  for (const Operation operation : operations) {
    for (const bool for_good : {false, true}) {
      bool was_refused = true;
      for (int nth = 1; was_refused; ++nth) {
        heap::refuse(nth, for_good);
        const long result = operation();
        was_refused = heap::grant_all();
        digest(result, heap::blocks_left());
      }
    }
  }
}

template <class Region>
requires requires(Region r) { r.start(); }
long size(Region&& region) {
  return heap::is_null(region.start()) ? -1 : region.end() - region.start();
}
long size(const ColorMap& map) { return heap::is_null(map.colors) ? -1 : int(map.map_size); }
long size(const ColorXfm& xfm) { return heap::is_null(xfm.xfm_table) ? -1 : int(xfm.xfm_size); }
long size(const ColorRWMap& list) { return heap::is_null(list.rw_list) ? -1 : int(list.rw_size); }
long size(const Logger& log) { return heap::is_null(log.*In::name) ? -1 : *(log.*In::name); }

template <class T>
long is_there(T* object) {
  const std::unique_ptr<T> owned(object);
  return !heap::is_null(object);
}

template <class Region>
long assigned(Region&& target, const Region& source) {
  return 100 * size(target) + size(target = source);
}

double xs[] = {0, 10, 10, 0}, ys[] = {0, 0, 10, 10};
CPickPolyline line(4, xs, ys);
CPolygon area(4, xs, ys);
CPickRect rect(0, 0, 1, 1);
Mtx2D shift(0, 0, Mtx2DOrientNone, 1, 1, 1, 2);

const Group regions("pick.refusals", [](Digest& digest) {
  take(digest,
       {[] { return size(CPickPolyline(4)); }, [] { return size(CPolygon(4)); },
        [] { return size(CPickPolyline(4, xs, ys)); }, [] { return size(CPolygon(4, xs, ys)); },
        [] { return size(CPickPolyline(4, line.start())); },
        [] { return size(CPolygon(4, area.start())); }, [] { return size(CPickPolyline(line)); },
        [] { return size(CPolygon(area)); }, [] { return assigned(CPickPolyline(3), line); },
        [] { return assigned(CPolygon(3), area); }, [] { return is_there(line.xfm(shift)); },
        [] { return is_there(area.xfm(shift)); }, [] { return is_there(rect.xfm(shift)); }});
});

/// Combs whose teeth cross the top of a rectangle: between vertices, or in spikes with a repeat.
template <int n_combs, int size, int per_place = 2>
long clip() {
  constexpr int n = n_combs * size;
  static real_pt_t points[n], out[3 * n];
  static int flags[n], out_flags[3 * n];
  for (int i = 0; i < n; ++i) {
    points[i] = {i % size / per_place * 0.5, i % 4 % 3 == 0 ? 5.0 : 15.0};
    flags[i] = (i + 1) % size == 0 ? 3 : 1;
  }
  drw_pset_t source = {n, points, flags}, target = {0, out, out_flags};
  real_rect_t rect = {{{-1, 0}, {-1, 10}, {size, 10}, {size, 0}}};
  ClipPolygonSet(&source, &target, &rect);
  return target.n_points;
}

// The arena's own block serves the small ones; of two large ones the largest that was had for the
// first serves the next.
const Group clipping("geometry.refusals", [](Digest& digest) {
  take(digest, {clip<400, 24>, clip<2, 4000>, clip<2, 12000>, clip<2, 4000, 4>});
});

int rgb[] = {1, 2, 3, 4, 5, 6};
const ColorMap map(2, 255, rgb);

/// A translation of many pens sorts the map, where the heap lets it.
long translate_pens() {
  static ColorMap target(200, 255), source(40, 255);
  static ColorXfm xfm(40);
  for (int i = 0; i < 600; ++i) (&target.colors->red)[i] = i * i % 256;
  for (int i = 0; i < 120; ++i) (&source.colors->red)[i] = i * 77 % 256;
  ColMapColors(&source, &target, &xfm);
  int sum = 0;
  for (int pen = 0; pen < 40; ++pen) sum = 3 * sum % 9999 + int(xfm.xfm_table[pen]);
  return sum;
}

const Group colours("colour.refusals", [](Digest& digest) {
  translate_pens();
  take(digest, {[] { return size(ColorMap(2, 255)); }, [] { return size(ColorMap(2, 255, rgb)); },
                [] { return size(ColorMap(map)); }, [] { return assigned(ColorMap(3, 255), map); },
                [] { return size(ColorXfm(1)); }, [] { return size(ColorRWMap(1)); },
                [] { return is_there(ColOpen(1, 255)); }, [] { return is_there(ColOpenXfm(1)); },
                [] { return is_there(static_cast<ColorMap*>(ColNewColorMap(1, 255, rgb))); },
                translate_pens});
});

CLineTypeDefList line_types;

long n_types(auto&& list) {
  long n = list.GetDefinition(77) != nullptr ? 100 : 0;
  for (int i = 1; i <= 13; ++i) n += list.GetDefinition(i) != nullptr;
  return n;
}

const Group types("linetypes.refusals", [](Digest& digest) {
  line_types.GetDefinition(1)->SetIndex(77);
  take(digest, {[] { return n_types(CLineTypeDefList()); },
                [] { return n_types(CLineTypeDefList(line_types)); },
                [] { return n_types(CLineTypeDefList() = line_types); }});
  line_types.GetDefinition(77)->SetIndex(1);
});

Logger logger("new");

const Group log("logger.refusals", [](Digest& digest) {
  take(digest, {[] { return size(Logger("new")); }, [] { return size(Logger(logger)); },
                [] { return assigned(Logger("old"), logger); }});
});

const Group names("var.refusals", [](Digest& digest) {
  take(digest, {[] {
         VarNameInfo* list = nullptr;
         long there = VarAddNameInfo(&list, "a", nullptr) != nullptr;
         there += 2 * (VarInsertNameInfo(&list, "b", nullptr, 0, "A") != nullptr);
         there += 4 * (VarReplaceNameInfo(list, "a", "c") != nullptr);
         for (const char* name : {"a", "b", "c"}) VarDeleteNameInfo(&list, name);
         return there + 8 * (list != nullptr);
       }});
});

unsigned short give_up(MemException*) { return 0; }
unsigned short go_on(MemException*) { return 0x8000; }
unsigned short evict(MemException* e) { return MemListRemoveOldest(e->list); }
unsigned short fill(MemException* e) {  // takes the last row away from the one who asks
  static void* slot;
  if (e->code != MEM_POOL_OVERFLOW || e->size == 0) return 1;
  MemFree(e->list, slot);
  MemAllocate(e->list, 0, nullptr, &slot);
  return 1;
}

/// A list of `n` blocks of 8 bytes takes one of 16, whose owner may be in the oldest of them, and
/// another one.
template <auto handler, int n, int limit, bool has_owner = false>
long block() {
  MemPool pool = {limit, 0};
  MemList* list = MemListNew(&pool, handler);
  if (list == nullptr) return -1;
  void *slots[n] = {}, *slot = &slot;
  zelvan::mem_sequence = 0;  // the number of the first, and of an empty row
  for (void*& place : slots) MemAllocate(list, 8, nullptr, &place);
  long told = 0;
  for (int turn = 0; turn < 2; ++turn) {
    void** const owner = std::find_if(slots, slots + n - 1, [](void* s) { return s != nullptr; });
    void** const place = has_owner && *owner != nullptr ? static_cast<void**>(*owner) : &slot;
    const int status = MemAllocate(list, 16, nullptr, place);
    told = 10 * told + status;
    told = 1000 * told + pool.used + (slot == &slot);
    if (status == MEM_SUCCESS) MemFree(list, *place);
  }
  MemListDelete(&list);
  return told;
}

/// How many are left of a parent and its three children.
template <auto take_away>
long family() {
  MemPool pool = {INT_MAX, 0};
  MemList* list = MemListNew(&pool, give_up);
  if (list == nullptr) return -1;
  void* parent = nullptr;
  MemAllocate(list, 24, nullptr, &parent);
  for (int i = 0; i < 3 && parent != nullptr; ++i) {
    MemAllocate(list, 8, nullptr, static_cast<void**>(parent) + i);
  }
  take_away(list);
  const long left = list->n_used;
  MemListDelete(&list);
  return left;
}

const Group pools("mem.refusals", [](Digest& digest) {
  take(digest, {[] {
                  MemPool* pool = MemPoolNew(0);
                  const bool is_none = heap::is_null(pool);
                  MemPoolDelete(&pool);
                  return long{is_none};
                },
                block<give_up, 16, 144>, block<go_on, 16, 144>, block<evict, 16, 144>,
                block<evict, 15, 120>, block<fill, 15, 120>, block<evict, 16, 128, true>,
                family<MemListClear>, family<MemListRemoveLargest>});
});

}  // namespace
