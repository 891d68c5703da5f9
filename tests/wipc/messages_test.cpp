#include "wipc/scripted_peer.h"

using namespace std::string_literals;

static std::string letters(int count) { return std::string(count, 'a'); }

TEST(Write, SendsADataMessageAsItIsAndAStatusWithItsTerminator) {
  const std::pair<std::string, std::string> rows[] = {
      {"text", "text"},
      {"", ""},
      {letters(4000), letters(4000)},
      {letters(4001), "Error Maximum message length exceeded"},
  };
  ScriptedPeer peer('S');
  for (auto [text, data] : rows) {
    const bool fits = text == data;
    EXPECT_EQ(wipc_write(peer.session, text.data()), 1);
    EXPECT_EQ(arrived(peer.data[1]), data);
    EXPECT_EQ(wipc_write_status(peer.session, text.data()), fits) << text.size();
    EXPECT_EQ(arrived(peer.status[1]), fits ? text + '\0' : "");
  }
  shutdown(peer.data[1], SHUT_RD);
  EXPECT_EQ(wipc_write(peer.session, letters(1).data()), 0) << "the connection is broken";
  shutdown(peer.status[1], SHUT_RD);
  EXPECT_EQ(wipc_write_status(peer.session, letters(1).data()), 0) << "so is the status channel";
  EXPECT_EQ(wipc_write_status(ScriptedPeer('P').session, letters(1).data()), 0) << "only reads";
}

TEST(Read, EndsAMessageAtANulAndWhereAChunkEnds) {
  using Texts = std::vector<std::string>;
  const auto expect = [](const Texts& chunks, const Texts& messages, const char* why) {
    for (const auto read : {wipc_read, wipc_read_status}) {
      ScriptedPeer peer('P');
      const int socket = read == wipc_read ? peer.data[1] : peer.status[1];
      for (const std::string& chunk : chunks) send(socket, chunk.data(), chunk.size(), 0);
      shutdown(socket, SHUT_WR);  // so that no read waits for ever
      for (const std::string& message : messages) {
        std::string text(4002, '~');
        EXPECT_EQ(text.substr(0, std::max(0, read(peer.session, text.data(), 4002))), message)
            << why;
      }
      EXPECT_EQ(read(peer.session, letters(9).data(), 9), 0) << "left over: " << why;
    }
  };
  expect({"SessionClosed"}, {"SessionClosed"}, "to the primary this is a message");
  expect({"one\0two\0end\0"s, "x"}, {"one", "two", "end", "x"}, "NULs part a chunk");
  expect({letters(3998) + '\0', "b"}, {letters(3998), "b"}, "3998 bytes and a NUL are whole");
  expect({letters(3999), "b"}, {letters(3999) + 'b'}, "3999 may be cut off");
  expect({letters(4000), "b"}, {letters(4000) + 'b'}, "4001 fit");
  expect({letters(4000), "bb"}, {""}, "4002 do not");
  expect({"x\0"s + letters(3998), "b\0c"s}, {"x", letters(3998) + 'b', "c"}, "the last is joined");
}

TEST(Read, AnswersTheEndAtTheSecondaryAndReleasesTheSession) {
  heap::refuse(0, false);
  ScriptedPeer peer('S');
  char text[99];
  send(peer.data[1], "SessionClosed", 13, 0);
  EXPECT_EQ(wipc_read(std::exchange(peer.session, nullptr), text, 99), -1);
  heap::grant_all();
  EXPECT_EQ(heap::blocks_left(), 0) << "the record is released";
  EXPECT_EQ(arrived(peer.data[1]), "Acknowledge");
}
