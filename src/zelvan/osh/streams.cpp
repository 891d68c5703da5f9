// Streams of the C runtime, under the names of the interface.
#include <zelvan/osh/detail/fixed_path.h>
#include <zelvan/osh/file_access.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/streams.h>

#include <cstdio>

namespace {

struct Line {
  std::FILE* const stream;
  char* const buffer;
  const int size;
  int stored;
};

/// Reads a line. A carriage return ends it unless a line feed or another carriage return follows.
void read_line(Line& line) {
  while (line.stored < line.size) {
    const int got = zelvan::platform::read_through_line_end(line.stream, line.buffer + line.stored,
                                                            line.size - line.stored);
    line.stored += got;
    if (got == 0 || line.buffer[line.stored - 1] != '\r' || line.stored == line.size) return;
    const int next = zelvan::platform::peek(line.stream);
    if (next != '\n' && next != '\r') return;
  }
}

}  // namespace

std::FILE* osh_fopen_binary(char* path, char* mode) {
  if (mode == nullptr || mode[0] == '\0') return zelvan::osh1_fopen(path, mode);
  char binary[] = {mode[0], 'b', mode[1], '\0'};
  return zelvan::osh1_fopen(path, binary);
}

std::FILE* osh_fopen_text(char* path, char* mode) { return zelvan::osh1_fopen(path, mode); }

short osh_fclose(std::FILE* fp) { return std::fclose(fp) == 0 ? 0 : -1; }

short osh_fseek(std::FILE* fp, long offset, int whence) {
  return static_cast<short>(std::fseek(fp, offset, whence));
}

long osh_ftell(std::FILE* fp) { return std::ftell(fp); }

short osh_fflush(std::FILE* fp) { return std::fflush(fp) == 0 ? 0 : -1; }

int osh_fputint(int value, int width, std::FILE* fp) {
  return std::fprintf(fp, "%*d", width, value);
}

int osh_readLine(std::FILE* fp, char* buffer, int size) {
  Line line = {fp, buffer, size, 0};
  zelvan::platform::with_locked_stream(
      fp, [](void* argument) { read_line(*static_cast<Line*>(argument)); }, &line);
  return line.stored;
}

std::size_t osh_fread(void* buffer, unsigned int size, unsigned int count, std::FILE* fp) {
  return std::fread(buffer, size, count, fp);
}

std::size_t osh_fwrite(void* buffer, unsigned int size, unsigned int count, std::FILE* fp) {
  return std::fwrite(buffer, size, count, fp);
}

char* osh_fgets(char* buffer, int size, std::FILE* fp) { return std::fgets(buffer, size, fp); }

int osh_getc(std::FILE* fp) { return std::getc(fp); }

int osh_ungetc(int c, std::FILE* fp) { return std::ungetc(c, fp); }

int osh_fputc(int c, std::FILE* fp) { return std::putc(c, fp); }

int osh_fputs(char* text, std::FILE* fp) { return std::fputs(text, fp); }

int osh_feof(std::FILE* fp) { return std::feof(fp); }

void osh_rewind(std::FILE* fp) { std::rewind(fp); }

int osh_fileno(std::FILE* fp) { return zelvan::platform::_fileno(fp); }

std::FILE* osh_fdopen(int fd, char* mode) { return zelvan::platform::_fdopen(fd, mode); }
