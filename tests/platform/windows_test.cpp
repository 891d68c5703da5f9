#include <zelvan/platform/clock.h>
#include <zelvan/platform/processes.h>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <windows.h>

namespace {

namespace platform = zelvan::platform;

void wait_for(const char* file) {
  for (int i = 0; i < 1000 && !fs::exists(file); ++i) platform::Sleep(10);
}

// The program that is started below.
TEST(Processes, DISABLED_WaitUntilStopped) { put("started"), wait_for("stop"); }

TEST(Processes, HoldNoHandleOfTheirStarter) {
  const support::TemporaryFolder folder;
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  const HANDLE held =
      ::CreateFileA("held", GENERIC_WRITE, 0, &inheritable, CREATE_ALWAYS, 0, nullptr);
  const std::string line =
      '"' + support::own_path() + "\" --gtest_also_run_disabled_tests --gtest_filter=*UntilStopped";
  EXPECT_EQ(platform::CreateProcessA(line.c_str()), 1);
  wait_for("started");
  ::CloseHandle(held);
  EXPECT_TRUE(::DeleteFileA("held")) << "the program holds it, too";
  EXPECT_GT(platform::WinExec("cmd /c echo > stop"), 31);
  wait_for("stop");
  for (const char* missing : {"", "zelvan-none-such", "\"C:/none/such.exe\" x"}) {
    EXPECT_EQ(platform::CreateProcessA(missing), 0) << missing;
  }
  EXPECT_EQ(platform::WinExec("zelvan-none-such"), 2);
}

}  // namespace
