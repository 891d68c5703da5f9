#include <zelvan/platform/streams.h>

namespace zelvan::platform {

void with_locked_stream(std::FILE* stream, void (*work)(void*), void* argument) {
  ::_lock_file(stream);
  work(argument);
  ::_unlock_file(stream);
}

// No signal interrupts a read here.

int read_through_line_end(std::FILE* stream, char* buffer, int size) {
  int stored = 0;
  while (stored < size) {
    const int byte = std::getc(stream);
    if (byte == EOF) break;
    buffer[stored++] = static_cast<char>(byte);
    if (byte == '\n' || byte == '\r') break;
  }
  return stored;
}

int peek(std::FILE* stream) { return std::ungetc(std::getc(stream), stream); }

}  // namespace zelvan::platform
