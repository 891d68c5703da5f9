#include <zelvan/mem/detail/entry.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/heap_text.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/zelvan.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/socket.h>

using namespace zelvan;
using std::string;
using Size = std::size_t;
namespace fs = std::filesystem;

// ---- the heap: `malloc`, `calloc` and `free` of the library's objects and of this one, by the
// linker's --wrap, and `new` and `delete` of the whole program. One thread uses it.

int n_requests = 0, refused_request = 0;  // 0: none, and none is counted
bool is_refused_for_good = false;
void* blocks[10000];  // given in the present run and not yet back
Size n_blocks = 0;

extern "C" {
void *__real_malloc(Size size), *__real_calloc(Size count, Size size), __real_free(void*block);
void* __wrap_calloc(Size count, Size size) {
  const bool is_reached = refused_request != 0 && ++n_requests >= refused_request;
  if (is_reached && (n_requests == refused_request || is_refused_for_good)) return nullptr;
  void* const block = count == 0 ? __real_malloc(size) : __real_calloc(count, size);
  if (block != nullptr && n_blocks < std::size(blocks)) blocks[n_blocks++] = block;
  return block;
}
void* __wrap_malloc(Size size) { return __wrap_calloc(0, size); }
void __wrap_free(void* block) {
  n_blocks = std::remove(blocks, blocks + n_blocks, block) - blocks;
  __real_free(block);
}

// ---- what is slow or depends on the machine otherwise

int __wrap_fsync(int) { return 0; }
int __real_renameat2(int, const char*, int, const char*, unsigned);
int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
  errno = EXDEV;  // all but the drafts beside a target are on another file system
  return strchr(from, '-') != nullptr ? __real_renameat2(a, from, b, to, flags) : -1;
}
}
void dont_sleep(std::uint64_t) asm("__wrap__ZN6zelvan8platform5SleepEm");
void dont_sleep(std::uint64_t) {}
std::vector<string> folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
std::vector<string> folders() { return {"missing", "fonts"}; }

void* operator new(Size size, const std::nothrow_t&) noexcept { return __wrap_malloc(size); }
void* operator new[](Size size, const std::nothrow_t&) noexcept { return __wrap_malloc(size); }
void* operator new(Size size) {
  void* const block = __wrap_malloc(size);
  return block != nullptr ? block : throw std::bad_alloc();
}
void* operator new[](Size size) { return operator new(size); }
void operator delete(void* block) noexcept { __wrap_free(block); }
void operator delete[](void* block) noexcept { __wrap_free(block); }
void operator delete(void* block, Size) noexcept { __wrap_free(block); }
void operator delete[](void* block, Size) noexcept { __wrap_free(block); }

struct LoggerInside {  // the friend
  static constexpr auto name = &Logger::classname;
  static constexpr auto date = &Logger::getCurrentDate;
  static inline auto& prefix = Logger::file_prefix;
};

namespace {

// ---- the walk over all requests

int nth = 0;  // to be refused by `refuse`
bool is_repeated = false, was_reached = false;

string seen(long number) { return std::to_string(number); }
string seen(const string& text) { return text; }
template <class T, class Delete>
string seen(const std::unique_ptr<T, Delete>& object) {
  return seen(object != nullptr);
}

/// Runs an operation with its n-th request refused; if it is to be repeated, once more with the
/// heap whole. Gives its last result.
template <class Operation>
string refuse(Operation operation) {
  string text;
  for (int turn = 0; turn <= is_repeated; ++turn) {
    n_requests = 0, refused_request = turn == 0 ? nth : INT_MAX;
    try {
      const auto result = operation();
      refused_request = 0, text = seen(result);
    } catch (const std::bad_alloc&) {
      refused_request = 0, text = "thrown";
    }
    if (turn == 0) was_reached = n_requests >= nth;
  }
  return text;
}

template <auto operation>
string run() {
  return refuse(operation);
}

template <auto... operations>
std::vector<string (*)()> runs() {
  return {run<operations>...};
}

/// What `run` gives with a whole heap, then with the first request refused (or all from there on),
/// the second and so on: each text once.
string outcomes(string (*run)()) {
  string whole, outcomes;
  was_reached = true;
  for (nth = 0; was_reached; ++nth) {
    for (const bool again : {false, true}) {
      const auto n_open = std::distance(fs::directory_iterator("/proc/self/fd"), {});
      is_repeated = again, n_blocks = 0;
      const string text = run() + '|';  // short enough to ask for nothing
      EXPECT_TRUE(n_blocks == 0 || nth == 0) << "leaks at " << nth;
      EXPECT_EQ(std::distance(fs::directory_iterator("/proc/self/fd"), {}), n_open) << nth;
      if (nth == 0) whole = text;
      EXPECT_TRUE(text == whole || (was_reached && !again)) << text << " at " << nth;
      if (('|' + outcomes).find('|' + text) == string::npos) outcomes += text;
    }
  }
  return outcomes;
}

void expect(const std::vector<string (*)()>& scenarios, const string& once, string for_good = "") {
  for (const auto scenario : scenarios) {
    is_refused_for_good = false;
    EXPECT_EQ(outcomes(scenario), once);
    is_refused_for_good = true;
    EXPECT_EQ(outcomes(scenario), for_good.empty() ? once : for_good);
  }
}

// ---- operations: most give 1 when all is there, and 0 when nothing is

template <class Region>
bool four(Region&& region) {
  return region.end() - region.start() == 4;
}
int two(const ColorMap& map) { return map.map_size == map.map_count ? map.map_size / 2 : -1; }
bool named(const Logger& log) { return log.*LoggerInside::name != nullptr; }

int n_types(CLineTypeDefList&& list) {
  int n = 0;
  for (unsigned i = 1; i <= 13; ++i) n += list.GetDefinition(i) != nullptr;
  return n;
}

struct DeleteList {
  void operator()(MemList* list) const { MemListDelete(&list); }
};
using List = std::unique_ptr<MemList, DeleteList>;
using Owned = std::unique_ptr<void, void (*)(void*)>;
using Region = std::unique_ptr<CPickRegion>;
using Line = CPickPolyline;

double xs[] = {0, 10, 10, 0}, ys[] = {0, 0, 10, 10};
Line line(4u, xs, ys);
CPolygon area(4u, xs, ys);
Mtx2D shift(0, 0, Mtx2DOrientNone, 1, 1, 1, 2);
int rgb[] = {1, 2, 3, 4, 5, 6};
const ColorMap map(2, 255, rgb);
ColorMap blacks(64, 255);
ColorXfm pens(64);
CLineTypeDefList line_types;
Logger logger("new");
const string tokens = "too long to be\tkept in their place";
const std::basic_string<unsigned short> wide(tokens.begin(), tokens.end());
char from[] = "from", moved[] = "a new name of some length", directory[1024];
char variable[] = "ZELVAN_HEAP_TO_BE_REFUSED", host[] = "localhost", program[] = "true";
MemPool pool = {INT_MAX, 0};

bool set_prefix() {
  string("old").swap(LoggerInside::prefix);
  logger.setFilePrefix("a prefix too long to be kept in place");
  return std::exchange(LoggerInside::prefix, "") != "old";
}

HeapText date() {
  char* text;
  return (logger.*LoggerInside::date)("%Y", &text), HeapText(text);
}

int exec_path() {
  const HeapText path(osh_find_exec_path(from));
  return path != nullptr ? *path : -1;
}

int font_count() {
  int n = 1;
  char** list = osh_GetFontFileListCount(&n);
  if (list == nullptr) return -n;
  return osh_FreeFontFileList(&list), n;
}

int names() {
  VarNameInfo* list = nullptr;
  int n = VarAddNameInfo(&list, "a", nullptr) != nullptr;
  n += VarReplaceNameInfo(list, "a", "b") != nullptr;
  VarDeleteNameInfo(&list, "a"), VarDeleteNameInfo(&list, "b");
  return n;
}

/// Combs whose teeth cross the top of a rectangle.
template <int n_combs, int size>
string clip() {
  constexpr int n = n_combs * size;
  std::vector<real_pt_t> points(n), out(3 * n);
  std::vector<int> flags(n, 1), out_flags(3 * n);
  for (int i = 0; i < n; ++i) {
    points[i] = {i % size / 2 * 0.5, i % 4 % 3 == 0 ? 5.0 : 15.0};
    if ((i + 1) % size == 0) flags[i] = 3;
  }
  drw_pset_t source = {n, points.data(), flags.data()}, target;
  real_rect_t rect = {{{-1, 0}, {-1, 10}, {size, 10}, {size, 0}}};
  return refuse([&] {
    target = {0, out.data(), out_flags.data()};
    return ClipPolygonSet(&source, &target, &rect), target.n_points;
  });
}

unsigned short give_up(MemException*) { return 0; }
unsigned short go_on(MemException*) { return 0x8000; }
unsigned short evict(MemException* e) { return MemListRemoveOldest(e->list); }
unsigned short fill(MemException* e) {  // takes the last row away from the one who asks
  static void* slot;
  if (e->code == MEM_POOL_OVERFLOW) MemFree(e->list, slot), MemAllocate(e->list, 0, nullptr, &slot);
  return 1;
}

/// A list of `n` blocks of 8 bytes takes one of 16, whose owner may be in the oldest of them.
template <auto handler, int n, int limit, bool has_owner = false>
string block() {
  void *slots[n], *slot = &slot;
  pool.limit = limit;
  const List owned(MemListNew(&pool, handler));
  MemList* const list = owned.get();
  mem_sequence = 0;  // the number of the first, and of an empty row
  for (void*& place : slots) MemAllocate(list, 8, nullptr, &place);
  int status = -1;
  return refuse([&] {
    if (status == MEM_SUCCESS) MemFree(list, slot), slot = &slot;
    MemFree(list, malloc(1));  // of no list
    void* const owner = *std::find_if(slots, slots + n - 1, [](void* s) { return s != nullptr; });
    status = MemAllocate(list, 16, nullptr, has_owner ? static_cast<void**>(owner) : &slot);
    EXPECT_TRUE(has_owner || (slot != &slot) == (status == MEM_SUCCESS));
    return status;
  });
}

/// How many are left of a parent and its three children.
template <auto take>
string family() {
  void* parent = nullptr;
  const List owned(MemListNew(&pool, give_up));
  MemAllocate(owned.get(), 24, nullptr, &parent);
  for (int i = 0; i < 3; ++i) {
    MemAllocate(owned.get(), 8, nullptr, static_cast<void**>(parent) + i);
  }
  return refuse([&] { return take(owned.get()), owned->n_used; });
}

/// Tells what there is of a connection (it is open, a port waits, the ends, and one that nobody
/// comes to), and the three messages that come over it in one piece.
string session() {
  char text[16], *own_host;
  int ports[2] = {}, is_local;
  wipc_set_connect_timeout(0);
  const int is_open =
      wipc_open_connection(host, program, &own_host, &ports[0], &ports[1], &is_local);
  for (auto* end : {wipc_bind_primary, wipc_bind_secondary}) {
    if (end != nullptr) platform::listen(end->sid, 1);
  }
  void* const ends[] = {wipc_connect_session(host, ports[0], ports[1]), wipc_accept_connection(),
                        wipc_open_session(host, program)};
  snprintf(text, sizeof text, "%d%d%d%d%d", is_open, wipc_bind_primary != nullptr,
           ends[0] != nullptr, ends[1] != nullptr, ends[2] != nullptr);
  if (ends[0] != nullptr && ends[1] != nullptr) {
    send(wipc_sid(ends[0]), "one\0two\0end", 11, 0);
    do {
      wipc_read(ends[1], text + strlen(text), 4);
    } while (static_cast<wipc_session*>(ends[1])->data_head != nullptr);
  }
  for (void* end : ends) {
    for (const int socket : {wipc_sid(end), wipc_status_sid(end)}) close(socket);
    if (end != nullptr) release_session(static_cast<wipc_session*>(end));
  }
  wipc_release_bind_sessions();
  return text;
}

TEST(Heap, RefusesOneRequestOrAllFromThereOn) {
  char folder[] = "/dev/shm/zelvan-heap-XXXXXX";  // in memory, since files come and go
  fs::create_directories(fs::path(mkdtemp(folder)) / "fonts/b");
  fs::current_path(folder);
  for (const char* file : {"fonts/a.ttf", "fonts/b/c.ttc", "from"}) std::ofstream(file) << 1;
  line_types.GetDefinition(1)->SetIndex(0);
  expect(runs<[] { return four(Line(4u)); }, [] { return four(Line(4u, xs, ys)); },
              [] { return four(Line(4u, area.start())); }, [] { return four(Line(line)); },
              [] { return four(Line(3u) = line); }, [] { return Region(line.xfm(shift)); },
              [] { return four(CPolygon(4u)); }, [] { return four(CPolygon(4u, xs, ys)); },
              [] { return four(CPolygon(4u, area.start())); }, [] { return four(CPolygon(area)); },
              [] { return four(CPolygon(3u) = area); }, [] { return Region(area.xfm(shift)); },
              [] { return Region(CPickRect(0, 0, 1, 1).xfm(shift)); },
              [] { return two(ColorMap(2, 255, rgb)); }, [] { return two(ColorMap(map)); },
              [] { return two(ColorMap(3, 255) = map); }, [] { return ColorXfm(1).xfm_size; },
              [] { return ColorRWMap(1).rw_size; },
              [] { return Owned(ColOpen(2, 255), ColDeleteColorMap); },
              [] { return Owned(ColNewColorMap(2, 255, rgb), ColDeleteColorMap); },
              [] { return std::unique_ptr<ColorXfm>(ColOpenXfm(2)); },
              [] { return Owned(MemPoolNew(0), free); },
              [] { return List(MemListNew(&pool, nullptr)); }, [] { return named(Logger("new")); },
              [] { return named(Logger(logger)); }, [] { return named(Logger("old") = logger); },
              set_prefix, date, [] { return osh_get_working_dir(directory); }>(),
         "1|0|");
  expect({run<[] { return n_types(CLineTypeDefList()); }>}, "13|12|",
         "13|0|1|2|3|4|5|6|7|8|9|10|11|12|");
  expect({run<[] { return (CLineTypeDefList() = line_types).GetDefinition(1) != nullptr; }>},
         "0|1|");
  expect({run<[] { return tokenize(tokens, "\t").size(); }>}, "2|thrown|");
  expect({run<[] { return GlyphTokenize(wide).size(); }>}, "7|thrown|");
  expect({run<names>}, "2|0|1|");
  expect({run<exec_path>}, "47|0|-1|", "47|-1|0|");
  expect({run<font_count>}, "2|-1|");
  expect({run<[] { return osh_system(1, program); }>}, "0|8|");
  expect({run<[] { return unsetenv(variable), osh_setenv(variable, from) + !!getenv(variable); }>},
         "1|-1|");
  expect({run<[] { return unlink(moved), osh_copyfile(moved, from), access(moved, F_OK); }>},
         "0|-1|");
  expect({run<[] { return rename(moved, from), osh_rename(from, moved), access(moved, F_OK); }>},
         "0|-1|");
  expect({clip<400, 24>}, "9600|");                  // the arena's own block serves them all
  expect({clip<2, 4000>}, "8000|4000|", "8000|0|");  // the largest that was had serves the next
  expect({block<give_up, 16, 144>}, "0|2|4|");
  expect({block<go_on, 16, 144>}, "0|", "0|2|4|");
  expect({block<evict, 16, 144>, block<evict, 15, 120>}, "0|",
         "0|4|");  // room in table and heap, or in the pool
  expect({block<fill, 15, 120>}, "0|2|", "0|4|2|");
  expect({block<evict, 16, 128, true>}, "1|2|");
  pool.limit = INT_MAX;
  expect({family<MemListClear>, family<MemListRemoveLargest>}, "0|");
  expect({run<[] { return pens.MapColors(&blacks, &blacks), pens.xfm_table[63]; }>}, "1|");
  expect(
      {run<session>},
      "10110onetwoend|00000|00110onetwoend|11000|10010|11100|10110twoend|10110oneend|10110onetwo|",
      "10110onetwoend|00000|01000|11000|11100|10110|10110one|10110onetwo|");
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 2) << "a draft stayed";
  EXPECT_EQ(pool.used, 0);
  fs::current_path("/"), fs::remove_all(folder);
}

}  // namespace
