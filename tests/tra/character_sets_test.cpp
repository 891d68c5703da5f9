#include <zelvan/tra/character_sets.h>

#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

static int converted(short code, int character) {
  auto byte = static_cast<unsigned char>(character);
  tra_convert_charset(code, 1, &byte, &byte);
  return byte;
}

/// Indexed by EBCDIC. A point means that there is no character, except at 0x4B.
const char ascii_of_ebcdic[] =
    ".\x01\x02\x03.\t.\x7F...\x0B\x0C\r\x0E\x0F"
    "\x10\x11\x12...\b.\x18\x19...\x1D\x1E\x1F"
    "..\x1C..\n\x17\x1B.....\x05\x06\x07"
    "..\x16..\x1E.\x04....\x14\x15.\x1A"
    " ...........<(+|"
    "&.........!$*);^"
    "-/........|,%_>?"
    ".........`:#@'=\""
    ".abcdefghi.{.(++"
    ".jklmnopqr.}.).."
    "-~stuvwxyz...[.."
    "0123456789...].-"
    "{ABCDEFGHI......"
    "}JKLMNOPQR......"
    "\\.STUVWXYZ......"
    "0123456789|.....";

TEST(ConvertCharset, TurnsEbcdicIntoAsciiAndTheRestIntoNul) {
  for (int code = 0; code < 256; ++code) {
    const bool has_meaning = ascii_of_ebcdic[code] != '.' || code == 0x4B;
    EXPECT_EQ(converted(TRA_EBCDIC_TO_ASCII, code), has_meaning ? ascii_of_ebcdic[code] : 0)
        << "code " << code;
  }
}

TEST(ConvertCharset, BringsAllCharactersBackButTwo) {
  for (int c = 0; c < 256; ++c) {
    const int ascii = c & 0x7F;  // bit 7 is ignored
    const int expected = ascii == 0x13 ? 0 : ascii == '_' ? '-' : ascii;
    const int ebcdic = converted(TRA_ASCII_TO_EBCDIC, c);
    EXPECT_EQ(converted(TRA_EBCDIC_TO_ASCII, ebcdic), expected) << "character " << c;
  }
}

TEST(ConvertCharset, ChoosesOneOfSeveralCodesOfACharacter) {
  const std::string characters = "09|-_+(){}\x13\x1E";
  std::string ebcdic = characters;
  tra_convert_charset(TRA_ASCII_TO_EBCDIC, 12, characters.data(), ebcdic.data());
  EXPECT_EQ(ebcdic, std::string("\xF0\xF9\x4F\x60\xBF\x4E\x4D\x5D\x8B\xD0\x00\x35", 12));
}

// A death test captures descriptor 2 alone. So the child redirects its standard output there, and
// then has no descriptor 2 of its own.
TEST(ConvertCharsetDeathTest, EndsTheProcessOnAnUnknownConversion) {
  const auto convert_nothing = [] {
    dup2(2, 1);
    close(2);
    tra_convert_charset(-1, 0, nullptr, nullptr);
  };
  EXPECT_EXIT(convert_nothing(), testing::ExitedWithCode(1),
              "^tra_convert_charset: invalid conversion ffffffff\n$");
}
