#include <zelvan/platform/streams.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include <pthread.h>

namespace zelvan::platform {
namespace {

void release(void* stream) { ::funlockfile(static_cast<std::FILE*>(stream)); }

/// Reads a byte as `getc` does, but resumes after a signal. The stream records an interruption as
/// an error; that is cleared unless there was an error before.
int next_byte(std::FILE* stream) {
  const bool had_error = ::ferror_unlocked(stream) != 0;
  const int errno_before = errno;
  for (;;) {
    errno = 0;
    const int byte = ::getc_unlocked(stream);
    const bool is_interrupted = byte == EOF && errno == EINTR && ::feof_unlocked(stream) == 0;
    if (!is_interrupted) {
      if (errno == 0) errno = errno_before;
      return byte;
    }
    if (!had_error) ::clearerr_unlocked(stream);
  }
}

#if defined(__GLIBC__) && !defined(__UCLIBC__)  // uClibc defines both macros

// The header of the GNU C library exposes the unread rest of a stream's buffer, from `_IO_read_ptr`
// to `_IO_read_end`, since its inline getc_unlocked uses it. The rest is empty for a stream that is
// being written. Bytes that were put back come first; they may lie in a buffer of their own, and
// are then the whole rest until they are read.

/// Takes bytes out of the stream's buffer, through the first line end, at most `room`. Returns the
/// number of bytes, 0 if the buffer is empty.
int take_buffered(std::FILE* stream, char* to, int room) {
  // Limited, since a line may end long before the first line feed: in a file with only carriage
  // returns, each line would otherwise search the whole buffer.
  constexpr std::ptrdiff_t longest_search = 256;
  const char* const from = stream->_IO_read_ptr;
  std::ptrdiff_t n = std::min({stream->_IO_read_end - from, std::ptrdiff_t{room}, longest_search});
  if (n == 0) return 0;
  for (const char line_end : {'\n', '\r'}) {
    const void* const found = std::memchr(from, line_end, static_cast<std::size_t>(n));
    if (found != nullptr) n = static_cast<const char*>(found) - from + 1;
  }
  std::memcpy(to, from, static_cast<std::size_t>(n));
  stream->_IO_read_ptr += n;
  return static_cast<int>(n);
}

/// Returns the next byte of the buffer, or EOF if the buffer is empty.
int peek_buffered(std::FILE* stream) {
  const char* const next = stream->_IO_read_ptr;
  return next < stream->_IO_read_end ? static_cast<unsigned char>(*next) : EOF;
}

#else

int take_buffered(std::FILE*, char*, int) { return 0; }
int peek_buffered(std::FILE*) { return EOF; }

#endif

}  // namespace

void with_locked_stream(std::FILE* stream, void (*work)(void*), void* argument) {
  ::flockfile(stream);
  pthread_cleanup_push(release, stream);
  work(argument);
  pthread_cleanup_pop(1);
}

int read_through_line_end(std::FILE* stream, char* buffer, int size) {
  int stored = 0;
  while (stored < size) {
    int taken = take_buffered(stream, buffer + stored, size - stored);
    if (taken == 0) {
      const int byte = next_byte(stream);
      if (byte == EOF) break;
      buffer[stored] = static_cast<char>(byte);
      taken = 1;
    }
    stored += taken;
    const char last = buffer[stored - 1];
    if (last == '\n' || last == '\r') break;
  }
  return stored;
}

int peek(std::FILE* stream) {
  const int byte = peek_buffered(stream);
  return byte != EOF ? byte : std::ungetc(next_byte(stream), stream);
}

}  // namespace zelvan::platform
