// session asks another process which country lies at a place.
//
// It opens a session with session_picker and prints the progress that the picker reports on the
// status channel while it loads the world. Then it sends one request at a time on the data channel
// and prints each answer. It closes the session after the last place, at the end of standard
// input, and on Ctrl-C. If the picker dies, it reports that and ends with status 1.

#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include "common/error.h"
#include "common/file.h"
#include "common/printable.h"
#include "session/options.h"
#include "session/picker_process.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <deque>
#include <exception>
#include <iterator>
#include <string>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

using namespace example;

int interrupted = -1;  // an eventfd; readable after Ctrl-C

void on_interrupt(int) {
  const eventfd_t one = 1;
  eventfd_write(interrupted, one);
}

void watch_for_interrupts() {
  interrupted = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  struct sigaction action = {};
  action.sa_handler = on_interrupt;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

enum class End { answered, picker_gone, on_interrupt };

// Asks for one place at a time. No request is sent before the last one is answered, so each message
// on the data channel is the answer to the last request.
class Conversation {
 public:
  Conversation(void* session, const std::vector<real_pt_t>& places)
      : session_(session), places_(places.begin(), places.end()), reads_input_(places.empty()) {}

  End run() {
    for (;;) {
      // poll does not see messages that the session has already received, so these come first.
      print_status();
      if (wipc_poll_session(session_) != 0 && !read_answer()) return End::picker_gone;
      if (!awaits_answer_ && !places_.empty()) {
        if (!ask(places_.front())) return End::picker_gone;
        places_.pop_front();
      }
      if (!awaits_answer_ && places_.empty() && !reads_input_) return End::answered;

      const int input = reads_input_ && !awaits_answer_ ? STDIN_FILENO : -1;
      pollfd waited[] = {{interrupted, POLLIN, 0},
                         {wipc_sid(session_), POLLIN, 0},
                         {wipc_status_sid(session_), POLLIN, 0},
                         {input, POLLIN, 0}};
      if (poll(waited, std::size(waited), -1) < 0 && errno != EINTR) return End::picker_gone;
      if (waited[0].revents != 0) return End::on_interrupt;
      if (waited[3].revents != 0) read_input();
    }
  }

 private:
  // Returns the message that was read. It comes from another program, perhaps a hostile one.
  std::string message_of(int length) const {
    return printable({message_, static_cast<std::size_t>(length)});
  }

  void print_status() {
    int length;
    while ((length = wipc_read_status(session_, message_, sizeof message_)) > 0) {
      std::printf("picker: %s\n", message_of(length).c_str());
    }
    std::fflush(stdout);
  }

  // Writes the fewest digits that read back as the same number.
  static std::string shortest(double number) {
    char digits[32];
    return {digits, std::to_chars(digits, std::end(digits), number).ptr};
  }

  bool ask(const real_pt_t& place) {
    std::string request = "PICK " + shortest(place.x) + " " + shortest(place.y);
    asked_ = place;
    awaits_answer_ = true;
    return wipc_write(session_, request.data()) != 0;
  }

  bool read_answer() {
    const int length = wipc_read(session_, message_, sizeof message_);
    if (length <= 0) {
      print_status();  // the last report may say why the picker has ended
      return false;
    }
    std::printf("%g,%g: %s\n", asked_.x, asked_.y, message_of(length).c_str());
    std::fflush(stdout);
    awaits_answer_ = false;
    return true;
  }

  // Reads what standard input has, and queues the places of its complete lines.
  void read_input() {
    char chunk[1024];
    const ssize_t size = read(STDIN_FILENO, chunk, sizeof chunk);
    if (size < 0 && errno == EINTR) return;
    reads_input_ = size > 0;
    input_.append(size > 0 ? std::string(chunk, static_cast<std::size_t>(size)) : "\n");
    for (std::size_t end; (end = input_.find('\n')) != std::string::npos;) {
      const std::string line = input_.substr(0, end);
      input_.erase(0, end + 1);
      if (const auto place = parse_place(line)) {
        places_.push_back(*place);
      } else if (!line.empty()) {
        std::fprintf(stderr, "session: '%s' is no LON,LAT in degrees, such as 12.5,41.9\n",
                     printable(line).c_str());
      }
    }
  }

  void* session_;
  std::deque<real_pt_t> places_;
  bool reads_input_;
  std::string input_;  ///< an unfinished line of standard input
  bool awaits_answer_ = false;
  real_pt_t asked_{};
  char message_[WIPC_MAX_MESSAGE + 2];  ///< has room for any message and a NUL
};

End talk(const Options& options) {
  const bool is_watched = isatty(STDERR_FILENO) != 0;
  if (is_watched) std::fprintf(stderr, "session: waiting for the picker to connect\n");
  const PickerProcess picker(options);
  watch_for_interrupts();  // from here on Ctrl-C closes the session; before, it ends the program
  if (is_watched && options.places.empty() && isatty(STDIN_FILENO) != 0) {
    std::fprintf(stderr, "session: type places as LON,LAT, such as 12.5,41.9; Ctrl-D ends\n");
  }
  return Conversation(picker.session(), options.places).run();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::optional<Options> options = read_options(argc, argv);
    const End end = options ? talk(*options) : End::answered;
    switch (end) {
      case End::answered:
        finish_output();
        return 0;
      case End::on_interrupt:
        return 128 + SIGINT;
      case End::picker_gone:
        break;
    }
    std::fprintf(stderr, "session: the picker has ended\n");
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "session: %s\n", error.what());
  }
  return 2;
}
