#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/random.h"
#include "wipc/fake_platform.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace zelvan;

wipc_session* open(char session_type) {
  fake = {};
  fake.tells = false;
  wipc_session* session = wipc_new_session(fake.make(), session_type);
  session->status_sid = fake.make();
  return session;
}

/// What a reader makes of the pieces that arrive: a receive takes up to 4000 bytes of one, and a
/// text ends at a NUL and at the end of what was received.
std::vector<std::string> model(const std::deque<std::string>& arriving) {
  std::vector<std::string> messages;
  bool goes_on = false;  // so may a text that the end of a full receive ended
  for (std::string piece : arriving) {
    for (; !piece.empty(); piece.erase(0, 4000)) {
      const std::string received = piece.substr(0, 4000);
      std::size_t texts = 0;
      for (std::size_t i = 0; i < received.size(); ++texts) {
        const std::string text = received.c_str() + i;
        i += text.size() + 1;
        if (texts > 0 || !goes_on) {
          messages.push_back(text);
        } else if ((messages.back() += text).size() > 4001) {
          messages.back().clear();
        }
      }
      goes_on = received.size() + (received.back() != '\0') >= 4000 && (texts > 1 || !goes_on);
    }
  }
  return messages;
}

/// Pieces that are often about as long as a receive, with NULs often about their end.
std::deque<std::string> hard_pieces(support::Random& random) {
  std::deque<std::string> pieces(1 + random.below(6));
  for (std::string& piece : pieces) {
    const int length = random.below(3) == 0 ? 1 + random.below(9) : 3996 + random.below(8);
    piece.assign(length, static_cast<char>(1 + random.below(255)));
    for (int i = random.below(4); i > 0; --i) {
      piece[length - 1 - random.below(random.below(3) == 0 ? length : std::min(length, 8))] = '\0';
    }
    if (random.below(8) == 0) piece[0] = '\0';
  }
  return pieces;
}

TEST(Messages, AreReadAsInTheModel) {
  support::Random random(12);
  for (int run = 0; run < 3000; ++run) {
    const bool is_status = random.below(2) == 0;
    wipc_session* session = open(is_status || random.below(2) == 0 ? 'P' : 'S');
    const auto read = is_status ? wipc_read_status : wipc_read;
    fake.sockets[is_status].arriving = hard_pieces(random);
    for (std::string text : model(fake.sockets[is_status].arriving)) {
      const int length = 1 + random.below(random.below(2) == 0 ? 9 : 4002);
      std::string buffer(length + 1, '~');
      ASSERT_EQ(read(session, buffer.data(), length), std::min<int>(length, text.size())) << run;
      text.resize(length);
      ASSERT_EQ(buffer, text + '~') << run;
      wipc_message* node = is_status ? session->status_head : session->data_head;
      wipc_message* last = nullptr;
      for (; node != nullptr; last = std::exchange(node, node->next)) ASSERT_EQ(node->prev, last);
      ASSERT_EQ(is_status ? session->status_tail : session->data_tail, last);
    }
    char untouched = '~';
    ASSERT_EQ(read(session, &untouched, 1), 0);
    ASSERT_EQ(untouched, '~');
    release_session(session);
  }
}

}  // namespace
