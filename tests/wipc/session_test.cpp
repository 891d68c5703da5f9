#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/connection.h>
#include <zelvan/wipc/detail/heap_text.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "support/system.h"
#include "wipc/fake_platform.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <utility>

#include <gtest/gtest.h>

namespace {

using namespace zelvan;

const char written_down[] =
#include "wipc/told.txt"
    ;

char local[] = "localhost", other[] = "LOCALHOST", here[] = "here", empty[] = "", *null = nullptr;
char module[] = "m", path[] = "/bin/m", missing[] = "x/y", text[20], *host;
int port, ports[2], is_local;
std::string told;

// A result is told behind all that led to it. A session's record is released.
void tell(int result) { std::printf("= %d;", result); }
void tell(const char* result) { std::printf("= %s;", result != nullptr ? result : "null"); }
void tell(void* handle) {
  auto* session = static_cast<wipc_session*>(handle);
  if (session == nullptr) return tell("null");
  std::printf("= %c of %c and %c;", session->session_type, fake.letter(session->sid),
              fake.letter(session->status_sid));
  release_session(session);
}
void tell_connection(char* on, char* program) {
  tell(wipc_open_connection(on, program, &host, &ports[0], &ports[1], &is_local));
  std::printf("%s %d %d %d;", host, ports[0], ports[1], is_local);
}

/// A line for each result; from the platform's n-th call on, which is refused, the first alone.
std::string told_by(int n, const std::function<void()>& calls) {
  fake = {};
  fake.refused_call = n;
  wipc_set_debug(1);
  wipc_set_nostart(0);
  wipc_set_connect_timeout(1);
  support::set_environment("PATH", "/none:/bin");
  testing::internal::CaptureStdout();
  calls();
  std::fflush(stdout);
  std::string lines = testing::internal::GetCapturedStdout();
  if (const std::size_t refused = lines.find("\n!"); refused != std::string::npos) {
    lines = lines.substr(refused + 1, lines.find(';', refused) - refused - 1) + ", ";
  }
  std::replace(lines.begin(), lines.end(), '\n', '|');
  std::replace(lines.begin(), lines.end(), ';', '\n');
  lines += "open:";
  for (int i = 0; i < fake.made; ++i) {
    if (fake.sockets[i].is_open) lines += {' ', static_cast<char>('A' + i)};
  }
  fake.tells = false;
  wipc_release_bind_sessions();
  return lines + '\n';
}
void once(const char* title, const std::function<void()>& calls) {
  told += std::string("# ") + title + '\n' + told_by(0, calls);
}
/// For every call of the platform refused in turn, and at last for none.
void each_refused(const char* title, const std::function<void()>& calls) {
  told += std::string("# ") + title + '\n';
  std::string lines = "!";
  for (int n = 1; lines[0] == '!'; ++n) told += lines = told_by(n, calls);
}

void exchange(char session_type) {
  wipc_session* session = wipc_new_session(fake.make(), session_type);
  session->status_sid = fake.make();
  fake.sockets[0].arriving = {"one", {"SessionClosed.\0SessionClosed\0left", 33}};
  fake.sockets[1].arriving = {"ready"};
  tell(wipc_write(session, local));
  tell(wipc_write(session, empty));
  tell(wipc_write_status(session, local));
  tell(wipc_read_status(session, text, sizeof text));
  int length = 0;
  for (int i = 0; i < 3 && length >= 0; ++i) {
    tell(wipc_poll_session(session));
    tell(length = wipc_read(session, text, sizeof text));
  }
  if (length >= 0) wipc_close_session(session);
  tell(text);
}

/// What is refused in any case, with a session or without one.
void misuse(wipc_session* session) {
  if (usable_session(session) == nullptr) {
    tell(wipc_sid(session) + wipc_status_sid(session));
    tell(wipc_poll_session(session) + wipc_write(session, local));
    wipc_close_session(session);
  }
  tell(wipc_write(session, null));
  tell(wipc_write_status(session, null));
  tell(wipc_read(session, null, 9));
  tell(wipc_read(session, text, 0));
  tell(wipc_read_status(session, null, 9));
  tell(wipc_read_status(session, text, 0));
}

TEST(Sessions, DoAndTellWhatIsWrittenDown) {
  EXPECT_EQ(wipc_connect_timeout, 10);
  EXPECT_STREQ(wipc_last_error(), "");
  each_refused("opening in one step", [] { tell(wipc_open_session(local, module)); });
  each_refused("opening in two steps", [] {
    tell_connection(local, module);
    tell(wipc_accept_connection());
  });
  each_refused("opening at the other end", [] { tell(wipc_connect_session(other, 1, 65535)); });
  each_refused("exchange at the primary end", [] { exchange('P'); });
  each_refused("exchange at the secondary end", [] { exchange('S'); });
  for (const int refused_call : {0, 5}) {
    once("nobody listens", [=] {
      fake.refused_call = refused_call;
      fake.deaf_port = 65535;
      tell(wipc_connect_session(local, 65535, 1));
    });
  }
  once("waiting for a connection", [] {
    for (const int looks : {0, 1, 2, 3}) {
      wipc_set_connect_timeout(looks > 1 ? 1 : -1);
      fake.looks_in_vain = looks;
      tell(wipc_wait_accept(fake.make()) > 0);
    }
  });
  once("publishing the line", [] {
    wipc_set_nostart(-1);
    tell(wipc_connect_timeout);
    tell(wipc_open_session(local, module));
    tell(wipc_last_error());
    wipc_set_debug(0);
    tell(wipc_open_session(local, std::string(1000, 'x').data()));
    tell(wipc_open_session(local, std::string(1001, 'x').data()));
    tell(wipc_last_error());
    wipc_set_nostart(0);
    tell(wipc_connect_timeout);
  });
  once("ports", [] {
    for (const int primary : {0, 1}) {
      fake.ports[primary] = 0;
      tell(wipc_open_session(local, module));
      fake.ports[primary] = 7;
      tell(wipc_connect_session(local, primary, -primary));
      tell(wipc_wait_accept(primary - 1));
      tell(wipc_poll_socket(primary - 1));
    }
  });
  once("hosts and programs", [] {
    tell_connection(here, path);
    tell_connection(here, missing);
    tell_connection(other, missing);
    tell_connection(other, path);
  });
  once("looking along the path", [] {
    for (const char* all : {"/none:/bin:/", "/bin/:", ":/bin", "::/bin", "", ":", "a:::/bin"}) {
      support::set_environment("PATH", all);
      tell(HeapText(wipc_find_module(module)).get());
    }
    for (char* program : {path, missing}) tell(HeapText(wipc_find_module(program)).get());
  });
  once("invalid arguments", [] {
    for (char* none : {null, empty}) {
      tell(wipc_open_session(none, none));
      tell(wipc_open_session(local, none));
      tell_connection(none, none);
      tell_connection(local, none);
      tell(wipc_connect_session(none, 1, 1));
      tell(wipc_find_module(none));
    }
    tell(wipc_open_connection(local, module, nullptr, &port, &port, &port));
    tell(wipc_open_connection(local, module, &host, nullptr, &port, &port));
    tell(wipc_open_connection(local, module, &host, &port, nullptr, &port));
    tell(wipc_open_connection(local, module, &host, &port, &port, nullptr));
    tell(wipc_accept_connection());
    for (const int n : {-1, 0, 3}) tell(wipc_check_sockets(n));
  });
  once("invalid sessions and buffers", [] {
    misuse(nullptr);
    for (const char session_type : {'B', 'P', 'S'}) {
      wipc_session* session = wipc_new_session(fake.make(), session_type);
      misuse(session);
      release_session(session);
    }
  });
  EXPECT_EQ(told, written_down);
}

}  // namespace
