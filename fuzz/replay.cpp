// Runs a fuzz target over the inputs that are kept in a corpus, without libFuzzer's engine. What a
// line of a corpus means stands in corpus.py.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::string decode(const std::string& line) {
  std::string input;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '\\') {
      input += line[i];
    } else {
      input += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
      i += 2;
    }
  }
  return input;
}

/// Runs the input from a block of just its size, so that a sanitizer sees a byte too many.
void run(const std::string& input) {
  const std::unique_ptr<std::uint8_t[]> block(new std::uint8_t[input.size()]);
  std::copy(input.begin(), input.end(), block.get());
  LLVMFuzzerTestOneInput(block.get(), input.size());
}

/// Runs all inputs of a corpus and keeps the number of the line up to date. Returns their number.
int run_all(const char* path, int* line_number) {
  std::ifstream corpus(path);
  int inputs = 0;
  for (std::string line; std::getline(corpus, line);) {
    ++*line_number;
    if (line.empty() || line[0] == '#') continue;
    run(decode(line));
    ++inputs;
  }
  return inputs;
}

}  // namespace

// A process of its own runs the inputs, so that this one can tell which of them stopped it.
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
    return inputs > 0 ? 0 : 1;
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return 2;
  if (status != 0) std::fprintf(stderr, "%s:%d: fails at this line\n", argv[1], *line_number);
  return status == 0 ? 0 : 1;
}
