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
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace zelvan;

const char written_down[] =
#include "wipc/told.txt"
    ;

const std::vector at_first{wipc_connect_timeout, wipc_debug, wipc_nostart, +wipc_error_text[0]};
char local[] = "localhost", other[] = "LOCALHOST", here[] = "here", empty[] = "", *null = nullptr;
char module[] = "m", path[] = "/bin/m", missing[] = "x/y", root[] = "/m", text[20], *host = empty;
int port, ports[2], is_local;
std::string told;

// A result is told behind all that led to it, and a session's record released.
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

/// Adds a line for each result. Where a call of the platform is refused, it begins there, and the
/// next result ends it; that goes for each call in turn, and at last for none, or once.
enum Refusing { once, each };
void add(const std::string& title, Refusing refusing, const std::function<void()>& calls) {
  told += title;
  bool is_refused = true;
  for (int n = refusing; is_refused && n <= 99 * refusing; ++n) {
    fake = {.refused_call = n};
    wipc_set_debug(1), wipc_set_nostart(0), wipc_set_connect_timeout(1);
    support::set_environment("PATH", "/none:/bin");
    testing::internal::CaptureStdout();
    calls();
    std::fflush(stdout);
    std::string lines = testing::internal::GetCapturedStdout();
    const std::size_t refused = lines.find("\n!");
    is_refused = refused != std::string::npos;
    if (is_refused) lines = lines.substr(refused + 1, lines.find(';', refused) - refused);
    for (char& c : lines) c = c == '\n' ? '|' : c == ';' ? '\n' : c;
    lines.back() = ',';
    told += '\n' + lines + " open:";
    for (int i = 0; i < fake.made; ++i) {
      if (fake.sockets[i].is_open) told += {' ', static_cast<char>('A' + i)};
    }
    fake.tells = false;
    wipc_release_bind_sessions();
  }
  told += "\n";
}

/// All that can be asked of a session of that type, '0' for null.
void exchange(char session_type) {
  wipc_session* session = wipc_new_session(fake.make(), session_type);
  session->status_sid = fake.make();
  void* handle = session_type != '0' ? session : nullptr;
  tell(wipc_poll_session(handle)), tell(wipc_read_status(handle, text, sizeof text));
  fake.sockets[0].arriving = {"one", {"SessionClosed.\0SessionClosed\0left", 33}};
  fake.sockets[1].arriving = {"ready"};
  tell(wipc_sid(handle)), tell(wipc_status_sid(handle)), tell(wipc_write(handle, null));
  tell(wipc_write_status(handle, null)), tell(wipc_read(handle, null, 9));
  tell(wipc_read(handle, text, 0)), tell(wipc_read_status(handle, null, 9));
  tell(wipc_read_status(handle, text, 0)), tell(wipc_read_status(handle, text, sizeof text));
  for (const int length : {0, 1, 4000, 4001, 9000}) {
    tell(wipc_write(handle, std::string(length, 'x').data()));
    tell(wipc_write_status(handle, std::string(length, 'x').data()));
  }
  int length = 0;
  for (int i = 0; i < 3 && length >= 0; ++i) {
    tell(wipc_poll_session(handle)), tell(length = wipc_read(handle, text, sizeof text));
  }
  tell(text);
  if (session_type != 'S' || length >= 0) wipc_close_session(handle);
  if (session_type < 'P') release_session(session);
}

// What is told stands in told.txt: every call of the platform, every text and every result.
TEST(Sessions, DoAndTellWhatIsWrittenDown) {
  EXPECT_EQ(at_first, (std::vector{10, 0, 0, 0}));
  told.clear();
  add("opening in one step", each, [] { tell(wipc_open_session(local, module)); });
  add("opening in two steps", each,
      [] { tell_connection(local, module), tell(wipc_accept_connection()); });
  add("opening at the other end", each, [] { tell(wipc_connect_session(other, 1, 65535)); });
  for (const char type : {'0', 'B', 'P', 'S'}) {
    add(std::string("exchange at an end of type ") + type, each, [=] { exchange(type); });
  }
  add("closing at the secondary end", once,
      [] { wipc_close_session(wipc_new_session(fake.make(), 'S')), tell("closed"); });
  for (const int refused : {0, 4}) {
    add("nobody listens", once, [=] {
      fake.deaf_port = 65535, fake.refused_call = refused;
      tell(std::min(wipc_connect_port(local, 65535), 1));
    });
  }
  add("waiting", each, [] { tell(std::min(wipc_wait_accept(fake.make()), 1)); });
  add("connecting", each, [] { tell(std::min(wipc_connect_port(local, 1), 1)); });
  add("waiting for a connection", once, [] {
    for (const int looks : {0, 1, 2, 3}) {
      wipc_set_connect_timeout(looks > 1 ? 1 : -1), fake.looks_in_vain = looks;
      tell(std::min(wipc_wait_accept(fake.make()), 1));
    }
  });
  add("publishing lines", once, [] {
    for (const int on : {0, -1}) {
      wipc_set_connect_timeout(1), wipc_set_nostart(on), tell(wipc_connect_timeout);
    }
    for (const int length : {1, 1000, 1001}) {
      tell(wipc_open_session(local, std::string(length, 'x').data())), tell(wipc_last_error());
      wipc_set_debug(0);
    }
  });
  add("ports", once, [] {
    for (const int last : {0, 1}) {
      fake.ports[last] = 0, tell(wipc_open_session(local, module)), fake.ports[last] = 7;
      tell(wipc_connect_session(local, last, -last));
      tell(wipc_wait_accept(last - 1)), tell(wipc_poll_socket(last - 1));
    }
  });
  add("hosts and programs", once, [] {
    for (char* on : {here, other}) tell_connection(on, path), tell_connection(on, root);
  });
  add("along the path", once, [] {
    for (const char* all : {"/none:/bin:/", "/bin/:", ":/bin", "::/bin", "", ":", "a:::/bin"}) {
      support::set_environment("PATH", all), tell(HeapText(wipc_find_module(module)).get());
    }
    for (char* program : {path, missing, root}) tell(HeapText(wipc_find_module(program)).get());
    support::set_environment("PATH", nullptr), tell(wipc_find_module(module));
  });
  add("invalid arguments", once, [] {
    for (char* none : {null, empty}) {
      tell(wipc_open_session(none, none)), tell(wipc_open_session(local, none));
      tell_connection(none, none), tell_connection(local, none);
      tell(wipc_connect_session(none, 1, 1)), tell(wipc_find_module(none));
    }
    tell(wipc_open_connection(local, module, nullptr, &port, &port, &port));
    tell(wipc_open_connection(local, module, &host, nullptr, &port, &port));
    tell(wipc_open_connection(local, module, &host, &port, nullptr, &port));
    tell(wipc_open_connection(local, module, &host, &port, &port, nullptr));
    for (wipc_session** first : {&wipc_bind_primary, &wipc_bind_secondary}) {
      *first = wipc_create_bind(&port), tell(wipc_accept_connection());
      wipc_release_bind_sessions();
    }
    for (const int n : {-1, 0, 3}) tell(wipc_check_sockets(n));
  });
  EXPECT_EQ(told, written_down);
}

}  // namespace
