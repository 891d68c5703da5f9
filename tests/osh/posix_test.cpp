#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>

#include <cstdlib>
#include <cwchar>
#include <memory>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <support/guarded_array.h>
#include <unistd.h>

// A character set with two-byte characters from 0x81 on, and with 0xff for no character. The
// linker puts it in the place of the locale's own.
std::size_t decode(wchar_t*, const char*, std::size_t, mbstate_t*) asm("__wrap_mbrtowc");
std::size_t decode(wchar_t*, const char* text, std::size_t count, mbstate_t* state) {
  const auto byte = static_cast<unsigned char>(*text);
  const bool is_usable = std::exchange(state->__count, byte == 0xff) == 0;
  return !is_usable || byte == 0xff ? -1 : byte < 0x81 ? 1 : count < 2 ? -2 : 2;
}

std::uint64_t slept;
void sleep(std::uint64_t) asm("__wrap_" SLEEP);
void sleep(std::uint64_t milliseconds) { slept = milliseconds; }

namespace {

using Text = support::GuardedArray<char>;

std::string absolute(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> text(osh_find_exec_path(given(path)), std::free);
  return text.get();
}

TEST(SystemServices, SleepInSeconds) { EXPECT_EQ((osh_sleep(5'000'000), slept), 5'000'000'000u); }

TEST(Paths, HaveNoSeparatorInsideACharacter) {
  const std::pair<std::string, std::string> rows[] = {{"a\\b\x81\\c", "a|b\x81\\c"},
                                                      {"a\\\xff/\x81", "a\\\xff|\x81"},
                                                      {"a/\xff\x81\\", "a|\xff\x81\\"}};
  for (auto [path, split] : rows) {
    char file[9];
    EXPECT_EQ(osh_truncate_path(path.data(), path.data(), file), 1);
    EXPECT_EQ(path.c_str() + std::string("|") + file, split);
  }
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
  if (geteuid() == 0) {  // the directory lies outside the root
    EXPECT_EXIT(_exit(chroot("/proc") + osh_get_working_dir(text)), testing::ExitedWithCode(0), "");
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
