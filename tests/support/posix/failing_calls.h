/// System calls that fail or are interrupted on demand, in forked processes as well. Include this
/// in one source of a private test program, and have the linker wrap each CALL and REAL named here.
#pragma once

#include "support/heap.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

namespace support {

struct Failure {
  std::string call;
  int nth;             ///< the nth call of that name; 0: every call
  int why;             ///< stored in `errno`
  bool works = false;  ///< does its work and still reports failure, as a network file system can
};

using Counts = std::atomic<int>[64];
inline Counts& calls_made = *static_cast<Counts*>(  // shared by all processes
    mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
inline std::vector<std::string> call_names;
inline std::vector<Failure> failures;
inline bool is_armed = false, interrupts = false;
inline bool works_all_the_same = false;  ///< whether the last failing call did its work
inline int refused_request = 0;          ///< nth of the heap; negative: all later ones too; 0: none

inline std::size_t add_call(const char* name) {
  call_names.push_back(name);
  return call_names.size() - 1;
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
  works_all_the_same = planted != failures.end() && planted->works;
  return why != 0;
}

/// Runs an operation while the `planted` calls fail and the heap refuses `refused_request`. Returns
/// its result, and expects that it leaks no block. With `interrupted`, each call that can wait
/// fails once with EINTR before it succeeds, and transfers at most three bytes.
inline bool run_failing(const std::function<bool()>& operation, const std::vector<Failure>& planted,
                        bool interrupted = false) {
  for (auto& count : calls_made) count = 0;
  failures = planted;
  interrupts = interrupted;
  bool done = false;
  heap::refuse(std::abs(refused_request), refused_request < 0);
  try {
    is_armed = true;
    done = operation();
  } catch (const std::bad_alloc&) {
    ADD_FAILURE() << "throws";
  }
  is_armed = false;
  if (!heap::grant_all()) refused_request = 0;
  EXPECT_EQ(heap::blocks_left(), 0) << "leaks a block";
  return done;
}

using Word = std::intptr_t;
// An interrupted `connect` continues by itself. If `waitpid` fails, another thread has waited.
enum Kind { waits = 1, moves = 2 | waits, returns_pointer = 4, continues = 8, is_done = 16 };

// The linker replaces the system's functions by those named `__wrap_`. All arguments are whole
// numbers and pointers, six at most, so one signature passes any of them on. `__real_` is declared
// variadic: some of the functions are, and on POWER callers must leave room for that.
#define REAL(name)                               \
  const std::size_t name##_id = add_call(#name); \
  extern "C" Word __real_##name(Word, ...);
// clang-format off
#define CALL(name, ...)                                                                        \
  REAL(name)                                                                                   \
  extern "C" Word __wrap_##name(Word a, Word b, Word c, Word d, Word e, Word f) {              \
    constexpr int kind{__VA_ARGS__};                                                           \
    const bool is_cut = is_armed && interrupts && (kind & moves) == moves;                     \
    const bool fails = call_fails(name##_id, kind & waits);                                    \
    const int why = errno;                                                                     \
    const bool works = works_all_the_same || kind & (why == EINTR ? continues : is_done);      \
    const Word result = !fails || works                                                        \
                            ? __real_##name(a, b, is_cut ? std::min(c, Word{3}) : c, d, e, f)  \
                            : 0;                                                               \
    if (!fails) return result;                                                                 \
    errno = why;                                                                               \
    return kind & returns_pointer ? 0 : -1;                                                    \
  }

CALL(open, waits) CALL(openat, waits) CALL(fopen, waits | returns_pointer) CALL(read, moves)
CALL(write, moves) CALL(copy_file_range, waits) CALL(ftruncate, waits) CALL(lseek) CALL(stat) CALL(lstat) CALL(fstat) CALL(fstatat) CALL(access)
CALL(faccessat) CALL(getxattr) CALL(fgetxattr) CALL(fsetxattr) CALL(fremovexattr)
CALL(realpath, returns_pointer) CALL(getcwd, returns_pointer) CALL(chmod)
CALL(fchmod, waits) CALL(fchown, waits) CALL(futimens) CALL(fsync, waits) CALL(linkat)
CALL(renameat) CALL(renameat2) CALL(unlink) CALL(unlinkat) CALL(mkdir) CALL(mkdirat) CALL(rmdir)
CALL(fdopendir, returns_pointer) CALL(readdir, returns_pointer) CALL(pipe2) CALL(fork) CALL(dup2)
CALL(setsid) CALL(execve) CALL(socket) CALL(setsockopt)
CALL(bind) CALL(connect, waits | continues) CALL(getsockname) CALL(getpeername) CALL(listen) CALL(accept4, waits) CALL(poll, waits)
CALL(send, moves) CALL(recv, moves) CALL(gethostname) CALL(gethostbyname_r) CALL(fcntl)
CALL(waitpid, waits | is_done) REAL(close) REAL(sync) REAL(getsockopt)
    // clang-format on

    // A close that fails or is interrupted still closes the descriptor.
    extern "C" Word __wrap_close(Word fd) {
  EXPECT_TRUE(!is_armed || (__real_fcntl(fd, F_GETFD) & FD_CLOEXEC) != 0)
      << "would be inherited by programs";
  return static_cast<int>(__real_close(fd)) != 0 || call_fails(close_id, true) ? -1 : 0;
}

// Counts the call, but doesn't make it: it would write to all disks of the machine.
extern "C" void __wrap_sync() { call_fails(sync_id, false); }

// Asks for the result of an interrupted connect: a planted failure, except EIO, is that result.
extern "C" Word __wrap_getsockopt(Word, Word, Word, Word result, Word) {
  const int why = call_fails(getsockopt_id, false) ? errno : 0;
  *reinterpret_cast<int*>(result) = why == EIO ? 0 : why;
  return why == EIO ? -1 : 0;
}

}  // namespace support
