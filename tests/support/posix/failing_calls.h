/// System calls that fail or are interrupted when a test says so: for one source of a private
/// test program whose linker wraps each CALL and REAL named here. Calls in processes that an
/// operation forks count as well.
#pragma once

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

namespace support {

struct Failure {
  std::string call;
  int nth;  ///< of the calls of that name; 0: each of them
  int why;  ///< what it leaves in `errno`
};

using Counts = std::atomic<int>[64];
inline Counts& calls_made = *static_cast<Counts*>(  // by all processes together
    mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
inline std::vector<std::string> call_names;
inline std::vector<Failure> failures;
inline bool is_armed = false, interrupts = false;

inline std::size_t add_call(const char* name) {
  return call_names.push_back(name), call_names.size() - 1;
}

inline bool call_fails(std::size_t call, bool may_wait) {
  if (!is_armed) return false;
  const int nth = ++calls_made[call];
  const auto planted = std::find_if(failures.begin(), failures.end(), [&](const Failure& failure) {
    return failure.call == call_names[call] && (failure.nth == 0 || failure.nth == nth);
  });
  const bool is_interrupted = interrupts && may_wait && nth % 2 != 0;
  const int why = planted != failures.end() ? planted->why : is_interrupted ? EINTR : 0;
  if (why != 0) errno = why;
  return why != 0;
}

/// Runs an operation with these failures. If it is interrupted as well, a signal cuts each call
/// that may wait short before it gets through, and three bytes are moved at a time.
inline bool run_failing(const std::function<bool()>& operation, const std::vector<Failure>& planted,
                        bool interrupted = false) {
  for (auto& count : calls_made) count = 0;
  failures = planted, interrupts = interrupted, is_armed = true;
  const bool done = operation();
  is_armed = false;
  return done;
}

/// Runs `run` without a failure and then once for each system call that it made, which fails for
/// that reason. Gives the names of the calls, each followed by a mark for every time that it was
/// made: `!` if its failure makes the result false, else `.`.
inline std::string fail_each_call(int why, const std::function<bool(std::vector<Failure>)>& run) {
  std::string outcome = run({}) ? "" : "failed";
  const std::vector<int> made(std::begin(calls_made), std::end(calls_made));
  for (std::size_t call = 0; call < call_names.size(); ++call) {
    if (made[call] != 0) outcome += (outcome.empty() ? "" : " ") + call_names[call];
    for (int nth = 1; nth <= made[call]; ++nth) {
      outcome += run({{call_names[call], nth, why}}) ? '.' : '!';
    }
  }
  return outcome;
}

using Word = std::intptr_t;
enum Kind { waits = 1, moves = 2 | waits, gives_pointer = 4 };

// The linker puts the `__wrap_` functions in the place of the system's own. These take nothing
// but whole numbers and pointers, six at most, so one shape passes all of them on. Some take any
// number of arguments, for which callers on POWER have to leave room.
#define REAL(name)                               \
  const std::size_t name##_id = add_call(#name); \
  extern "C" Word __real_##name(Word, ...);
#define CALL(name, ...)                                                            \
  REAL(name)                                                                       \
  extern "C" Word __wrap_##name(Word a, Word b, Word c, Word d, Word e, Word f) {  \
    constexpr int kind{__VA_ARGS__};                                               \
    if (call_fails(name##_id, kind & waits)) return kind & gives_pointer ? 0 : -1; \
    const bool is_cut = is_armed && interrupts && (kind & moves) == moves;         \
    return __real_##name(a, b, is_cut ? std::min(c, Word{3}) : c, d, e, f);        \
  }

// clang-format off
CALL(open, waits) CALL(openat, waits) CALL(fopen, waits | gives_pointer) CALL(read, moves)
CALL(write, moves) CALL(lseek) CALL(stat) CALL(lstat) CALL(fstat) CALL(fstatat) CALL(access)
CALL(faccessat) CALL(realpath, gives_pointer) CALL(getcwd, gives_pointer) CALL(chmod)
CALL(fchmod, waits) CALL(fchown, waits) CALL(futimens) CALL(fsync, waits) CALL(linkat)
CALL(renameat) CALL(renameat2) CALL(unlink) CALL(unlinkat) CALL(mkdir) CALL(mkdirat) CALL(rmdir)
CALL(fdopendir, gives_pointer) CALL(readdir, gives_pointer) CALL(pipe2) CALL(fork) CALL(dup3)
CALL(setsid) CALL(execve) CALL(socket) CALL(setsockopt) CALL(getsockopt) CALL(bind)
CALL(getsockname) CALL(getpeername) CALL(listen) CALL(accept4, waits) CALL(poll, waits)
CALL(send, moves) CALL(recv, moves) CALL(gethostname) CALL(fcntl) CALL(gethostbyname_r)
REAL(close) REAL(connect) REAL(waitpid)
    // clang-format on

    // What fails or is interrupted is closed all the same.
    extern "C" Word __wrap_close(Word fd) {
  EXPECT_TRUE(!is_armed || (__real_fcntl(fd, F_GETFD) & FD_CLOEXEC) != 0) << "is inherited";
  return static_cast<int>(__real_close(fd)) != 0 || call_fails(close_id, true) ? -1 : 0;
}

// An interrupted one goes on by itself, and how it ends shows later.
extern "C" Word __wrap_connect(Word fd, Word address, Word size) {
  if (!call_fails(connect_id, true)) return __real_connect(fd, address, size);
  if (errno != EINTR) return -1;
  const Word flags = __real_fcntl(fd, F_GETFL);
  __real_fcntl(fd, F_SETFL, flags | O_NONBLOCK);
  __real_connect(fd, address, size);
  __real_fcntl(fd, F_SETFL, flags);
  errno = EINTR;
  return -1;
}

// Where it fails, somebody else has waited for the child.
extern "C" Word __wrap_waitpid(Word child, Word status, Word flags) {
  const bool has_failed = call_fails(waitpid_id, true);
  if (has_failed && errno == EINTR) return -1;
  const Word ended = __real_waitpid(child, status, flags);
  if (has_failed) errno = ECHILD;
  return has_failed ? -1 : ended;
}

}  // namespace support
