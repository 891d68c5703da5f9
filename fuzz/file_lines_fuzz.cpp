// Reads a file of any bytes line by line, into blocks of exactly the requested size. The lines
// together must be the file, and each must end where the header says, or fill its block.

#include <zelvan/osh/file_access.h>

#include "bytes.h"

#include <cstdio>

namespace {

using fuzz::require;

/// Returns true if `line` ends with a line break. `next` is the byte that follows it, or EOF.
bool ends(const std::string& line, int next) {
  if (line.back() == '\n') return true;
  return line.back() == '\r' && next != '\n' && next != '\r';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const int most = 1 + data[0];
  std::string content(reinterpret_cast<const char*>(data) + 1, size - 1);
  std::FILE* const file = fmemopen(content.data(), content.size(), "r");
  require(file != nullptr);
  std::string all;
  for (;;) {
    const std::unique_ptr<char[]> room(new char[static_cast<std::size_t>(most)]);
    const int length = osh_readLine(file, room.get(), most);
    require(length >= 0 && length <= most);
    if (length == 0) break;
    const std::string line(room.get(), static_cast<std::size_t>(length));
    all += line;
    require(all.size() <= content.size());
    const bool is_last = all.size() == content.size();
    const int next = is_last ? EOF : static_cast<unsigned char>(content[all.size()]);
    require(is_last || length == most || ends(line, next));
    for (std::size_t i = 1; i < line.size(); ++i) require(!ends(line.substr(0, i), line[i]));
  }
  require(all == content);
  require(osh_fclose(file) == 0);
  return 0;
}
