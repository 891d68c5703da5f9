#include <zelvan/osh/file_access.h>

#include <algorithm>
#include <cerrno>
#include <functional>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// `name` in a longer way, of so many bytes.
std::string padded(const std::string& name, std::size_t length) {
  std::string path = (length - name.size()) % 2 == 0 ? name : "/" + name;
  while (path.size() < length) path = (path[0] == '/' ? "." : "./") + path;
  return path;
}

int opened(int fd) { return fd < 0 ? fd : osh_close(fd); }
int opened(std::FILE* fp) { return fp != nullptr && osh_fclose(fp) == 0; }

// Each function that takes a path, with what it gives on success and on failure.
void expect_conventions_for_paths() {
  unsigned short mode;
  const struct {
    const char* path;  // on which it succeeds
    int success, failure;
    std::function<int(char*)> call;
  } rows[] = {
      {"plain", 0, -1, [](char* p) { return opened(osh_open_binary(p, 0, 0)); }},
      {"plain", 0, -1, [](char* p) { return opened(osh_open_text(p, 2, 0)); }},
      {"new", 0, -1, [](char* p) { return opened(osh_open_text(p, 0x101, 0x180)); }},
      {"plain", 1, 0, [](char* p) { return opened(osh_fopen_binary(p, "r+"_c)); }},
      {"new", 1, 0, [](char* p) { return opened(osh_fopen_text(p, "w"_c)); }},
      {"plain", 1, 0, osh_file_exists},
      {"plain", 1, 0, [](char* p) { return osh_file_access(p, 2); }},
      {"plain", 1, 0, [&](char* p) { return osh_inquire_file(p, &mode); }},
      {"plain", 5, -1, osh_filesize},
      {"plain", 1, 0, [](char* p) { return osh_cat("other"_c, p); }},
      {"new", 1, 0, [](char* p) { return osh_cat(p, "other"_c); }},
      {"plain", 1, 0, [](char* p) { return osh_copyfile("other"_c, p); }},
      {"new", 1, 0, [](char* p) { return osh_copyfile(p, "other"_c); }},
      {"plain", 0, -1, [](char* p) { return osh_rename(p, "new"_c); }},
      {"new", 0, -1, [](char* p) { return osh_rename("other"_c, p); }},
      {"plain", 0, 1, osh_unlink},
      {"plain", 1, 0, [](char* p) { return osh_chmod(p, 0444); }},
      {"new", 1, 0, osh_mkdir},
      {"empty", 1, 0, osh_rmdir},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "row " << &row - rows);
    for (const std::string& path : {std::string(row.path), padded(row.path, 1023)}) {
      World world;
      EXPECT_EQ(row.call(std::string(path).data()), row.success) << path.size() << " bytes";
    }
    World world;
    for (char* path : {"nowhere/new"_c, ""_c, static_cast<char*>(nullptr)}) {
      EXPECT_EQ(row.call(path), row.failure);
    }
    for (const std::size_t length : {1024, 5000}) {
      errno = 0;
      EXPECT_EQ(row.call(padded(row.path, length).data()), row.failure) << length << " bytes";
      EXPECT_EQ(errno, ENAMETOOLONG);
    }
    EXPECT_EQ(content("plain") + content("other"), "12345abc") << "a failure changed a file";
  }
}

int permissions(const char* path) { return static_cast<int>(fs::status(path).permissions()); }

int kind(char* path) {
  unsigned short mode = 0;
  return osh_inquire_file(path, &mode) == 1 ? mode : -1;
}

void expect_refusals_that_change_nothing() {
  World world;
  for (const short flags : {0x0, 0x1, 0x2, 0x101}) EXPECT_EQ(osh_open_text("dir"_c, flags, 0), -1);
  for (const short flags : {0x3, 0x200, 0x701}) EXPECT_EQ(osh_open_text("plain"_c, flags, 0), -1);
  for (const short flags : {0x1, 0x2, 0x201}) EXPECT_EQ(osh_open_text("locked"_c, flags, 0), -1);
  for (char* mode : {"r+"_c, "a"_c, "w"_c}) EXPECT_FALSE(osh_fopen_binary("locked"_c, mode));
  for (char* mode : {""_c, static_cast<char*>(nullptr)}) {
    EXPECT_FALSE(osh_fopen_binary("plain"_c, mode));
  }
  EXPECT_FALSE(osh_fopen_text("dir"_c, "r"_c));
  EXPECT_EQ(osh_filesize("dir"_c), -1);
  EXPECT_EQ(osh_filesize("pipe"_c), 0) << "and doesn't wait";
  EXPECT_EQ(osh_file_access("locked"_c, 0xFFFF), 0);
  EXPECT_EQ(osh_unlink("locked"_c) + osh_unlink("empty"_c), 2);
  EXPECT_EQ(osh_rmdir("dir"_c) + osh_mkdir("a/b"_c), 0);
  for (char* to : {"locked"_c, "empty"_c, "link"_c}) EXPECT_EQ(osh_cat(to, "plain"_c), 0) << to;
  for (char* to : {"locked"_c, "empty"_c, "link"_c, "pipe"_c, "dangling"_c}) {
    EXPECT_EQ(osh_copyfile(to, "plain"_c), 0) << to;
  }
  for (char* from : {"dir"_c, "pipe"_c}) EXPECT_EQ(osh_copyfile("other"_c, from), 0) << from;
  for (char* to : {"plain"_c, "dangling"_c, "empty"_c}) {
    EXPECT_EQ(osh_rename("other"_c, to) + osh_rename("dir"_c, to), -2) << to;
  }
  EXPECT_EQ(content("plain") + content("other") + content("locked"), "12345abcsafe");
  EXPECT_EQ(entries("."), 8);
}

void expect_changes_as_promised() {
  World world;
  EXPECT_EQ(kind("plain"_c), 0x5FF);
  EXPECT_EQ(kind("locked"_c), 0x56D);
  EXPECT_EQ(osh_chmod("dir"_c, 0555) + kind("dir"_c), 1 + 0x116D);
  EXPECT_EQ(osh_chmod("dir"_c, 0020) + kind("dir"_c), 1 + 0x11FF);
  EXPECT_EQ(osh_file_access("locked"_c, 0xFFFD), 1);
  EXPECT_EQ(osh_rename("locked"_c, "moved"_c) + osh_chmod("moved"_c, 0002), 1);
  EXPECT_EQ(permissions("moved"), 0644) << "the owner's alone came back";
  fs::permissions("plain", fs::perms{0660});
  EXPECT_EQ(osh_copyfile("link"_c, "moved"_c), 1);
  EXPECT_TRUE(fs::is_symlink("link"));
  EXPECT_EQ(osh_unlink("link"_c), 0);
  EXPECT_EQ(osh_cat("plain"_c, "other"_c), 1);
  EXPECT_EQ(content("plain"), "safeabc");
  EXPECT_EQ(permissions("plain"), 0660) << "as before";
  EXPECT_EQ(osh_rename("dir"_c, "new"_c), 0);
  EXPECT_EQ(entries("."), 7) << "something was left behind";
  const mode_t mask = umask(0);
  for (const short mode : {0, 0x180}) {
    EXPECT_EQ(opened(osh_open_text("created"_c, 0x101, mode)), 0);
    EXPECT_EQ(permissions("created"), mode | 0400);
    EXPECT_EQ(std::remove("created"), 0);
  }
  umask(mask);

  char text[] = "67";
  int fd = osh_open_binary("plain"_c, osh_open_write_only | osh_open_append, 0);
  EXPECT_EQ(osh_lseek(fd, 0, 0), 0);
  EXPECT_EQ(osh_write(fd, text, 2), 2) << "at the end";
  EXPECT_EQ(osh_write(fd, text, 1u << 31) + osh_read(fd, text, 1), -2);
  EXPECT_EQ(osh_close(fd), 0);
  EXPECT_EQ(osh_close(fd) + osh_fdfilesize(fd), -2);
  fd = osh_open_binary("plain"_c, osh_open_read_write, 0);
  EXPECT_EQ(fcntl(fd, F_GETFD), FD_CLOEXEC);
  EXPECT_EQ(osh_lseek(fd, 0, 3), -1);
  EXPECT_EQ(osh_lseek(fd, -2, 2), 7);
  EXPECT_EQ(osh_read(fd, text, 3) + osh_read(fd, text, 3), 2);
  for (const long size : {0x7FFF'FFFFL, 0x8000'0005L, 0x1'0000'0005L}) {
    EXPECT_EQ(ftruncate(fd, size) + osh_lseek(fd, 0, 2), size);
    EXPECT_EQ(osh_fdfilesize(fd), static_cast<int>(size));
    EXPECT_EQ(osh_filesize("plain"_c), static_cast<int>(size));
  }
  EXPECT_EQ(osh_close(fd), 0);
  EXPECT_EQ(opened(osh_open_text("plain"_c, 0x201, 0)) + osh_filesize("plain"_c), 0);
}

void expect_everything() {
  const std::ptrdiff_t before = entries("/proc/self/fd");
  expect_conventions_for_paths();
  expect_refusals_that_change_nothing();
  expect_changes_as_promised();
  EXPECT_EQ(entries("/proc/self/fd"), before) << "a descriptor was left open";
}

// Permissions don't bind root, whom the library stops all the same; the others are stopped twice.
TEST(FileAccess, KeepsEveryResultConventionForEveryUser) {
  expect_everything();
  if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    EXPECT_EQ(setgid(nobody) + setuid(nobody), 0);
    expect_everything();
    std::fflush(nullptr);
    _exit(HasFailure());
  }
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << "failed for the other user";
}

TEST(FileAccess, SurvivesADiskThatFillsUp) {
  World world;
  if (mount("tmpfs", "empty", "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "no mount allowed";
  put("empty/old", std::string(10'000, 'o'));
  put("plain", std::string(100'000, 'n'));
  for (char* to : {"empty/old"_c, "empty/new"_c}) EXPECT_EQ(osh_copyfile(to, "plain"_c), 0);
  EXPECT_EQ(osh_rename("plain"_c, "empty/new"_c), -1) << "to another file system";
  EXPECT_EQ(entries("empty"), 1) << "a draft stayed";
  EXPECT_EQ(content("empty/old"), std::string(10'000, 'o'));
  EXPECT_EQ(osh_cat("empty/old"_c, "plain"_c), 0);
  EXPECT_EQ(content("empty/old").rfind('o') + content("plain").size(), 109'999u);
  EXPECT_EQ(umount("empty"), 0);
}

/// The length of the first line of a text, of `size` bytes at most.
std::size_t line_length(std::string_view text, std::size_t size) {
  for (std::size_t i = 0; i < std::min(text.size(), size); ++i) {
    const std::string_view next = text.substr(i + 1, 1);
    if (text[i] == '\n' || (text[i] == '\r' && (next == "a" || next == "b"))) return i + 1;
  }
  return std::min(text.size(), size);
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
        const std::size_t length = line_length(rest, size);
        char line[8] = "#######";
        got = osh_readLine(fp, line, size);
        ASSERT_EQ(std::string(rest.substr(0, length)).append(7 - length, '#'), line) << size;
        ASSERT_EQ(static_cast<std::size_t>(got), length) << text << size;
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
  EXPECT_EQ(fcntl(osh_fileno(fp), F_GETFD), FD_CLOEXEC);
  EXPECT_EQ(osh_fputint(7, 0, fp) + osh_fputint(7, 3, fp) + osh_fputint(-7, -4, fp), 1 + 3 + 4);
  EXPECT_EQ(osh_fwrite("xyz!"_c, 2, 2, fp) + osh_ftell(fp), 2 + 12);
  EXPECT_EQ(osh_fseek(fp, 11, SEEK_SET) + osh_fputc('?', fp), '?');
  EXPECT_EQ(osh_fflush(fp) + osh_fflush(fp) + osh_fclose(fp), 0);
  fp = osh_fdopen(osh_open_text("text"_c, 0, 0), "r"_c);
  EXPECT_STREQ(osh_fgets(line, 7, fp), "7  7-7");
  EXPECT_EQ(osh_fread(line, 5, 3, fp), 1u);
  EXPECT_EQ(std::string(line, 6) + std::to_string(osh_feof(fp) != 0), "  xyz?1");
  EXPECT_EQ(osh_fclose(fp), 0);
  fp = osh_fopen_text("/dev/full"_c, "w"_c);
  EXPECT_EQ(osh_fputs("x"_c, fp) + osh_fflush(fp) + osh_fputs("x"_c, fp), 1 - 1 + 1);
  EXPECT_TRUE(osh_fclose(fp) == -1);
}

}  // namespace
