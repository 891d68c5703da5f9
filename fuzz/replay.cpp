// Runs a fuzz target over the inputs of a corpus, without libFuzzer's engine. corpus.py describes
// the lines of a corpus.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// An input that takes longer counts as an endless loop: SIGALRM ends the process.
constexpr unsigned most_seconds = 60;

/// Returns the value of a hexadecimal digit, or -1.
int digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// Returns the bytes that a line stands for. A line that corpus.py can't have written ends the
/// process: a damaged input would pass without testing what it was kept for.
std::string decode(const std::string& line) {
  std::string input;
  for (std::size_t i = 0; i < line.size(); ++i) {
    char byte = line[i];
    bool is_whole = byte >= ' ' && byte <= '~';
    if (byte == '\\') {
      const int high = i + 2 < line.size() ? digit(line[i + 1]) : -1;
      const int low = i + 2 < line.size() ? digit(line[i + 2]) : -1;
      is_whole = high >= 0 && low >= 0;
      byte = static_cast<char>(16 * high + low);
      i += 2;
    }
    if (!is_whole) {
      std::fprintf(stderr, "not printable ASCII, or a backslash without two digits\n");
      std::exit(1);
    }
    input += byte;
  }
  return input;
}

/// Runs the input in a block of exactly its size, so that the address sanitizer detects a byte too
/// many.
void run(const std::string& input) {
  const std::unique_ptr<std::uint8_t[]> block(new std::uint8_t[input.size()]);
  std::copy(input.begin(), input.end(), block.get());
  LLVMFuzzerTestOneInput(block.get(), input.size());
}

/// Runs all inputs of a corpus and keeps the number of the line up to date, 0 after the last.
/// Returns how many there are.
int run_all(const char* path, int* line_number) {
  std::ifstream corpus(path);
  int inputs = 0;
  for (std::string line; std::getline(corpus, line);) {
    ++*line_number;
    if (line.empty() || line[0] == '#') continue;
    alarm(most_seconds);
    run(decode(line));
    ++inputs;
  }
  *line_number = 0;
  return inputs;
}

}  // namespace

// Runs the inputs in a child process. If an input crashes the child, this process survives and
// reports the line of that input.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s CORPUS\n", argv[0]);
    return 2;
  }
  void* shared =
      mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) return 2;
  int* line_number = static_cast<int*>(shared);
  const pid_t child = fork();
  if (child == 0) {
    const int inputs = run_all(argv[1], line_number);
    std::printf("%d inputs\n", inputs);
    if (inputs == 0) std::fprintf(stderr, "%s: no inputs, or no such file\n", argv[1]);
    return inputs > 0 ? 0 : 1;
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return 2;
  const bool passes = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  if (!passes && *line_number > 0) {
    std::fprintf(stderr, "%s:%d: fails at this line\n", argv[1], *line_number);
  } else if (!passes) {
    std::fprintf(stderr, "%s: fails, but at no single line\n", argv[1]);
  }
  return passes ? 0 : 1;
}
