// session_picker is the secondary of a session: it loads the world and names the country at each
// place it is asked for. A primary starts it as `session_picker HOST PORT PORT PID`: its own host,
// the ports of the data and the status channel, and its process id.
//
// Requests arrive on the data channel, one at a time, as "PICK lon lat". The answer is the name of
// a country, "no country", or a text that begins with "ERROR". While the world loads, the picker
// reports its progress on the status channel.

#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "common/country_cache.h"
#include "common/error.h"
#include "common/file.h"
#include "common/geojson.h"
#include "common/picker.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include <unistd.h>

namespace {

using namespace example;

// Thrown when the primary has ended without closing the session.
struct PrimaryGone {};

void tell(void* session, std::string status) {
  if (wipc_write_status(session, status.data()) == 0) throw PrimaryGone();
}

Picker load_world(void* session) {
  const std::string path = shipped_world();
  tell(session, "process " + std::to_string(getpid()) + " loads " + path);
  const std::string text = read_file(path);
  const std::vector<Feature> features = find_features(path, text);

  Picker picker;
  constexpr std::size_t steps = 5;
  for (std::size_t i = 0; i < features.size(); ++i) {
    const Feature& feature = features[i];
    const Country country = read_feature(path, feature, text.substr(feature.start, feature.size));
    picker.add(country.name, country.outline);
    if ((i + 1) * steps / features.size() > i * steps / features.size()) {
      tell(session, "loaded " + std::to_string(i + 1) + " of " + std::to_string(features.size()));
    }
  }
  return picker;
}

// Removes a blank and a number from the front of `text` and returns the number.
std::optional<double> take_number(std::string_view& text) {
  double number = 0.0;
  if (text.empty() || text.front() != ' ') return std::nullopt;
  text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

std::string answer(Picker& picker, std::string_view request) {
  constexpr std::string_view verb = "PICK";
  if (request.substr(0, verb.size()) == verb) {
    std::string_view rest = request.substr(verb.size());
    const std::optional<double> longitude = take_number(rest);
    const std::optional<double> latitude = take_number(rest);
    if (longitude && latitude && rest.empty()) {
      const std::string* const name = picker.at(*longitude, *latitude);
      return name == nullptr ? "no country" : *name;
    }
  }
  return "ERROR not understood: " + std::string(request.substr(0, 100));
}

// Answers until the primary ends the session.
void serve(void* session, Picker& picker) {
  char request[WIPC_MAX_MESSAGE + 2];  // has room for any message and a NUL
  for (;;) {
    const int length = wipc_read(session, request, sizeof request);
    if (length < 0) return;
    if (length == 0) throw PrimaryGone();
    std::string reply = answer(picker, {request, static_cast<std::size_t>(length)});
    if (wipc_write(session, reply.data()) == 0) throw PrimaryGone();
  }
}

int number_or_zero(const char* text) {
  int number = 0;
  const char* const end = text + std::strlen(text);
  return std::from_chars(text, end, number).ptr == end ? number : 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fprintf(stderr,
                 "usage: session_picker HOST PORT PORT [PID]; run `session`, which starts it\n");
    return 2;
  }
  void* const session =
      wipc_connect_session(argv[1], number_or_zero(argv[2]), number_or_zero(argv[3]));
  if (session == nullptr) {
    std::fprintf(
        stderr,
        "session_picker: can't connect to %s, ports %s and %s; does `session` wait there?\n",
        argv[1], argv[2], argv[3]);
    return 1;
  }
  int status = 0;
  try {
    Picker picker = load_world(session);
    serve(session, picker);
    return 0;  // the session is closed; its sockets close with the process
  } catch (const PrimaryGone&) {
    status = 1;
  } catch (const std::exception& error) {
    std::string last_words = std::string("ERROR ") + error.what();
    wipc_write_status(session, last_words.data());
    status = 2;
  }
  wipc_close_session(session);
  return status;
}
