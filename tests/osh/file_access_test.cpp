#include <zelvan/osh/file_access.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <functional>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

int opened(int fd) { return fd < 0 ? fd : osh_close(fd); }
int opened(std::FILE* fp) { return fp != nullptr && osh_fclose(fp) == 0; }

// Each function that takes a path, with what it gives on success and on failure, a path on which
// it succeeds and others which it refuses.
void expect_conventions_for_paths() {
  unsigned short mode;
  const struct {
    int success, failure;
    std::function<int(char*)> call;
    const char* path;
    std::vector<const char*> refused = {};
  } rows[] = {
      {0, -1, [](char* p) { return opened(osh_open_binary(p, 0, 0)); }, "plain", {"dir"}},
      {0, -1, [](char* p) { return opened(osh_open_text(p, 2, 0)); }, "plain", {"dir", "locked"}},
      {0, -1, [](char* p) { return opened(osh_open_text(p, 0x101, 0)); }, "new", {"dir", "locked"}},
      {0, -1, [](char* p) { return opened(osh_open_text(p, 0x701, 0)); }, "new", {"plain"}},
      {-1, -1, [](char* p) { return opened(osh_open_text(p, 3, 0)); }, "plain"},
      {-1, -1, [](char* p) { return opened(osh_open_text(p, 0x200, 0)); }, "plain"},
      {1, 0, [](char* p) { return opened(osh_fopen_binary(p, "r+"_c)); }, "plain", {"locked"}},
      {1, 0, [](char* p) { return opened(osh_fopen_text(p, "r"_c)); }, "plain", {"dir"}},
      {1, 0, [](char* p) { return opened(osh_fopen_text(p, "a"_c)); }, "new", {"locked"}},
      {0, 0, [](char* p) { return opened(osh_fopen_binary(p, ""_c)); }, "plain"},
      {0, 0, [](char* p) { return opened(osh_fopen_text(p, nullptr)); }, "plain"},
      {1, 0, osh_file_exists, "plain", {"dangling"}},
      {1, 0, [](char* p) { return osh_file_access(p, 0xFFFF); }, "plain", {"locked"}},
      {1, 0, [](char* p) { return osh_file_access(p, 0xFFFD); }, "locked"},
      {1, 0, [&](char* p) { return osh_inquire_file(p, &mode); }, "plain"},
      {5, -1, osh_filesize, "plain", {"dir"}},
      {0, -1, osh_filesize, "pipe"},  // and it doesn't wait
      {1, 0, [](char* p) { return osh_cat("other"_c, p); }, "plain", {"dir", "other"}},
      {1, 0, [](char* p) { return osh_cat(p, "plain"_c); }, "new", {"locked", "empty", "link"}},
      {1, 0, [](char* p) { return osh_copyfile("other"_c, p); }, "plain", {"dir", "pipe", "other"}},
      {1,
       0,
       [](char* p) { return osh_copyfile(p, "plain"_c); },
       "new",
       {"locked", "empty", "link"}},
      {1, 0, [](char* p) { return osh_copyfile(p, "plain"_c); }, "new", {"pipe", "dangling"}},
      {0, -1, [](char* p) { return osh_rename(p, "new"_c); }, "locked"},
      {0, -1, [](char* p) { return osh_rename("other"_c, p); }, "new", {"plain", "dangling"}},
      {0, -1, [](char* p) { return osh_rename("dir"_c, p); }, "new", {"plain", "empty", "dir/in"}},
      {0, 1, osh_unlink, "link", {"locked", "empty"}},
      {1, 0, [](char* p) { return osh_chmod(p, 0444); }, "plain"},
      {1, 0, osh_mkdir, "new", {"plain", "a/b"}},
      {1, 0, osh_rmdir, "empty", {"dir", "plain"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "row " << &row - rows);
    for (const std::string& path : {std::string(row.path), padded(row.path, 1023)}) {
      World world;
      EXPECT_EQ(row.call(given(path)), row.success) << path.size() << " bytes";
    }
    World world;
    EXPECT_EQ(row.call("nowhere/new"_c) + row.call(""_c) + row.call(nullptr), 3 * row.failure);
    for (const char* path : row.refused) EXPECT_EQ(row.call(given(path)), row.failure) << path;
    for (const std::size_t length : {1024, 5000}) {
      errno = 0;
      EXPECT_EQ(row.call(given(padded(row.path, length))), row.failure) << length << " bytes";
      EXPECT_EQ(errno, ENAMETOOLONG);
    }
    EXPECT_EQ(content("plain") + content("other") + content("locked"), "12345abcsafe");
    EXPECT_EQ(entries("."), 8) << "a failure left something behind";
  }
}

void expect_changes_as_promised() {
  World world;
  const auto kind = [](char* path) {
    unsigned short mode = 0;
    return osh_inquire_file(path, &mode) == 1 ? mode : -1;
  };
  const auto permissions = [](const char* path) { return int(fs::status(path).permissions()); };
  EXPECT_EQ(kind("plain"_c), 0x5FF);
  EXPECT_EQ(osh_chmod("dir"_c, 0555) + kind("dir"_c), 1 + 0x116D);
  EXPECT_EQ(osh_chmod("dir"_c, 0020) + kind("dir"_c), 1 + 0x11FF);
  EXPECT_EQ(osh_chmod("locked"_c, 0002) + permissions("locked"), 1 + 0644) << "the owner's alone";
  fs::permissions("plain", fs::perms{0660});
  EXPECT_EQ(osh_copyfile("link"_c, "locked"_c) + osh_cat("plain"_c, "other"_c), 2);
  EXPECT_EQ(content("plain") + (fs::is_symlink("link") ? " by its link" : ""),
            "safeabc by its link");
  EXPECT_EQ(permissions("plain"), 0660) << "as before";
  const mode_t mask = umask(0);
  for (const short mode : {0, 0x180}) {
    EXPECT_EQ(opened(osh_open_text("created"_c, 0x101, mode)), 0);
    EXPECT_EQ(permissions("created"), mode | 0400);
    EXPECT_EQ(std::remove("created"), 0);
  }
  umask(mask);

  char text[] = "67";
  int fd = osh_open_binary("plain"_c, osh_open_write_only | osh_open_append, 0);
  EXPECT_EQ(osh_lseek(fd, 0, 0) + osh_write(fd, text, 2), 2) << "at the end";
  EXPECT_EQ(osh_write(fd, text, 1u << 31) + osh_read(fd, text, 1) + osh_lseek(fd, 0, 3), -3);
  EXPECT_EQ(osh_close(fd), 0);
  EXPECT_EQ(osh_close(fd) + osh_fdfilesize(fd), -2);
  fd = osh_open_binary("plain"_c, osh_open_read_write, 0);
  EXPECT_FALSE(support::is_inherited(fd));
  EXPECT_EQ(osh_lseek(fd, -2, 2), 7);
  EXPECT_EQ(osh_read(fd, text, 3) + osh_read(fd, text, 3), 2);
  EXPECT_EQ(ftruncate(fd, 0x1'8000'0005) + osh_lseek(fd, 0, 2), 0x1'8000'0005);
  EXPECT_EQ(osh_fdfilesize(fd), INT_MIN + 5);
  EXPECT_EQ(osh_filesize("plain"_c), INT_MIN + 5);
  EXPECT_EQ(osh_close(fd), 0);
  EXPECT_EQ(opened(osh_open_text("plain"_c, 0x201, 0)) + osh_filesize("plain"_c), 0);
}

// Permissions don't bind root, whom the library stops all the same; the others are stopped twice.
TEST(FileAccess, KeepsEveryResultConventionForEveryUser) {
  support::for_every_user([] {
    const int before = support::open_descriptors();
    expect_conventions_for_paths();
    expect_changes_as_promised();
    EXPECT_EQ(support::open_descriptors(), before) << "a descriptor was left open";
  });
}

TEST(FileAccess, SurvivesADiskThatFillsUp) {
  World world;
  if (mount("tmpfs", "empty", "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "no mount allowed";
  put("empty/old", std::string(10'000, 'o'));
  put("plain", std::string(100'000, 'n'));
  EXPECT_EQ(osh_copyfile("empty/old"_c, "plain"_c) + osh_copyfile("empty/new"_c, "plain"_c), 0);
  EXPECT_EQ(osh_rename("plain"_c, "empty/new"_c), -1) << "to another file system";
  EXPECT_EQ(entries("empty"), 1) << "a draft stayed";
  EXPECT_EQ(content("empty/old"), std::string(10'000, 'o'));
  EXPECT_EQ(osh_cat("empty/old"_c, "plain"_c), 0);
  EXPECT_EQ(content("empty/old").rfind('o') + content("plain").size(), 109'999u);
  EXPECT_EQ(umount("empty"), 0);
}

// Every text of up to six of these bytes, read line by line to its end, at every size.
TEST(ReadLine, IsTheModelOnEveryShortText) {
  for (int code = 1; code < 2 << 12; ++code) {
    std::string text;  // two bits a byte, below a leading 1
    for (int rest = code; rest > 3; rest /= 4) text += "ab\r\n"[rest % 4];
    if (code >> 2 * text.size() != 1) continue;
    std::FILE* fp = fmemopen(text.data(), text.size(), "r");
    for (int size = 0; size <= 7; ++size) {
      osh_rewind(fp);
      int got = 1;
      for (std::string_view rest = text; got > 0; rest.remove_prefix(got)) {
        // A line feed ends the line, and a carriage return before a letter does.
        const std::size_t end =
            std::min({rest.find('\n'), rest.find("\ra"), rest.find("\rb"), rest.size()});
        const std::string_view expected = rest.substr(0, std::min<std::size_t>(end + 1, size));
        char line[8] = "#######";
        got = osh_readLine(fp, line, size);
        ASSERT_EQ(std::string(expected).append(7 - expected.size(), '#'), line) << text << size;
        ASSERT_EQ(got, static_cast<int>(expected.size())) << text << size;
      }
    }
    osh_fclose(fp);
  }
}

TEST(Streams, KeepTheirConventions) {
  World world;
  std::FILE* fp = osh_fopen_binary("text"_c, "wx+"_c);  // drops the plus
  char line[8];
  EXPECT_EQ(osh_readLine(fp, line, 8), 0) << "a read error ends the line";
  EXPECT_FALSE(support::is_inherited(osh_fileno(fp)));
  EXPECT_EQ(osh_fputint(7, 0, fp) + osh_fputint(7, 3, fp) + osh_fputint(-7, -4, fp), 1 + 3 + 4);
  EXPECT_EQ(osh_fwrite("xyz!"_c, 2, 2, fp) + osh_ftell(fp), 2 + 12);
  EXPECT_EQ(osh_fseek(fp, 11, SEEK_SET) + osh_fputc('?', fp), '?');
  EXPECT_EQ(osh_fflush(fp) + osh_fflush(fp) + osh_fclose(fp), 0);
  EXPECT_EQ(content("text"), "7  7-7  xyz?");
  fp = osh_fdopen(osh_open_text("/dev/full"_c, 1, 0), "w"_c);
  EXPECT_EQ(osh_fputs("x"_c, fp) + osh_fflush(fp) + osh_fputs("x"_c, fp), 1 - 1 + 1);
  EXPECT_EQ(osh_fclose(fp), short{-1});
}

}  // namespace
