// Whichever system call fails: nothing is lost or left over, and the caller is told if it matters.
#include <zelvan/platform/sockets.h>
#include <zelvan/zelvan.h>

#include <cstring>
#include <set>
#include <sstream>

#include <osh/world.h>
#include <support/posix/failing_calls.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace platform = zelvan::platform;
using Failures = std::vector<support::Failure>;
using Operation = std::function<bool()>;
const std::set<int> each_time;

/// A system call that may fail without making its operation fail.
struct Harmless {
  std::string call;
  std::set<int> which;  ///< which calls of that name may fail: 1 is the first; or `each_time`
  const char* why;
  std::string change = {};  ///< of the files after that failure; empty: the operation's usual one
};

struct Promise {
  Operation operation;
  std::string change;  ///< of the files, if the operation succeeds
  Failures always;     ///< that happen in every run
};

/// Returns a line for each name: its permissions and content, whether it still has the times of
/// `plain`, and whether it is another user's.
std::set<std::string> everything() {
  std::set<std::string> all;
  for (const auto& entry : fs::recursive_directory_iterator(".")) {
    struct stat status;
    const std::string name = entry.path().lexically_normal();
    lstat(name.c_str(), &status);
    const bool is_old = status.st_mtime == 1000 && status.st_atime == 4'000'000'000;
    std::ostringstream line;
    line << name << ' ' << std::oct << (status.st_mode & 07777) << ' '
         << (S_ISREG(status.st_mode) ? content(name) : "") << (is_old ? " old" : "")
         << (status.st_uid == geteuid() ? "\n" : " foreign\n");
    all.insert(line.str());
  }
  return all;
}

/// Returns whether the operation succeeds in a new world; expects its change, or `other_change`.
bool keeps(const Promise& promise, int why, Failures failures, bool interrupted = false,
           const std::string& other_change = {}) {
  umask(07);  // others than user and group may do nothing with a new file
  const World world;
  put(".zelvan-" + std::to_string(getpid()) + "-0", "in use by others");
  const timespec times[] = {{4'000'000'000, 0}, {1000, 0}};  // reads keep a future access time
  utimensat(AT_FDCWD, "plain", times, 0);
  EXPECT_EQ(geteuid() == 0 ? chown("other", 12, 34) : 0, 0);
  fs::permissions("plain", fs::perms{04775});
  fs::permissions("other", fs::perms{04600});
  const std::set<std::string> before = everything();
  const int descriptors = support::open_descriptors();
  failures.insert(failures.end(), promise.always.begin(), promise.always.end());
  errno = 0;
  const bool done = support::run_failing(promise.operation, failures, interrupted);
  const bool is_on_files = !promise.change.empty();
  EXPECT_TRUE(done || errno == why || !is_on_files) << "says " << std::strerror(errno);
  std::string change;
  const std::set<std::string> after = everything();
  for (const auto& line : before) change += after.contains(line) ? "" : '-' + line;
  for (const auto& line : after) change += before.contains(line) ? "" : '+' + line;
  const std::string& wanted = done && other_change.empty() ? promise.change : other_change;
  EXPECT_EQ(change, wanted) << "of the files";
  EXPECT_EQ(support::open_descriptors(), descriptors) << "a descriptor is left";
  return done;
}

/// Repeats the operation: with all its system calls interrupted; once for each of its calls, which
/// then fails; and with each of its heap requests refused, alone and with all later ones. If a call
/// fails, the operation must fail as well, unless the failure is listed as harmless.
void check(const char* name, const Operation& operation, const std::string& change,
           const std::vector<Harmless>& all_harmless, const Failures& always = {}) {
  SCOPED_TRACE(name);
  const Promise promise{operation, change, always};
  EXPECT_TRUE(keeps(promise, 0, {}, true)) << "interrupted";
  keeps(promise, ENOSPC, {{"write", 4, ENOSPC}}, true);  // after some bytes
  EXPECT_TRUE(keeps(promise, 0, {})) << "nothing fails";
  const std::vector<int> made(std::begin(support::calls_made), std::end(support::calls_made));
  for (std::size_t call = 0; call < support::call_names.size(); ++call) {
    for (int nth = 1; nth <= made[call]; ++nth) {
      const std::string& called = support::call_names[call];
      const auto fails_anyway = [&](const support::Failure& failure) {
        return failure.call == called && (failure.nth == 0 || failure.nth == nth);
      };
      if (std::any_of(always.begin(), always.end(), fails_anyway)) continue;
      const auto is_meant = [&](const Harmless& known) {
        return known.call == called && (known.which.empty() || known.which.contains(nth));
      };
      const auto known = std::find_if(all_harmless.begin(), all_harmless.end(), is_meant);
      const bool is_harmless = known != all_harmless.end();
      SCOPED_TRACE(called + " number " + std::to_string(nth));
      const std::string& other_change = is_harmless ? known->change : "";
      EXPECT_EQ(keeps(promise, EIO, {{called, nth, EIO}}, false, other_change), is_harmless)
          << (is_harmless ? known->why : "this failure must be reported");
    }
  }
  for (const int step : {1, -1}) {
    int request = 0;
    do {
      support::refused_request = request += step;
      keeps(promise, ENOMEM, {});
    } while (support::refused_request != 0);
  }
}

Operation copy_to(char* target, char* source = "plain"_c) {
  return [=] { return osh_copyfile(target, source) != 0; };
}
Operation move(char* from, char* to) {
  return [=] { return osh_rename(from, to) == 0; };
}

const Harmless no_draft_without_name{"openat", {1}, "the draft has a name instead"};
const Harmless no_copy_by_the_kernel{"copy_file_range", each_time, "read and written instead"};
const Harmless identity_unknown{"fstat", {2}, "it is only to know what a lost answer did"};
const std::string moved = "-plain 4775 12345 old\n+new 4775 12345 old\n";
const support::Failure other_file_system{"renameat2", 1, EXDEV}, no_flags{"renameat2", 0, EINVAL};
const std::string whose = geteuid() == 0 ? " foreign\n" : "\n", before = "-other 4600 abc" + whose;
const std::string copied = before + "+other 600 12345" + whose;
const support::Failure no_links{"linkat", 0, EPERM};

TEST(Copies, ArriveWholeOrChangeNothing) {
  const Harmless close_after{"close", {2, 3}, "nothing was written there"};
  check("over a file", copy_to("other"_c), copied,
        {no_draft_without_name,
         no_copy_by_the_kernel,
         {"faccessat", {3}, "without /proc the draft has a name"},
         identity_unknown,
         {"fchown", {1}, "its owner where possible", before + "+other 600 12345\n"},
         {"fchmod", {1}, "the draft has these permissions from the start"},
         close_after});
  const Harmless no_proc{"faccessat", {2}, "without /proc the draft has a name"};
  check("to a new name", copy_to("new"_c), "+new 770 12345\n",
        {no_draft_without_name, no_copy_by_the_kernel, no_proc, identity_unknown, close_after});
  check("over a file that a link leads to, with a draft that has a name",
        copy_to("link"_c, "other"_c), "-plain 4775 12345 old\n+plain 775 abc\n",
        {identity_unknown, close_after, {"fchown", {1}, "its owner where possible"}},
        {{"copy_file_range", 0, EXDEV}, {"openat", 1, EOPNOTSUPP}});
}

TEST(Moves, ArriveWholeOrChangeNothing) {
  check("by one call", move("plain"_c, "new"_c), moved, {});
  const Harmless not_asked{"fstatat", {2}, "it is only to know what to undo"};
  check("by a second name", move("plain"_c, "new"_c), moved, {not_asked}, {no_flags});
  check("over a reserved name", move("plain"_c, "new"_c), moved,
        {not_asked, {"close", {1}, "nothing was written there"}}, {no_flags, no_links});
  const std::vector<Harmless> by_copy = {
      no_copy_by_the_kernel,
      not_asked,
      {"openat", {1, 2}, "the draft has a name, or the whole system is sent to the disk"},
      {"fstat", {2}, "it is only to know what to undo"},
      {"fstatat", {1}, "the old name is removed all the same"},
      {"faccessat", {2}, "without /proc the draft has a name"},
      {"close", {2, 3, 4}, "nothing was written there"},
      {"fchown", {1}, "its owner where possible", "-plain 4775 12345 old\n+new 775 12345 old\n"}};
  check("to another file system", move("plain"_c, "new"_c), moved, by_copy, {other_file_system});
}

TEST(Processes, StartOrReportWhatFails) {
  const Operation start = [] {  // and no child is left
    const bool done = osh_system(1, "/bin/true"_c) == 0;
    return done && static_cast<int>(support::__real_waitpid(-1, 0, WNOHANG)) == -1;
  };
  check("a program", start, "",
        {{"close", each_time, "nothing was written there"},
         {"waitpid", each_time, "somebody else has waited"}},
        {{"read", 1, 0}});  // it must work, since it waits for the start
}

// `errno` must tell of the first failure; further ones simulate a system that lacks something.
TEST(Operations, ReportWhatFailsUnlessItIsHarmless) {
  const Operation copy = copy_to("other"_c), move_plain = move("plain"_c, "new"_c);
  const Operation append = [] { return osh_cat("new"_c, "plain"_c) != 0; };
  const std::string appended = "+new 600 12345\n",
                    restricted = "-plain 4775 12345 old\n+new 755 12345 old\n";
  const auto expect = [](const Operation& operation, bool works, const Failures& failures,
                         const std::string& change, const char* why) {
    SCOPED_TRACE(failures.front().call + " fails: " + why);
    const Promise promise = {operation, works ? change : "never done", {}};
    EXPECT_EQ(keeps(promise, failures.front().why, failures, false, change), works);
  };
  // clang-format off
  expect(append, false, {{"open", 1, EIO}}, "", "the source can't be opened");
  expect(append, false, {{"read", 1, EIO}}, "+new 600 \n", "the source can't be read");
  expect(append, false, {{"write", 1, ENOSPC}}, "+new 600 \n", "the disk is full");
  expect(append, false, {{"close", 2, EIO}}, appended, "what was written may not have arrived");
  expect(append, true, {{"fstat", 3, EIO}}, appended, "the source can't be told from other files");
  expect(append, true, {{"fstat", 4, EIO}}, appended, "the target can't be told from other files");
  expect([] { return osh_open_binary("plain"_c, 0x201, 0) >= 0; }, false, {{"ftruncate", 1, EIO}}, "", "the old content stays");
  expect([] { return osh_close(osh_open_binary("/dev/null"_c, 0x201, 0)) == 0; }, true, {{"ftruncate", 1, EINVAL}}, "", "a device has no length");
  expect([] { return osh_fclose(osh_fopen_binary("other"_c, "r+"_c)) == 0; }, true, {{"fopen", 1, EINTR}}, "", "an interrupted call is repeated");
  expect([] { return osh_system(1, "/bin/true"_c) == 8; }, true, {{"fork", 2, ENOMEM}}, "", "8 stands for memory and processes");
  expect([] { return osh_chmod("plain"_c, 0444) != 0; }, false, {{"chmod", 1, EPERM}}, "", "the permissions can't be set");
  expect([] { return osh_filesize("plain"_c) == -1; }, true, {{"fstat", 2, EIO}}, "", "the size can't be had");
  expect([] { return osh_chmod("plain"_c, 0200) != 0; }, true, {{"chmod", 1, EPERM}}, "", "the permissions need no change");
  expect(copy, false, {{"fchmod", 1, EPERM}, {"fstat", 3, EIO}}, "", "the permissions of the draft aren't known");
  expect(copy_to("new"_c), true, {{"fgetxattr", 0, ENOSYS}}, "+new 770 12345\n", "no access lists");
  expect(move_plain, true, {{"renameat2", 0, ENOSYS}, {"linkat", 0, ENOSYS}}, moved, "only plain renames");
  expect(move_plain, true, {no_flags, {"linkat", 0, EOPNOTSUPP}}, moved, "a file has one name");
  expect(move_plain, true, {other_file_system, {"fsync", 2, EINVAL}}, moved, "a folder can't be sent to the disk");
  expect(move_plain, true, {other_file_system, {"fchown", 0, EPERM}}, restricted, "another group may do no more than others");
  expect(move_plain, true, {no_flags, {"unlinkat", 1, ENOENT, true}}, moved, "a server repeats a request whose answer is lost");
  expect(move("dir"_c, "new"_c), true, {no_flags, {"renameat", 1, ENOENT, true}}, "-dir 770 \n-dir/inner 770 \n+new 770 \n+new/inner 770 \n", "an answer is lost");
  expect(copy, true, {{"renameat", 1, ENOENT, true}}, copied, "an answer is lost");
  expect(move_plain, false, {{"unlinkat", 1, EIO}, no_flags, {"fstatat", 4, EIO}}, "+new 4775 12345 old\n", "the old name may be gone");
  // clang-format on
}

TEST(Moves, ReplaceNothing) {
  for (const Failures& way : {Failures{no_flags}, {no_flags, no_links}, {other_file_system}}) {
    SCOPED_TRACE(way.back().call);
    EXPECT_FALSE(keeps({move("other"_c, "plain"_c), "replaced", way}, EEXIST, {}));
  }
  EXPECT_FALSE(keeps({move("dir"_c, "plain"_c), "replaced", {no_flags}}, EEXIST, {})) << "a folder";
}

/// Talks to itself over a connection. Returns whether each step succeeds.
bool converse() {
  platform::SocketAddress address{{127, 0, 0, 1}, 0};
  const int door = platform::socket(), near = platform::socket();
  bool done = door > 2 && near > 2 && platform::bind(door, address) == 0 &&
              platform::getsockname(door, &address) == 0 && platform::listen(door, 1) == 0 &&
              platform::bind(near, {{127, 0, 0, 2}, address.port}) == 0 &&
              platform::connect(near, address) == 0 && platform::select(door) == 1;
  const int far = done ? platform::accept(door) : -1;
  done = far > 2 && platform::getpeername(far, &address) == 0 && address.host[0] == 127 &&
         platform::send(near, "to you", 6) == 6;
  char text[99] = "";
  for (int n = 1, got = 0; n > 0 && done && got < 6; got += n) {
    n = platform::recv(far, text + got, 6 - got);
  }
  done = done && text == std::string("to you") && platform::gethostname(text, 2) == 0 &&
         std::strlen(text) == 1 && platform::gethostbyname("localhost", &address) == 1 &&
         address.host[0] == 127;
  // The end that closes first keeps its port for a minute. It is not `near`, whose port we choose.
  for (const int end : {far, near, door}) platform::closesocket(end);
  return done;
}

TEST(Sockets, CarryAConversationOrReportWhatFails) {
  close(0);  // the next socket is 0; the library must move it to another number
  check("a conversation", converse, "",
        {{"setsockopt", each_time, "it is only slower"},
         {"getsockname", {2}, "it is not its own peer"},
         {"getpeername", {1}, "it is not its own peer"},
         {"close", each_time, "everything has arrived"}});
  // After an interrupted connect, its result is known only by asking the system (getsockopt).
  EXPECT_FALSE(support::run_failing(converse, {{"getsockopt", 1, ECONNREFUSED}}, true)) << "later";
  EXPECT_FALSE(support::run_failing(converse, {{"getsockopt", 1, EIO}}, true)) << "can't be asked";
  platform::SocketAddress own = platform::loopback;
  const int alone = platform::socket();
  EXPECT_EQ(platform::bind(alone, own) + platform::getsockname(alone, &own), 0);
  EXPECT_EQ(platform::connect(alone, own), -1) << "it would be its own peer";
  platform::closesocket(alone);
}

}  // namespace
