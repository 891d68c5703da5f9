#include "support/heap.h"

#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/heap_text.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/zelvan.h>

#include "logger/inside.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/socket.h>

using namespace zelvan;
using std::string;
namespace fs = std::filesystem;

// ---- what is slow or depends on the machine otherwise

extern "C" {
int __wrap_fsync(int) { return 0; }
int __real_renameat2(int, const char*, int, const char*, unsigned);
int __wrap_renameat2(int a, const char* from, int b, const char* to, unsigned flags) {
  errno = EXDEV;  // all but the drafts beside a target are on another file system
  return strchr(from, '-') != nullptr ? __real_renameat2(a, from, b, to, flags) : -1;
}
}
void dont_sleep(std::uint64_t) asm("__wrap_" SLEEP);
void dont_sleep(std::uint64_t) {}
std::vector<string> folders() asm("__wrap__ZN6zelvan8platform12font_foldersB5cxx11Ev");
std::vector<string> folders() { return {"missing", "fonts"}; }

namespace {

// ---- the walk over all requests

string seen(long number) { return std::to_string(number); }
string seen(const string& text) { return text; }

long open_descriptors() { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); }

/// What an operation gives with a whole heap, then with the first request refused (or all from
/// there on), the second and so on: each text once. Whenever one was refused it is run once more,
/// and then gives what it gave at first.
template <class Operation>
string outcomes(Operation operation, bool for_good) {
  bool was_refused = true;
  const auto run = [&](int nth) {
    string text = "thrown";
    heap::refuse(nth, for_good);
    try {
      const auto result = operation();
      was_refused = heap::grant_all();
      text = seen(result);
    } catch (const std::bad_alloc&) {
      was_refused = heap::grant_all();
    }
    return text + '|';  // short enough to ask for nothing
  };
  const string whole = run(0);
  string outcomes = whole;
  was_refused = true;
  for (int nth = 1; was_refused; ++nth) {
    const long descriptors = open_descriptors();
    const string text = run(nth);
    const bool is_last = !was_refused;
    EXPECT_EQ(heap::blocks_left(), 0) << "leaks at " << nth;
    EXPECT_EQ(run(0), whole) << "after " << nth;
    EXPECT_EQ(open_descriptors(), descriptors) << nth;
    if (('|' + outcomes).find('|' + text) == string::npos) outcomes += text;
    was_refused = !is_last;
  }
  return outcomes;
}

// ---- operations

const string tokens = "too long to be\tkept in their place";
const std::basic_string<unsigned short> wide(tokens.begin(), tokens.end());
char from[] = "from", moved[] = "a new name of some length", directory[1024];
char variable[] = "ZELVAN_HEAP_TO_BE_REFUSED", host[] = "localhost", program[] = "true";

bool set_prefix() {
  static Logger logger("");
  string("old").swap(LoggerInside::prefix);
  logger.setFilePrefix("a prefix too long to be kept in place");
  string prefix;
  prefix.swap(LoggerInside::prefix);
  return prefix != "old";
}

bool date() {
  static Logger logger("");
  char* text;
  (logger.*LoggerInside::date)("%Y", &text);
  return HeapText(text) != nullptr;
}

int exec_path() {
  const HeapText path(osh_find_exec_path(from));
  return path != nullptr ? *path : -1;
}

int font_count() {
  int n = 1;
  char** list = osh_GetFontFileListCount(&n);
  if (list == nullptr) return -n;
  osh_FreeFontFileList(&list);
  return n;
}

int set_variable() {
  unsetenv(variable);
  return osh_setenv(variable, from) + (getenv(variable) != nullptr);
}

int copy_file() {
  unlink(moved);
  osh_copyfile(moved, from);
  return access(moved, F_OK);
}

int move_file() {
  rename(moved, from);
  osh_rename(from, moved);
  return access(moved, F_OK);
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
  const auto expect = [](auto operation, const string& once, string for_good = "") {
    EXPECT_EQ(outcomes(operation, false), once);
    EXPECT_EQ(outcomes(operation, true), for_good.empty() ? once : for_good);
  };
  expect([] { return tokenize(tokens, "\t").size(); }, "2|thrown|");
  expect([] { return GlyphTokenize(wide).size(); }, "7|thrown|");
  expect([] { return osh_get_working_dir(directory); }, "1|0|");
  expect(set_prefix, "1|0|");
  expect(date, "1|0|");
  expect(exec_path, "47|0|-1|", "47|-1|0|");
  expect(font_count, "2|-1|");
  expect([] { return osh_system(1, program); }, "0|8|");
  expect(set_variable, "1|-1|");
  expect(copy_file, "0|-1|");
  expect(move_file, "0|-1|");
  expect(
      session,
      "10110onetwoend|00000|00110onetwoend|11000|10010|11100|10110twoend|10110oneend|10110onetwo|",
      "10110onetwoend|00000|01000|11000|11100|10110|10110one|10110onetwo|");
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 2) << "a draft stayed";
  fs::current_path("/");
  fs::remove_all(folder);
}

}  // namespace
