#include <zelvan/osh/file_access.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/random.h>

namespace {

using Results = std::vector<long long>;

int opened(int fd) { return fd < 0 ? fd : osh_close(fd); }
int opened(std::FILE* fp) { return fp != nullptr && osh_fclose(fp) == 0; }
int opened_to_append(char* path, std::size_t mode_length) {
  std::string mode(mode_length, 't');
  mode[0] = 'a';
  return opened(osh_fopen_text(path, mode.data()));
}
int kind(char* path) {
  unsigned short mode = 0x2000;
  const int done = osh_inquire_file(path, &mode);
  return done == 1 ? mode : mode == 0x2000 ? done : -9;
}
int changed(char* path, unsigned short mode, int permissions) {
  return osh_chmod(path, mode) == 1 && kind(path) % 0x400 == permissions;
}

/// Why the last call failed, in a letter: No such thing, Access, Invalid, Directory, Exists, Long,
/// Full, Other than a directory; `-` where nobody says.
char reason() {
  const int known[] = {0, ENOENT, EACCES, EINVAL, EISDIR, EEXIST, ENAMETOOLONG, ENOTEMPTY, ENOTDIR};
  return "-NAIDELFO?"[std::find(known, known + 9, errno) - known];
}

/// What every function makes of every path: a result or why there was none, and behind it the
/// result of a failure; `d` is 1 if directories can be read-only. Links come last: not every system
/// has them. Elsewhere than on POSIX a reason may have another name.
TEST(FileAccess, KeepsEveryResultConvention) {
  using Call = int (*)(char*);
  // clang-format off
  const std::string names[] = {"plain", "other", "locked", "dir", "empty", "new", "nowhere/new", "",
                               padded("plain", 1023), padded("plain", 1024), "link", "dangling"};
  const std::pair<const char*, Call> rows[] = {
      {"000DDNNN0L0N -1", [](char* p) { return opened(osh_open_binary(p, 0, 0)); }},
      {"11ADDNNN1L1N 0", [](char* p) { return opened(osh_fopen_binary(p, "r+"_c)); }},
      {"111DDNNN1L1N 0", [](char* p) { return opened(osh_fopen_binary(p, "rb+"_c)); }},
      {"11ADD1NN1L11 0", [](char* p) { return opened_to_append(p, 62); }},
      {"IIIIIIIIILII 0", [](char* p) { return opened_to_append(p, 63); }},
      {"IIIIIIIIILII 0", [](char* p) { return opened(osh_fopen_binary(p, ""_c)); }},
      {"-----NNN-L-N 0", [](char* p) { return opened(osh_fopen_binary(p, nullptr)); }},
      {"EEAEE0NNELEE -1", [](char* p) { return opened(osh_open_text(p, 0x701, 0600)); }},
      {"IIIIIIIIILII -1", [](char* p) { return opened(osh_open_text(p, 3, 0)); }},
      {"IIIIIIIIILII -1", [](char* p) { return opened(osh_open_text(p, 0x200, 0)); }},
      {"11111NNN1L1N 0", [](char* p) -> int { return osh_file_exists(p); }},
      {"11-11NNN1L1N 0", [](char* p) -> int { return osh_file_access(p, 0xFFFF); }},
      {"11111NNN1L1N 0", [](char* p) -> int { return osh_file_access(p, 0xFFFD); }},
      {"11144NNN1L1N 0", [](char* p) { return kind(p) / 0x400; }},
      {"11111NNN1L1N 0", [](char* p) { return changed(p, 0020, 0777); }},
      {"111ddNNN1L1N 0", [](char* p) { return changed(p, 0555, 0555); }},
      {"534DDNNN5L5N -1", osh_filesize},
      {"1I1DDNNN1L1N 0", [](char* p) -> int { return osh_cat("other"_c, p); }},
      {"I1ADD1NNILI1 0", [](char* p) -> int { return osh_cat(p, "plain"_c); }},
      {"1I1DDNNN1L1N 0", [](char* p) { return osh_copyfile("other"_c, p); }},
      {"I1ADD1NNILIN 0", [](char* p) { return osh_copyfile(p, "plain"_c); }},
      {"00000NNN0L0N -1", [](char* p) { return osh_rename(p, "new"_c); }},
      {"EEEEE0NNELEE -1", [](char* p) { return osh_rename("dir"_c, p); }},
      {"00ADDNNN0L0N 1", [](char* p) -> int { return osh_unlink(p); }},
      {"EEEEE1NNELEE 0", osh_mkdir},
      {"OOOF1NNNOLOO 0", osh_rmdir},
  };
  // clang-format on
  osh_close(0);  // the next descriptor, and one like any other
  const int before = support::open_descriptors();
  const bool has_links = World().has_links;
  std::uint64_t state = 0;
  for (const auto& [expected, call] : rows) {
    const int failure = call(nullptr);
    std::string results;
    for (const std::string& name : names) {
      World world;
      if (!has_links && results.size() == 10) break;
      errno = 0;
      const int result = call(given(name));
      results += result == failure ? reason() : static_cast<char>('0' + result);
      for (const std::string path : {"plain", "other", "locked", "dir", "empty", "new"}) {
        if (results.size() > 10 || !fs::exists(path)) continue;
        for (const char c : path + content(path)) state = 31 * state + c;
      }
    }
    std::string promised = expected;
    if (!has_links) promised.erase(10, 2);
    for (std::size_t i = 0; i < results.size(); ++i) {
      if (promised[i] == 'd') promised[i] = support::is_posix ? '1' : results[i];
      const bool fails = results[i] < '0' || results[i] > '9';
      if (!support::is_posix && promised[i] >= 'A' && fails) promised[i] = results[i];
    }
    EXPECT_EQ(results + ' ' + std::to_string(failure), promised)
        << "row " << (&expected - &rows[0].first) / 2;
  }
  EXPECT_EQ(state, 14052483421970573160u) << "the files afterwards";
  EXPECT_EQ(support::open_descriptors(), before) << "a descriptor was left open";
}

// Every sum of flags on every kind of file: what opens, and where a line end is written.
TEST(FileAccess, OpensAsTheFlagsSay) {
  for (int code = 0; code < 1 << 6; ++code) {
    const int access = code & 3, flags = access | (code & 4) << 1 | (code & 0x38) << 5;
    const bool appends = code & 4, creates = code & 8, truncates = code & 16, excludes = code & 32;
    for (const std::string name : {"plain", "locked", "dir", "new"}) {
      World world;
      std::string text = content(name);
      const bool opens = access != 3 && (access != 0 || !truncates) && name != "dir" &&
                         (name != "new" ? !creates || !excludes : creates) &&
                         (access == 0 || name != "locked");
      const int fd = (creates ? osh_open_text : osh_open_binary)(given(name), flags, 0600);
      EXPECT_EQ(fd >= 0, opens) << std::hex << flags << name;
      if (!opens) continue;
      EXPECT_FALSE(support::is_inherited(fd));
      EXPECT_EQ(osh_write(fd, "\n"_c, 1), access != 0 ? 1 : -1);
      const std::string end = support::is_posix || !creates ? "\n" : "\r\n";
      if (truncates) text.clear();
      if (access != 0) text.replace(appends ? text.size() : 0, end.size(), end);
      const int size = static_cast<int>(text.size() - (access == 2 ? end.size() - 1 : 0));
      char read[9] = "";
      EXPECT_EQ(osh_lseek(fd, 0, 0) + osh_read(fd, read, 8), access != 1 ? size : -1);
      EXPECT_EQ(osh_close(fd), 0);
      EXPECT_EQ(content(name), text);
    }
  }
}

TEST(FileAccess, GoesBeyondTwoGigabytes) {
  World world;
  const int fd = osh_open_binary("plain"_c, osh_open_read_write, 0);
  EXPECT_EQ((Results{osh_lseek(fd, -2, 2), osh_lseek(fd, 1, 1), osh_lseek(fd, 0, 3),
                     osh_lseek(fd, 0, -1), osh_lseek(fd, -1, 0), osh_lseek(fd, 0, 1)}),
            (Results{3, 4, -1, -1, -1, 4}));
  errno = 0;
  EXPECT_EQ(osh_write(fd, "67"_c, 1u << 31), -1);
  EXPECT_EQ(reason(), 'I');
  fs::resize_file("plain", 0x1'8000'0005);
  EXPECT_EQ((Results{osh_fdfilesize(fd), osh_filesize("plain"_c), osh_lseek(fd, 0, 2)}),
            (Results{INT_MIN + 5, INT_MIN + 5, sizeof(long) > 4 ? 0x1'8000'0005 : -1}));
  EXPECT_EQ((Results{osh_close(fd), osh_close(fd), osh_fdfilesize(fd), osh_read(fd, &world, 1)}),
            (Results{0, -1, -1, -1}));
}

// Every text of up to six of four bytes, and longer ones, read line by line to the end at any size,
// by streams that keep any number of bytes in their buffers, or none.
TEST(ReadLine, IsTheModel) {
  World world;
  support::Random random(6);
  const char* const parts[] = {"\n", "\r", "\r\n", "x"};
  char line[801], buffer[800];
  for (int i = 0; i < 20'000; ++i) {
    const bool is_short = i < 2 << 13;
    std::string text;
    for (int rest = i / 2; rest > 3 && is_short; rest /= 4) text += "ab\r\n"[rest % 4];
    for (int n = is_short ? 0 : random.below(12); n > 0; --n) {
      text += std::string(random.below(300), n == 5 ? '\0' : 'a') + parts[random.below(4)];
    }
    put("plain", text);
    std::FILE* const fp = osh_fopen_binary("plain"_c, "r"_c);
    std::setvbuf(fp, buffer, i % 8 == 0 ? _IONBF : _IOFBF, 2 + random.below(799));
    bool met_end = false;
    for (std::size_t got = 1, size = 1; got > 0 || size == 0; text.erase(0, got)) {
      // A line feed ends the line, and a carriage return does that neither of them follows.
      std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
      while (text.substr(end, 2) == "\r\n" || text.substr(end, 2) == "\r\r") ++end;
      size = random.below(is_short ? 8 : 800);
      const std::string expected = text.substr(0, std::min(end + 1, size));
      std::fill(std::begin(line), std::end(line), '#');
      got = osh_readLine(fp, line, static_cast<int>(size));
      ASSERT_EQ(std::string(line, got + 1), expected + '#') << text;
      met_end |= got < size && got == text.size() && (got == 0 || line[got - 1] != '\n');
      ASSERT_EQ(osh_feof(fp) != 0, met_end) << text << size;
    }
    osh_fclose(fp);
  }
}

TEST(Streams, KeepTheirConventions) {
  World world;
  std::FILE* fp = osh_fopen_binary("text"_c, "wx+"_c);  // drops the plus
  char text[9] = "";
  EXPECT_EQ(osh_readLine(fp, text, 8), 0) << "a read error ends the line";
  EXPECT_FALSE(support::is_inherited(osh_fileno(fp)));
  EXPECT_EQ(
      (Results{osh_fputint(7, 0, fp), osh_fputint(7, 3, fp), osh_fputint(-7, -4, fp), osh_ftell(fp),
               int(osh_fwrite("xyz!"_c, 2, 2, fp)), osh_fseek(fp, 11, SEEK_SET), osh_fputc('?', fp),
               osh_fflush(fp), osh_fflush(fp), osh_fclose(fp)}),
      (Results{1, 3, 4, 8, 2, 0, '?', 0, 0, 0}));
  EXPECT_EQ(content("text"), "7  7-7  xyz?");
  fp = osh_fopen_text("text"_c, "r+"_c);
  EXPECT_EQ(
      (Results{osh_fputc('7', fp), osh_close(osh_fileno(fp)), osh_fflush(fp), osh_fclose(fp)}),
      (Results{'7', 0, -1, -1}));
  fp = osh_fdopen(osh_open_text("text"_c, 0, 0), "r"_c);
  EXPECT_EQ(
      (Results{osh_fseek(fp, -1, 0), osh_fputs("x"_c, fp), osh_getc(fp), osh_ungetc('8', fp),
               int(osh_fread(text, 2, 2, fp)), osh_ftell(fp), osh_fgets(text + 4, 3, fp) - text,
               osh_feof(fp), osh_fseek(fp, 1, SEEK_END), osh_getc(fp), osh_feof(fp) != 0}),
      (Results{-1, EOF, '7', '8', 2, 4, 4, 0, 0, EOF, 1}));
  EXPECT_STREQ(text, "8  7-7");
  osh_rewind(fp);
  EXPECT_EQ((Results{osh_getc(fp), osh_close(osh_fileno(fp)), osh_fclose(fp)}),
            (Results{'7', 0, -1}));
  for (const auto open : {osh_fopen_binary, osh_fopen_text}) {
    fp = open("text"_c, "w"_c);
    EXPECT_EQ((Results{osh_fputc('\n', fp), osh_fclose(fp)}), (Results{'\n', 0}));
    EXPECT_EQ(content("text"), support::is_posix || open == osh_fopen_binary ? "\n" : "\r\n");
  }
}

}  // namespace
