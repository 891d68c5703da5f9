// What only POSIX has: names of any length, other users.
#include <zelvan/osh/file_access.h>
#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>

#include <cstdlib>
#include <memory>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/guarded_array.h>
#include <unistd.h>

namespace {

using Text = support::GuardedArray<char>;

std::string absolute(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> text(osh_find_exec_path(given(path)), std::free);
  return text.get();
}

TEST(Paths, HaveOneFormEachAndAreNeverCut) {
  World world;
  std::vector<std::tuple<std::string, std::string, int>> rows = {
      {"plain", "/plain", 0},      {"dangling", "/dangling", -1},
      {".//./plain", "/plain", 0}, {"plain/../x", "/plain/../x", -1},
      {"\\plain", "/\\plain", -1}, {"...", "/...", -1}};
  for (const std::size_t length : {1023, 1024, 5000}) {
    rows.emplace_back(padded("plain", length), "/plain", length < 1024 ? 0 : -1);
    rows.emplace_back(std::string(length, 'x'), '/' + std::string(length, 'x'), -1);
  }
  for (const auto& [path, form, alternate] : rows) {
    Text out(1024);
    EXPECT_EQ(osh_alternate_pathname(given(path), out.data()), alternate);
    EXPECT_EQ(out.data(), path.size() < 1024 ? path : "");
    EXPECT_EQ(absolute(path), world.path + form);
  }
  fs::current_path("/");
  EXPECT_EQ(absolute("") + absolute("/") + absolute("//.//a/") + absolute("./b"), "//a/b");
}

TEST(Paths, EndWhereTheCurrentDirectoryDoes) {
  World world;
  char text[1024];
  if (geteuid() == 0) {  // who can be another user, and have another root
    fs::permissions("dir", fs::perms::owner_all);
    fs::permissions(".", fs::perms::all);
    fs::permissions("empty", fs::perms{0333});
    const testing::ExitedWithCode is_right(0);
    EXPECT_EXIT(
        _exit(seteuid(65534) + osh_file_exists("dir/inner"_c) + !osh_chmod("plain"_c, 0222) +
              osh_copyfile("plain"_c, "other"_c) + !osh_copyfile("empty/new"_c, "plain"_c)),
        is_right, "");
    EXPECT_EXIT(_exit(chroot(".") + !osh_copyfile("/new"_c, "/plain"_c)), is_right, "");
    EXPECT_EXIT(
        _exit(chroot("/proc") + osh_get_working_dir(text) + (osh_GetFontFileList() != nullptr)),
        is_right, "");
  }
  for (const std::size_t length : {1023, 1024}) {
    std::string path = world.path;
    while (path.size() < 800) path += '/' + std::string(200, 'd');
    path += '/' + std::string(length - path.size() - 1, 'd');
    fs::create_directories(path);
    fs::current_path(path);
    Text directory(std::string(1024, 'u'));
    EXPECT_EQ(osh_get_working_dir(directory.data()), length < 1024);
    EXPECT_EQ(std::string(directory.data(), 1023), length < 1024 ? path : std::string(1023, 'u'));
    EXPECT_EQ(absolute("x"), path + "/x");
    fs::remove(path);
    EXPECT_EQ(absolute("x") + absolute("/x") + char('0' + osh_get_working_dir(text)), "/x0");
  }
}

}  // namespace
