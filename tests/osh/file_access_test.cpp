#include <zelvan/zelvan.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/random.h>

static int closed(int fd) { return fd < 0 ? fd : osh_close(fd); }
static int closed(std::FILE* fp) { return fp != nullptr && osh_fclose(fp) == 0; }
static int written(std::FILE* fp) {
  return fp != nullptr && std::fputc('!', fp) == '!' && osh_fflush(fp) == 0 && closed(fp);
}

/// Returns the number that osh_inquire_file stores; 0 if it fails and stores nothing.
static int inquired(char* path) {
  unsigned short mode = 7;
  return osh_inquire_file(path, &mode) == 1 ? mode : mode - 7;
}

/// Wine, where the tests for Windows run, leaves directories writable.
static bool may_stay_writable(const char* path) {
  return !support::is_posix && fs::is_directory(path);
}

// Calls each operation for every kind of path in World. One that fails must change nothing.
TEST(FileAccess, HasResultsOfItsOwnForEachOperation) {
  const auto expect = [](const std::string& operation, int success, int failure,
                         const std::string& works_on, const std::function<int(char*)>& call) {
    for (const std::string name :
         {"plain", "locked", "dir", "empty", "new", "link", "dangling", "none/new", "", "longer"}) {
      const World world;
      if (!world.has_links && (name == "link" || name == "dangling")) continue;
      const std::string before = files();
      const bool works = !name.empty() && works_on.find(name) != std::string::npos;
      std::string path = name == "plain" ? padded(name, 1023) : name;
      if (name == "longer") path = padded("plain", 1024);
      SCOPED_TRACE(operation + ": '" + name + "'");
      errno = 0;
      EXPECT_EQ(call(path.data()), works ? success : failure);
      if (!works) {
        const bool has_reason = support::is_posix && !operation.ends_with('?');
        EXPECT_TRUE(errno != 0 || !has_reason) << "a failure has a reason";
        EXPECT_EQ(files(), before) << "a failure changes nothing";
      }
    }
    EXPECT_EQ(call(nullptr), failure) << operation << ": a null path";
  };
  osh_close(0);  // the next file gets 0: a descriptor like any other
  const int descriptors = support::open_descriptors();
  // clang-format off
  expect("open", 0, -1, "plain locked link", [](char* p) { return closed(osh_open_text(p, 0, 0)); });
  expect("open to write", 0, -1, "plain link", [](char* p) { return closed(osh_open_binary(p, 1, 0)); });
  expect("create", 0, -1, "plain new link dangling", [](char* p) { return closed(osh_open_binary(p, 0x102, 0600)); });
  expect("create, exclusive", 0, -1, "new", [](char* p) { return closed(osh_open_text(p, 0x501, 0600)); });
  expect("open, two ways", 0, -1, "", [](char* p) { return osh_open_binary(p, 3, 0); });
  expect("truncate, to read", 0, -1, "", [](char* p) { return osh_open_binary(p, 0x200, 0); });
  expect("stream r+", 1, 0, "plain link", [](char* p) { return written(osh_fopen_binary(p, "r+"_c)); });
  expect("stream w", 1, 0, "plain new link dangling", [](char* p) { return written(osh_fopen_binary(p, "w"_c)); });
  expect("stream r, as text", 1, 0, "plain locked link", [](char* p) { return closed(osh_fopen_text(p, "r"_c)); });
  expect("stream without a mode", 1, 0, "", [](char* p) { return closed(osh_fopen_text(p, ""_c)); });
  expect("binary stream without a mode", 1, 0, "", [](char* p) { return closed(osh_fopen_binary(p, ""_c)); });
  expect("stream of a null mode", 1, 0, "", [](char* p) { return closed(osh_fopen_binary(p, nullptr)); });
  expect("stream of 62 letters", 1, 0, "plain locked link", [](char* p) { return closed(osh_fopen_text(p, given('r' + std::string(61, 'b')))); });
  expect("stream of 63 letters", 1, 0, "", [](char* p) { return closed(osh_fopen_text(p, given('r' + std::string(62, 'b')))); });
  expect("exists?", 1, 0, "plain locked dir empty link", osh_file_exists);
  expect("may write?", 1, 0, "plain dir empty link", [](char* p) { return osh_file_access(p, 2); });
  expect("is a writable file?", 1, 0, "plain link", [](char* p) { return inquired(p) == 0x5FF; });
  expect("is a read-only file?", 1, 0, "locked", [](char* p) { return inquired(p) == 0x56D; });
  expect("has another form?", 0, -1, "plain locked dir empty link", [](char* p) { return support::is_posix && p != nullptr ? osh_alternate_pathname(p, std::string(1024, ' ').data()) : osh_file_exists(p) - 1; });
  expect("size", 0, -1, "plain locked link", [](char* p) { return std::min(osh_filesize(p), 0); });
  expect("append to", 1, 0, "plain new link dangling", [](char* p) { return osh_cat(p, "other"_c); });
  expect("append to itself", 1, 0, "", [](char* p) { return osh_cat(p, p); });
  expect("copy to", 1, 0, "plain new link", [](char* p) { return osh_copyfile(p, "other"_c); });
  expect("rename to", 0, -1, "new", [](char* p) { return osh_rename("other"_c, p); });
  expect("rename from", 0, -1, "plain locked dir empty link", [](char* p) { return osh_rename(p, "fresh"_c); });
  expect("unlink", 0, 1, "plain link", osh_unlink);
  expect("chmod", 1, 0, "plain locked dir empty link", [](char* p) { return osh_chmod(p, 0020) != 0 && (inquired(p) & 0222) != 0; });
  expect("chmod, read-only", 1, 0, "plain locked dir empty link", [](char* p) { return osh_chmod(p, 0444) != 0 && ((inquired(p) & 0222) == 0 || may_stay_writable(p)); });
  expect("mkdir", 1, 0, "new", osh_mkdir);
  expect("rmdir", 1, 0, "empty", osh_rmdir);
  // clang-format on
  EXPECT_EQ(support::open_descriptors(), descriptors) << "a descriptor was left open";
}

TEST(Streams, WriteAndReadAtTheirPosition) {
  const World world;
  std::FILE* const fp = osh_fopen_binary("new"_c, "w+"_c);
  osh_fputs("abc"_c, fp);
  EXPECT_EQ(osh_fputc(0x100 + 'd', fp), 'd') << "the low 8 bits";
  EXPECT_EQ(osh_fputint(-42, 5, fp), 5);
  EXPECT_EQ(osh_fputint(7, -2, fp), 2);
  EXPECT_EQ(osh_fwrite("xyz!"_c, 2, 2, fp), 2u);
  EXPECT_EQ(osh_ftell(fp), 15);
  osh_rewind(fp);
  EXPECT_EQ(osh_ungetc(osh_getc(fp) + 1, fp), 'b') << "in place of the a";
  char text[20] = "";
  EXPECT_EQ(osh_fgets(text, 12, fp), std::string("bbcd  -427 ")) << "11 bytes";
  EXPECT_EQ(osh_fseek(fp, -3, 2), 0);
  EXPECT_EQ(osh_fread(text, 2, 9, fp), 1u) << "yz is whole, and ! is not";
  EXPECT_EQ(osh_lseek(osh_fileno(fp), 0, 1), 15) << "the descriptor is at the end";
  osh_fclose(fp);
}

TEST(Cat, AppendsAFileOfManyBlocks) {
  const World world;
  const std::string more = std::string(5000, 'a') + 'z';
  put("more", more);
  EXPECT_EQ(osh_cat("plain"_c, "more"_c), 1);
  EXPECT_EQ(content("plain"), "12345" + more);
}

TEST(OpenBinary, WritesWhereTheFlagsSay) {
  const auto expect = [](int flags, char* name, const std::string& after, const char* why) {
    const World world;
    const int fd = osh_open_binary(name, static_cast<short>(flags), 0600);
    EXPECT_FALSE(support::is_inherited(fd)) << why;
    EXPECT_EQ(osh_write(fd, "!"_c, 1), 1) << why;
    EXPECT_EQ(osh_lseek(fd, 0, 0), 0) << why;
    char text[9] = "";
    const bool reads = (flags & osh_open_read_write) != 0;
    EXPECT_EQ(osh_read(fd, text, 8), reads ? static_cast<int>(after.size()) : -1) << why;
    EXPECT_EQ(osh_close(fd), 0) << why;
    EXPECT_EQ(content(name), after) << why;
  };
  expect(osh_open_write_only, "plain"_c, "!2345", "at the start");
  expect(osh_open_read_write | osh_open_append, "plain"_c, "12345!", "at the end");
  expect(osh_open_write_only | osh_open_truncate, "plain"_c, "!", "into an empty file");
  expect(osh_open_read_write | osh_open_create, "new"_c, "!", "into a new file");
  expect(osh_open_write_only | osh_open_exclusive, "plain"_c, "!2345", "not to create it");
}

TEST(Descriptors, CountPlacesFromStartPlaceAndEnd) {
  const World world;
  fs::resize_file("plain", 0x1'8000'0005);
  const int fd = osh_open_binary("plain"_c, osh_open_read_only, 0);
  EXPECT_EQ(osh_fdfilesize(fd), INT_MIN + 5) << "the low 32 bits";
  EXPECT_EQ(osh_filesize("plain"_c), INT_MIN + 5);
  EXPECT_EQ(osh_lseek(fd, 0, 2), sizeof(long) > 4 ? 0x1'8000'0005 : -1) << "a place is a long";
  EXPECT_EQ(osh_lseek(fd, 3, 0), 3);
  EXPECT_EQ(osh_lseek(fd, 1, 1), 4);
  EXPECT_EQ(osh_lseek(fd, 0, -1), -1) << "no such origin";
  EXPECT_EQ(osh_lseek(fd, 0, 3), -1) << "no such origin";
  EXPECT_EQ(osh_lseek(fd, 0, 1), 4) << "a failure moves nothing";
  EXPECT_EQ(osh_close(fd), 0);
}

// A line feed ends a line, and so does a carriage return, unless one of the two follows it. Reads
// all texts of up to six of a, b and these two, and longer random ones, with buffers of any size.
TEST(ReadLine, EndsAfterALineFeedOrALoneCarriageReturn) {
  const World world;
  support::Random random(6);
  char line[801], buffer[800];
  for (int i = 0; i < 12'000; ++i) {
    const bool is_short = i < 8192;
    std::string text;
    for (int rest = i; rest > 3 && is_short; rest /= 4) text += "ab\r\n"[rest % 4];
    for (int n = is_short ? 0 : random.below(12); n > 0; --n) {
      const char* const ends[] = {"\n", "\r", "\r\n", "x"};
      text += std::string(random.below(300), n == 5 ? '\0' : 'a') + ends[random.below(4)];
    }
    put("plain", text);
    std::FILE* const fp = osh_fopen_binary("plain"_c, "r"_c);
    std::setvbuf(fp, buffer, i % 8 == 0 ? _IONBF : _IOFBF, 2 + random.below(799));
    bool is_end_met = false;
    for (std::size_t got = 1, size = 1; got > 0 || size == 0; text.erase(0, got)) {
      std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
      while (text.substr(end, 2) == "\r\n" || text.substr(end, 2) == "\r\r") ++end;
      size = random.below(is_short ? 8 : 800);
      const std::string expected = text.substr(0, std::min(end + 1, size));
      std::fill(std::begin(line), std::end(line), '#');
      got = osh_readLine(fp, line, static_cast<int>(size));
      ASSERT_EQ(std::string(line, got + 1), expected + '#')
          << testing::PrintToString(text) << ", size " << size;
      const bool looks_on = got < size && (got == 0 || line[got - 1] != '\n');
      is_end_met = is_end_met || (looks_on && got == text.size());
      ASSERT_EQ(osh_feof(fp) != 0, is_end_met) << testing::PrintToString(text) << ", size " << size;
    }
    osh_fclose(fp);
  }
}
