#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>
#include <zelvan/tra/foreign_floats.h>

#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

// Words go to one stream; the other is closed. A status of 9 says that the call returned.
TEST(ImpossibleRequestDeathTest, IsReportedOnItsStream) {
  const auto expect = [](int stream, int status, std::string text, auto request) {
    EXPECT_EXIT((dup2(2, stream), close(3 - stream), request(), exit(9)),
                testing::ExitedWithCode(status), "^" + text + "\n$");
  };
  const std::string type = "tra_swap_bytes: invalid primitive type ";
  const std::string code = "tra_convert_charset: invalid conversion ";
  const std::string conversion =
      "ZVN MSG\\(.*tra_prm0.cpp,.+\\): tra_convert_flpt: unimplemented conversion";
  expect(1, 1, type + "0x41", [] { tra_swap_bytes(0x41, 0, nullptr, nullptr); });
  expect(1, 1, type + "00", [] { tra_swap_bytes(0, 1, nullptr, nullptr); });
  expect(1, 1, code + "ffffffff", [] { tra_convert_charset(-1, 0, nullptr, nullptr); });
  expect(1, 1, code + "3", [] { tra_convert_charset(3, 0, nullptr, nullptr); });
  expect(2, 9, conversion, [] { tra_convert_flpt(8, 0xB8, 0, nullptr, nullptr); });
  expect(2, 9, conversion, [] { tra_convert_flpt(4, 0x84, 1, nullptr, nullptr); });
}

}  // namespace
