#include <zelvan/osh/file_access.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// The interface takes paths and modes that it doesn't change.
char* given(const char* text) { return const_cast<char*>(text); }
char* given(const std::string& text) { return const_cast<char*>(text.c_str()); }

std::string content(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void put(const std::string& path, std::string_view text) {
  std::ofstream(path, std::ios::binary) << text;
}

/// A directory of files of many kinds, anew for each case, which is the current one meanwhile.
class World {
 public:
  World() {
    char name[] = "/tmp/zelvan-osh-XXXXXX";
    path_ = mkdtemp(name);
    fs::current_path(path_);
    put("plain", "12345");
    put("other", "abc");
    put("locked", "safe");
    fs::permissions("locked", fs::perms{0444});
    fs::create_directories("dir/inner");
    fs::create_directory("empty");
    fs::create_symlink("plain", "link");
    fs::create_symlink("nowhere", "dangling");
    mkfifo("pipe", 0600);
  }
  ~World() {
    fs::current_path("/");
    fs::remove_all(path_);
  }

 private:
  std::string path_;
};

/// `name` in a longer way, of so many bytes.
std::string padded(const char* name, std::size_t length) {
  std::string path = name;
  if ((length - path.size()) % 2 != 0) path = "/" + path;
  while (path.size() < length) path = (path[0] == '/' ? "." : "./") + path;
  return path;
}

int opened(int fd) { return fd < 0 ? fd : osh_close(fd); }
int opened(std::FILE* fp) { return fp != nullptr && osh_fclose(fp) == 0; }

// Each function that takes a path, with what it gives on success and on failure.
void expect_conventions_for_paths() {
  unsigned short mode;
  const struct {
    const char* what;
    const char* path;  // on which it succeeds
    int success;
    int failure;
    std::function<int(char*)> call;
  } rows[] = {
      {"open_binary", "plain", 0, -1, [](char* p) { return opened(osh_open_binary(p, 0, 0)); }},
      {"open_text", "plain", 0, -1, [](char* p) { return opened(osh_open_text(p, 2, 0)); }},
      {"create", "new", 0, -1, [](char* p) { return opened(osh_open_text(p, 0x101, 0x180)); }},
      {"fopen_binary", "plain", 1, 0,
       [](char* p) { return opened(osh_fopen_binary(p, given("r+"))); }},
      {"fopen_text", "new", 1, 0, [](char* p) { return opened(osh_fopen_text(p, given("w"))); }},
      {"exists", "plain", 1, 0, osh_file_exists},
      {"access", "plain", 1, 0, [](char* p) { return osh_file_access(p, 2); }},
      {"inquire", "plain", 1, 0, [&](char* p) { return osh_inquire_file(p, &mode); }},
      {"filesize", "plain", 5, -1, osh_filesize},
      {"cat from", "plain", 1, 0, [](char* p) { return osh_cat(given("other"), p); }},
      {"cat to", "new", 1, 0, [](char* p) { return osh_cat(p, given("other")); }},
      {"copy from", "plain", 1, 0, [](char* p) { return osh_copyfile(given("other"), p); }},
      {"copy to", "new", 1, 0, [](char* p) { return osh_copyfile(p, given("other")); }},
      {"rename from", "plain", 0, -1, [](char* p) { return osh_rename(p, given("new")); }},
      {"rename to", "new", 0, -1, [](char* p) { return osh_rename(given("other"), p); }},
      {"unlink", "plain", 0, 1, osh_unlink},
      {"chmod", "plain", 1, 0, [](char* p) { return osh_chmod(p, 0444); }},
      {"mkdir", "new", 1, 0, osh_mkdir},
      {"rmdir", "empty", 1, 0, osh_rmdir},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    for (const std::string& path : {std::string(row.path), padded(row.path, 1023)}) {
      World world;
      EXPECT_EQ(row.call(given(path)), row.success) << path.size() << " bytes";
    }
    World world;
    EXPECT_EQ(row.call(given("nowhere/new")), row.failure);
    EXPECT_EQ(row.call(nullptr), row.failure);
    EXPECT_EQ(row.call(given("")), row.failure);
    for (const std::size_t length : {1024, 5000}) {
      errno = 0;
      EXPECT_EQ(row.call(given(padded(row.path, length))), row.failure) << length << " bytes";
      EXPECT_EQ(errno, ENAMETOOLONG);
    }
    EXPECT_EQ(content("plain") + content("other"), "12345abc") << "a failure changed a file";
  }
}

int kind(const char* path) {
  unsigned short mode = 0;
  return osh_inquire_file(given(path), &mode) == 1 ? mode : -1;
}

/// The permissions of a new file; the process masks none out.
int created_with(short mode) {
  const mode_t before = umask(0);
  opened(osh_open_binary(given("new"), osh_open_write_only | osh_open_create, mode));
  umask(before);
  struct stat status;
  return stat("new", &status) == 0 ? status.st_mode & 0777 : -1;
}

long with_descriptor(short flags, const std::function<long(int)>& use) {
  const int fd = osh_open_binary(given("plain"), flags, 0);
  const long result = use(fd);
  osh_close(fd);
  return result;
}

// Each row has a world of its own and names the file whose content it looks at afterwards.
void expect_what_is_refused_and_what_is_kept() {
  const auto copy = [](const char* to, const char* from) {
    return osh_copyfile(given(to), given(from));
  };
  const struct {
    const char* what;
    std::function<long()> call;
    long result;
    const char* file = "plain";
    const char* holds = "12345";
  } rows[] = {
      {"directory, descriptor", [] { return osh_open_binary(given("dir"), 0, 0); }, -1},
      {"directory, stream", [] { return opened(osh_fopen_text(given("dir"), given("r"))); }, 0},
      {"directory, size", [] { return osh_filesize(given("dir")); }, -1},
      {"directory, unlink", [] { return osh_unlink(given("empty")); }, 1},
      {"directory, copy", [=] { return copy("new", "dir"); }, 0},
      {"directory, copied over", [=] { return copy("empty", "plain"); }, 0},
      {"pipe, size", [] { return osh_filesize(given("pipe")); }, 0},
      {"pipe, copy", [=] { return copy("plain", "pipe"); }, 0},
      {"pipe, copied over", [=] { return copy("pipe", "plain"); }, 0},
      {"full directory", [] { return osh_rmdir(given("dir")); }, 0},
      {"two levels", [] { return osh_mkdir(given("a/b")); }, 0},
      {"read-only, write", [] { return osh_open_text(given("locked"), 0x201, 0); }, -1, "locked",
       "safe"},
      {"read-only, r+", [] { return opened(osh_fopen_binary(given("locked"), given("r+"))); }, 0},
      {"read-only, a", [] { return opened(osh_fopen_text(given("locked"), given("a"))); }, 0},
      {"read-only, read", [] { return opened(osh_open_text(given("locked"), 0, 0)); }, 0},
      {"read-only, access 2", [] { return osh_file_access(given("locked"), 0xFFFF); }, 0},
      {"read-only, access 1", [] { return osh_file_access(given("locked"), 0xFFFD); }, 1},
      {"read-only, cat", [] { return osh_cat(given("locked"), given("plain")); }, 0, "locked",
       "safe"},
      {"read-only, copy", [=] { return copy("locked", "plain"); }, 0, "locked", "safe"},
      {"read-only, unlink", [] { return osh_unlink(given("locked")); }, 1, "locked", "safe"},
      {"read-only, rename", [] { return osh_rename(given("locked"), given("new")); }, 0, "new",
       "safe"},
      {"kind of a file", [] { return kind("plain"); }, 0x5FF},
      {"kind of a locked file", [] { return kind("locked"); }, 0x56D},
      {"kind of a directory", [] { return kind("dir"); }, 0x11FF},
      {"kind of a locked directory",
       [] { return osh_chmod(given("dir"), 0444) + kind("dir") + osh_chmod(given("dir"), 0200); },
       0x116D + 2},
      {"kind of nothing", [] { return kind("dangling"); }, -1},
      {"chmod, group's bit", [] { return osh_chmod(given("locked"), 0020) * kind("locked"); },
       0x5FF},
      {"rename over a file", [] { return osh_rename(given("other"), given("plain")); }, -1},
      {"rename over a link", [] { return osh_rename(given("other"), given("dangling")); }, -1},
      {"rename over a directory", [] { return osh_rename(given("dir"), given("empty")); }, -1},
      {"rename of a directory", [] { return osh_rename(given("dir"), given("new")); }, 0},
      {"copy over", [=] { return copy("plain", "other"); }, 1, "plain", "abc"},
      {"copy over a link", [=] { return copy("link", "other") + fs::is_symlink("link"); }, 2,
       "plain", "abc"},
      {"copy over a link to nowhere", [=] { return copy("dangling", "other"); }, 0},
      {"copy onto itself", [=] { return copy("link", "plain"); }, 0},
      {"unlink of a link", [] { return osh_unlink(given("link")); }, 0},
      {"cat", [] { return osh_cat(given("plain"), given("other")); }, 1, "plain", "12345abc"},
      {"cat onto itself", [] { return osh_cat(given("plain"), given("link")); }, 0},
      {"open to read and write at once", [] { return osh_open_text(given("plain"), 3, 0); }, -1},
      {"truncate, reading", [] { return osh_open_text(given("plain"), 0x200, 0); }, -1},
      {"truncate", [] { return opened(osh_open_text(given("plain"), 0x201, 0)); }, 0, "plain", ""},
      {"exclusive", [] { return osh_open_text(given("plain"), 0x501, 0); }, -1},
      {"permissions given", [] { return created_with(0x180); }, 0600},
      {"no permissions given", [] { return created_with(0); }, 0400},
      {"empty mode", [] { return opened(osh_fopen_binary(given("plain"), given(""))); }, 0},
      {"null mode", [] { return opened(osh_fopen_text(given("plain"), nullptr)); }, 0},
      {"mode r+b", [] { return opened(osh_fopen_binary(given("plain"), given("r+b"))); }, 1},
      {"mode w", [] { return opened(osh_fopen_binary(given("plain"), given("w"))); }, 1, "plain",
       ""},
      {"append",
       [] {
         return with_descriptor(osh_open_write_only | osh_open_append, [](int fd) {
           osh_lseek(fd, 0, 0);
           return osh_write(fd, given("67"), 2);
         });
       },
       2, "plain", "1234567"},
      {"write too much",
       [] { return with_descriptor(1, [](int fd) { return osh_write(fd, nullptr, 1u << 31); }); },
       -1},
      {"write, reading",
       [] { return with_descriptor(0, [](int fd) { return osh_write(fd, given("6"), 1); }); }, -1},
      {"read, writing",
       [] {
         char byte;
         return with_descriptor(1, [&](int fd) { return osh_read(fd, &byte, 1); });
       },
       -1},
      {"seek to the end",
       [] { return with_descriptor(0, [](int fd) { return osh_lseek(fd, 0, 2); }); }, 5},
      {"seek elsewhere",
       [] { return with_descriptor(0, [](int fd) { return osh_lseek(fd, 0, 4); }); }, -1},
      {"size", [] { return with_descriptor(0, osh_fdfilesize); }, 5},
      {"size of nothing", [] { return osh_fdfilesize(-1); }, -1},
      {"close of nothing", [] { return osh_close(-1); }, -1},
      {"closed in programs",
       [] { return with_descriptor(0, [](int fd) { return fcntl(fd, F_GETFD); }); }, FD_CLOEXEC},
      {"stream closed in programs",
       [] {
         std::FILE* fp = osh_fopen_binary(given("plain"), given("r+"));
         const int flags = fcntl(osh_fileno(fp), F_GETFD);
         osh_fclose(fp);
         return flags;
       },
       FD_CLOEXEC},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    World world;
    EXPECT_EQ(row.call(), row.result);
    EXPECT_EQ(content(row.file), row.holds);
    if (std::string_view(row.what).starts_with("copy over")) {
      EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 8) << "a copy left its draft";
    }
  }
}

std::ptrdiff_t open_descriptors() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

void expect_everything() {
  const std::ptrdiff_t before = open_descriptors();
  expect_conventions_for_paths();
  expect_what_is_refused_and_what_is_kept();
  EXPECT_EQ(open_descriptors(), before) << "a descriptor was left open";
}

/// Runs a part of a test in a process of its own, which may change what it likes.
void in_child(const std::function<void()>& part) {
  const pid_t child = fork();
  if (child == 0) {
    part();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure());
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << "failed in the child";
}

TEST(FileAccess, KeepsEveryResultConvention) { expect_everything(); }

// Permissions don't bind root, whom the library stops all the same; this is the other case.
TEST(FileAccess, KeepsEveryResultConventionForAnotherUser) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  in_child([] {
    constexpr uid_t nobody = 65534;
    ASSERT_EQ(setgid(nobody) + setuid(nobody), 0);
    expect_everything();
  });
}

TEST(FileAccess, RefusesDescriptorsThatDoNotFitShort) {
  in_child([] {
    World world;
    const rlimit many{SHRT_MAX + 16, SHRT_MAX + 16};
    if (setrlimit(RLIMIT_NOFILE, &many) != 0) GTEST_SKIP() << "so many aren't allowed";
    while (dup(0) < SHRT_MAX - 1) {
    }
    EXPECT_EQ(osh_open_binary(given("plain"), 0, 0), SHRT_MAX);
    EXPECT_EQ(osh_open_binary(given("plain"), 0, 0), -1);
    EXPECT_EQ(dup(0), SHRT_MAX + 1) << "it was refused but left open";
  });
}

TEST(FileAccess, TellsTheLow32BitsOfLongSizes) {
  World world;
  const int fd = osh_open_binary(given("plain"), osh_open_read_write, 0);
  for (const long size : {0x7FFF'FFFFL, 0x8000'0005L, 0x1'0000'0005L}) {
    ASSERT_EQ(ftruncate(fd, size), 0);
    EXPECT_EQ(osh_fdfilesize(fd), static_cast<int>(size));
    EXPECT_EQ(osh_filesize(given("plain")), static_cast<int>(size));
    EXPECT_EQ(osh_lseek(fd, 0, 2), size);
  }
  osh_close(fd);
}

TEST(FileAccess, SurvivesADiskThatFillsUp) {
  World world;
  if (mount("tmpfs", "empty", "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "no mount allowed";
  const std::string old(10'000, 'o');
  put("empty/old", old);
  put("plain", std::string(100'000, 'n'));
  for (const char* target : {"empty/old", "empty/new"}) {
    EXPECT_EQ(osh_copyfile(given(target), given("plain")), 0);
  }
  EXPECT_EQ(osh_rename(given("plain"), given("empty/new")), -1) << "to another file system";
  EXPECT_EQ(std::distance(fs::directory_iterator("empty"), {}), 1) << "a draft stayed";
  EXPECT_EQ(content("empty/old"), old);
  EXPECT_EQ(osh_cat(given("empty/old"), given("plain")), 0);
  EXPECT_EQ(content("empty/old").substr(0, old.size()), old);
  EXPECT_EQ(content("plain"), std::string(100'000, 'n'));
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
      std::string_view rest = text;
      std::size_t expected;
      do {
        expected = line_length(rest, size);
        char line[8] = "#######";
        ASSERT_EQ(osh_readLine(fp, line, size), static_cast<int>(expected)) << code << ' ' << size;
        ASSERT_EQ(line, std::string(rest.substr(0, expected)) + std::string(7 - expected, '#'));
        rest.remove_prefix(expected);
      } while (expected > 0);
    }
    osh_fclose(fp);
  }
}

TEST(Streams, KeepTheirConventions) {
  World world;
  std::FILE* fp = osh_fopen_binary(given("text"), given("w"));
  char line[8];
  EXPECT_EQ(osh_readLine(fp, line, 8), 0) << "a read error ends the line";
  EXPECT_EQ(osh_fflush(fp), 0) << "nothing to do";
  EXPECT_EQ(osh_fputint(7, 0, fp) + osh_fputint(7, 3, fp) + osh_fputint(-7, -4, fp), 1 + 3 + 4);
  EXPECT_EQ(osh_fwrite(given("xyz!"), 2, 2, fp), 2u);
  EXPECT_EQ(osh_ftell(fp), 12);
  EXPECT_NE(osh_fseek(fp, 0, 9), 0);
  EXPECT_EQ(osh_fseek(fp, 11, SEEK_SET), 0);
  EXPECT_EQ(osh_fputc('?', fp), '?');
  EXPECT_EQ(osh_fclose(fp), 0);
  EXPECT_EQ(content("text"), "7  7-7  xyz?");

  fp = osh_fdopen(osh_open_text(given("text"), 0, 0), given("r"));
  EXPECT_EQ(osh_fgets(line, 3, fp), line);
  EXPECT_STREQ(line, "7 ");
  EXPECT_EQ(osh_fread(line, 5, 3, fp), 2u);
  EXPECT_NE(osh_feof(fp), 0);
  EXPECT_EQ(osh_fclose(fp), 0);

  fp = osh_fopen_text(given("/dev/full"), given("w"));
  osh_fputc('x', fp);
  EXPECT_EQ(osh_fflush(fp), -1);
  osh_fputc('x', fp);
  EXPECT_EQ(osh_fclose(fp), -1);
  const int fd = osh_open_text(given("/dev/full"), osh_open_write_only, 0);
  EXPECT_EQ(osh_write(fd, line, 1), -1);
  EXPECT_EQ(osh_close(fd), 0);
}

}  // namespace
