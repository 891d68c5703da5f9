#include <zelvan/mem/detail/entry.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/zelvan.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>
#include <new>
#include <optional>

#include <gtest/gtest.h>
#include <sys/socket.h>

using namespace zelvan;
using std::optional, std::string, std::to_string;
using Size = std::size_t;
namespace fs = std::filesystem;

// ---- the heap: `malloc`, `calloc` and `free` of the library's objects and of this one, by the
// linker's --wrap, and `new` and `delete` of the whole program. One thread uses it.

int n_requests = 0, refused_request = 0;  // 0: none
bool is_refused_for_good = false, is_watched = false;
void* blocks[10000];  // given while it was watched, and not yet back
Size n_blocks = 0;

extern "C" {
void *__real_malloc(Size size), *__real_calloc(Size count, Size size), __real_free(void*block);
void* __wrap_calloc(Size count, Size size) {
  const bool is_reached = ++n_requests >= refused_request && refused_request != 0;
  if (is_reached && (n_requests == refused_request || is_refused_for_good)) return nullptr;
  void* const block = count == 0 ? __real_malloc(size) : __real_calloc(count, size);
  if (is_watched && block != nullptr) blocks[n_blocks++] = block;
  return block;
}
void* __wrap_malloc(Size size) { return __wrap_calloc(0, size); }
void __wrap_free(void* block) {
  void** const found = std::find(blocks, blocks + n_blocks, block);
  if (found != blocks + n_blocks) *found = blocks[--n_blocks];
  __real_free(block);
}
}

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

// ---- what is slow or depends on the machine otherwise

extern "C" {
int __wrap_fsync(int) { return 0; }
int __real_renameat2(int, const char*, int, const char*, unsigned);
int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
  const bool is_draft = strchr(from, '-') != nullptr;  // all others are on another file system
  if (is_draft) return __real_renameat2(a, from, b, to, flags);
  errno = EXDEV;
  return -1;
}
}
void dont_sleep(std::uint64_t) asm("__wrap__ZN6zelvan8platform5SleepEm");
void dont_sleep(std::uint64_t) {}
std::vector<string> folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
std::vector<string> folders() { return {"missing", "fonts"}; }

struct LoggerInside {  // the friend
  static constexpr auto name = &Logger::classname;
  static constexpr auto date = &Logger::getCurrentDate;
  static inline auto& prefix = Logger::file_prefix;
};

namespace {

// ---- the walk over all requests

int nth = 0;  // to be refused by `refuse`; 0: none
bool is_repeated = false, was_reached = false, was_thrown = false;

/// Runs an operation with its n-th request refused; if that was reached, and is to be repeated,
/// once more with the heap whole.
template <class Operation>
void refuse(Operation operation) {
  for (const int refused : {nth, 0}) {
    n_requests = 0, refused_request = refused, was_thrown = false;
    try {
      operation();
    } catch (const std::bad_alloc&) {
      was_thrown = true;
    }
    if (refused != 0) was_reached = n_requests >= nth;
    refused_request = 0;
    if (refused == 0 || !is_repeated || !was_reached) return;
  }
}

/// What a scenario shows with the first request refused, then the second and so on: each text once,
/// the last that of a whole heap. Behind it stands what is wrong.
string outcomes(string (*scenario)(), bool for_good) {
  string whole, result = "| ", wrong;
  is_refused_for_good = for_good, was_reached = true;
  for (nth = 0; was_reached; ++nth) {
    for (const bool again : {false, true}) {
      const auto descriptors = std::distance(fs::directory_iterator("/proc/self/fd"), {});
      string text;
      is_repeated = again, n_blocks = 0, is_watched = true;
      {
        const string seen = scenario();
        is_watched = false, text = (was_thrown ? "thrown " : "") + seen + " | ";
      }
      if (nth == 0) whole = text;
      if (nth != 0 && n_blocks != 0) wrong += "leaks at " + to_string(nth) + ' ';
      if (descriptors != std::distance(fs::directory_iterator("/proc/self/fd"), {}))
        wrong += "open at " + to_string(nth) + ' ';
      if (again && text != whole) wrong += "repeated " + text;
      if (text != whole && result.find("| " + text) == string::npos) result += text;
    }
  }
  return result.substr(2) + whole + wrong;
}

// ---- scenarios: an operation of each kind in turn, each seen by a digit or a letter

using Owned = std::unique_ptr<void, void (*)(void*)>;

char digit(long n) { return static_cast<char>('0' + n); }

template <class Region>
string regions() {
  double xs[] = {0, 10, 10, 0}, ys[] = {0, 0, 10, 10};
  Region square(4u, xs, ys);
  Mtx2D shift(0, 0, Mtx2DOrientNone, 1, 1, 1, 2);
  optional<Region> made[5];
  std::unique_ptr<CPickRegion> mapped[2];
  made[4].emplace(3u);
  refuse([&] {
    made[0].emplace(4u), made[1].emplace(4u, xs, ys), made[2].emplace(4u, square.start());
    made[3].emplace(square), *made[4] = square;
    mapped[0].reset(square.xfm(shift)), mapped[1].reset(CPickRect(0, 0, 1, 1).xfm(shift));
  });
  string seen;
  for (auto& region : made) seen += digit(region->end() - region->start());
  return seen + digit(mapped[0] != nullptr) + digit(mapped[1] != nullptr);
}

string colours() {
  int rgb[] = {1, 2, 3, 4, 5, 6}, distance;
  ColorRGB color(4, 5, 6);
  const ColorMap two(2, 255, rgb);
  optional<ColorMap> made[4];
  optional<ColorXfm> xfm;
  optional<ColorRWMap> pens;
  made[3].emplace(3, 255);
  refuse([&] {
    made[0].emplace(2, 255), made[1].emplace(2, 255, rgb), made[2].emplace(two), *made[3] = two;
    xfm.emplace(2), pens.emplace(2);
  });
  string seen;
  for (auto& map : made) {
    seen += digit(map->map_size + map->map_count + ColGetClosestColor(&color, &*map, &distance));
  }
  ColorRWMap(2).MakeRoList(&*pens, 0);
  return seen + digit(xfm->xfm_size + xfm->DoColorXfm(1)) + digit(pens->rw_count);
}

string line_types() {
  CLineTypeDefList from, to;
  optional<CLineTypeDefList> made, copied;
  to.GetDefinition(1)->SetIndex(0);
  refuse([&] { made.emplace(), copied.emplace(from), to = from; });
  string seen;
  for (unsigned i = 1; i <= 13; ++i) seen += digit(made->GetDefinition(i) != nullptr);
  return seen + digit(copied->GetDefinition(1) != nullptr) + digit(to.GetDefinition(1) != nullptr);
}

unsigned short give_up(MemException*) { return 0; }
unsigned short go_on(MemException*) { return 0x8000; }
unsigned short evict(MemException* e) { return MemListRemoveOldest(e->list); }
unsigned short fill(MemException* e) {  // takes the last row away from the one who asks
  static void* slot;
  if (e->code == MEM_POOL_OVERFLOW) MemFree(e->list, slot), MemAllocate(e->list, 0, nullptr, &slot);
  return 1;
}

string handles() {
  const auto delete_list = [](void* list) {
    auto* typed = static_cast<MemList*>(list);
    MemListDelete(&typed);
  };
  const auto delete_xfm = [](void* xfm) { delete static_cast<ColorXfm*>(xfm); };
  const auto free_block = [](void* block) { MemFree(nullptr, block); };
  Owned made[] = {{nullptr, ColDeleteColorMap}, {nullptr, ColDeleteColorMap}, {nullptr, delete_xfm},
                  {nullptr, delete_list},       {nullptr, free_block},        {nullptr, free}};
  MemPool boundless = {INT_MAX, 0};
  int rgb[6] = {};
  refuse([&] {
    made[0].reset(ColOpen(2, 255)), made[1].reset(ColNewColorMap(2, 255, rgb));
    made[2].reset(ColOpenXfm(2)), made[3].reset(MemListNew(&boundless, give_up));
    void* block = nullptr;
    MemAllocate(nullptr, 8, nullptr, &block), made[4].reset(block);
    made[5].reset(MemPoolNew(0));
  });
  string seen;
  for (const Owned& object : made) seen += digit(object != nullptr);
  return seen;
}

string logs() {
  using In = LoggerInside;
  Logger other("new"), assigned("old"), renamed("old");
  optional<Logger> made, copied;
  Owned date(nullptr, free);
  refuse([&] {
    made.emplace("new"), copied.emplace(other), assigned = other;
    renamed.setClassname(other.*In::name);
    string("old").swap(In::prefix), other.setFilePrefix("a prefix too long to be kept in place");
    char* text;
    (other.*In::date)("%Y", &text), date.reset(text);
  });
  string seen;
  for (auto* log : {&*made, &*copied, &assigned, &renamed})
    seen += log->*In::name == nullptr ? '0' : '1';
  seen += In::prefix[0], seen += digit(date != nullptr);
  string().swap(In::prefix);
  return seen;
}

struct Folder {  // in memory, since so many files come and go
  Folder() {
    fs::create_directories(fs::path(mkdtemp(name)) / "fonts/b");
    fs::current_path(name);
    for (const char* font : {"fonts/a.ttf", "fonts/b/c.ttc"}) std::ofstream(font) << "font";
  }
  ~Folder() { fs::current_path("/"), fs::remove_all(name); }
  char name[28] = "/dev/shm/zelvan-heap-XXXXXX";
};

string files() {
  static Folder folder;
  std::ofstream("from") << "12345", std::ofstream("to") << "a";
  char from[] = "from", to[] = "to", moved[] = "a new name of some length", command[] = "true";
  char variable[] = "ZELVAN_HEAP_TO_BE_REFUSED", directory[1024];
  int n_fonts = 0, results[3] = {};
  Owned path(nullptr, free), fonts(nullptr, [](void*list) {
    auto** typed = static_cast<char**>(list);
    osh_FreeFontFileList(&typed);
  });
  refuse([&] {
    unsetenv(variable), std::rename(moved, from), n_fonts = -1;
    results[0] = osh_get_working_dir(directory), path.reset(osh_find_exec_path(from));
    fonts.reset(osh_GetFontFileListCount(&n_fonts)), results[1] = osh_system(1, command);
    results[2] = osh_setenv(variable, from);
    osh_copyfile(to, from), osh_rename(from, moved);
  });
  const bool is_absolute = path != nullptr && *static_cast<char*>(path.get()) == '/';
  const long n_files = std::distance(fs::directory_iterator("."), {});
  string seen = {digit(results[0]), digit(is_absolute), digit(n_fonts + 1), digit(results[1])};
  seen += digit(2 * results[2] + (getenv(variable) == nullptr));
  seen += digit(fs::file_size("to")), seen += digit(!fs::exists("from")), seen += digit(n_files);
  std::rename(moved, from);
  return seen;
}

// ---- scenarios that are seen in more ways

string texts() {
  const string line = "tokens too long to be\tkept in their place";
  const std::basic_string<unsigned short> wide(line.begin(), line.end()), tab = {'\t'};
  Size n = 0;
  refuse([&] {
    n = 0;
    n = tokenize(line, "\t").size() + wtokenize(wide, tab).size() + wtokenize2(wide, tab).size() +
        GlyphTokenize(wide).size() + trim(line, "t").size() + wtrim(wide, tab.c_str()).size();
  });
  return to_string(n);
}

string names() {
  VarNameInfo* list = nullptr;
  char seen[4] = "";
  const auto first = [](const char* name) { return name == nullptr ? '-' : *name; };
  refuse([&] {
    while (list != nullptr) VarDeleteNameInfo(&list, list->name);
    seen[0] = first(VarAddNameInfo(&list, "a", nullptr));
    seen[1] = first(VarInsertNameInfo(&list, "b", nullptr, 0, "a"));
    seen[2] = first(VarReplaceNameInfo(list, "a", "c"));
  });
  string names = seen;
  for (auto* node = list; node != nullptr; node = node->next) names += *node->name;
  while (list != nullptr) VarDeleteNameInfo(&list, list->name);
  return names;
}

/// A comb whose teeth cross the top of a rectangle, and a triangle inside.
template <int teeth>
string clip() {
  constexpr int n = 4 * teeth + 3;
  std::vector<real_pt_t> points(n, {1, 1}), out(3 * n);
  std::vector<int> flags(n, 1), out_flags(3 * n);
  for (int i = 0; i < n - 3; ++i) points[i] = {i / 2 * 0.5, i % 4 % 3 == 0 ? 5.0 : 15.0};
  points[n - 2] = {2, 1}, points[n - 1] = {2, 2}, flags[n - 4] = flags[n - 1] = 3;
  drw_pset_t source = {n, points.data(), flags.data()}, target;
  real_rect_t rect = {{{-1, 0}, {-1, 10}, {teeth, 10}, {teeth, 0}}};
  refuse([&] {
    target = {0, out.data(), out_flags.data()};
    ClipPolygonSet(&source, &target, &rect);
  });
  return to_string(target.n_points);
}

/// A list of `n` blocks of 8 bytes takes one of 16, whose owner may be in the oldest of them;
/// `used` is the charge without all these.
template <auto handler, int n, int limit, int used, bool has_owner = false>
string block() {
  MemPool pool = {limit, used};
  MemList* list = MemListNew(&pool, handler);
  void *slots[n], *slot = &slot;
  mem_sequence = 0;  // the number of the first, and of an empty row
  for (void*& place : slots) MemAllocate(list, 8, nullptr, &place);
  int status = -1;
  refuse([&] {
    if (status == MEM_SUCCESS) MemFree(list, slot), slot = &slot;
    void* const owner = *std::find_if(slots, slots + n - 1, [](void* s) { return s != nullptr; });
    status = MemAllocate(list, 16, nullptr, has_owner ? static_cast<void**>(owner) : &slot);
  });
  MemFree(list, malloc(1));  // of no list
  EXPECT_TRUE(has_owner || (slot != &slot) == (status == MEM_SUCCESS));
  MemListDelete(&list);
  EXPECT_EQ(pool.used, used);
  return to_string(status);
}

string sessions() {
  char host[] = "localhost", shell[] = "sh", program[] = "/bin/true", *own_host;
  int ports[2], is_open = 0, is_local;
  void* ends[3] = {};
  wipc_set_connect_timeout(0);
  const auto hang_up = [&] {
    for (void*& end : ends) {
      if (end == nullptr) continue;
      for (const int socket : {wipc_sid(end), wipc_status_sid(end)}) close(socket);
      release_session(static_cast<wipc_session*>(std::exchange(end, nullptr)));
    }
  };
  refuse([&] {
    hang_up();
    is_open = wipc_open_connection(host, shell, &own_host, &ports[0], &ports[1], &is_local);
    if (is_open == 0) return;
    for (auto* end : {wipc_bind_primary, wipc_bind_secondary}) platform::listen(end->sid, 1);
    ends[0] = wipc_connect_session(host, ports[0], ports[1]);
    ends[1] = wipc_accept_connection();
    ends[2] = wipc_open_session(host, program);  // nobody comes
  });
  string seen = {digit(is_open),
                 digit((wipc_bind_primary != nullptr) + (wipc_bind_secondary != nullptr))};
  for (void* end : ends) seen += digit(end != nullptr);
  hang_up(), wipc_release_bind_sessions();
  return seen;
}

/// Three messages that come in one piece.
template <auto read>
string messages() {
  int ends[2];
  socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends);
  wipc_session* session = wipc_new_session(ends[0], primary_end);
  session->status_sid = read == wipc_read ? 0 : ends[0];
  char text[16] = "";
  const auto drain = [&] {
    while (session->data_head != nullptr || session->status_head != nullptr) {
      read(session, text + strlen(text), 4);
    }
  };
  refuse([&] {
    drain();
    send(ends[1], "one\0two\0end", 11, 0);
    read(session, text, 4);
  });
  drain();
  close(ends[0]), close(ends[1]), release_session(session);
  return text;
}

TEST(Heap, RefusesOneRequestOrAllFromThereOn) {
  const struct {
    string (*scenario)();
    string refused, whole;
  } rows[] = {{regions<CPickPolyline>, "0000000", "4444411"},
              {regions<CPolygon>, "0000000", "4444411"},
              {colours, "000000", "555522"},
              {line_types, "000000000000000", "111111111111111"},
              {handles, "000000", "111111"},
              {logs, "0000o0", "1111a1"},
              {files, "0008/103", "11300513"}};
  for (const auto& [scenario, refused, whole] : rows) {
    string once, for_good;
    for (Size i = 0; i < whole.size(); ++i) {
      if (refused[i] == whole[i]) continue;
      once += whole.substr(0, i) + refused[i] + whole.substr(i + 1) + " | ";
      for_good += whole.substr(0, i) + refused.substr(i) + " | ";
    }
    EXPECT_EQ(outcomes(scenario, false), once + whole + " | ");
    EXPECT_EQ(outcomes(scenario, true), for_good + whole + " | ");
  }
}

TEST(Heap, RefusesWithConsequences) {
  const struct {
    string (*scenario)();
    string once, for_good;
  } rows[] = {{texts, "thrown 0 | 95 | ", "thrown 0 | 95 | "},
              {names, "--- | a-cc | ab-ba | abcbc | ", "--- | a--a | ab-ba | abcbc | "},
              {clip<6>, "27 | ", "27 | "},
              {clip<1000>, "3 | 4003 | ", "3 | 4003 | "},
              {block<give_up, 16, 144, 0>, "2 | 4 | 0 | ", "2 | 4 | 0 | "},
              {block<go_on, 16, 144, 0>, "0 | ", "2 | 4 | 0 | "},
              {block<evict, 16, 144, 0>, "0 | ", "4 | 0 | "},  // makes room in table and heap
              {block<evict, 15, 120, 0>, "0 | ", "4 | 0 | "},  // in the pool
              {block<fill, 15, 120, 0>, "2 | 0 | ", "4 | 2 | 0 | "},
              {block<evict, 16, 128, 0, true>, "2 | 1 | ", "2 | 1 | "},
              {block<go_on, 1, INT_MAX, INT_MAX - 24>, "0 | ", "4 | 0 | "},
              {block<go_on, 1, INT_MAX, INT_MAX - 23>, "1 | ", "4 | 1 | "},
              {sessions, "00000 | 02000 | 12000 | 10010 | 12100 | 10110 | ",
               "00000 | 02000 | 12000 | 12100 | 10110 | "},
              {messages<wipc_read>, "twoend | oneend | onetwo | onetwoend | ",
               " | one | onetwo | onetwoend | "},
              {messages<wipc_read_status>, "twoend | oneend | onetwo | onetwoend | ",
               " | one | onetwo | onetwoend | "}};
  for (const auto& [scenario, once, for_good] : rows) {
    EXPECT_EQ(outcomes(scenario, false), once);
    EXPECT_EQ(outcomes(scenario, true), for_good);
  }
}

}  // namespace
